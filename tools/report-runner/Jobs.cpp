#include "tools/report-runner/Jobs.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tools/report-runner/Csv.h"
#include "tools/report-runner/OutputFolder.h"
#include "tools/report-runner/PeriodAnswers.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kColumns[] = {"workbook", "macro",  "book",   "answers", "form-answers",
                                         "period",   "output", "expect", "log"};

/// Gathers what is wrong with a jobs file.
class Problems {
 public:
  void Add(int line, const std::string& what) {
    text_ += "line " + std::to_string(line) + ": " + what + '\n';
  }
  void Raise() const {
    if (!text_.empty()) throw std::runtime_error(text_.substr(0, text_.size() - 1));
  }

 private:
  std::string text_;
};

std::string InQuotes(const fs::path& path) {
  return '"' + path.string() + '"';
}

void CheckJob(const Job& job, Problems& problems) {
  if (job.workbook.empty()) problems.Add(job.line, "there is no workbook");
  if (job.output.empty()) problems.Add(job.line, "there is no output");
  for (const fs::path& file : {job.workbook, job.answers, job.form_answers}) {
    if (!file.empty() && !fs::is_regular_file(file))
      problems.Add(job.line, "there is no file " + InQuotes(file));
  }
  if (!job.period.empty() && !PeriodAnswers(job.period)) {
    problems.Add(job.line, "\"" + job.period + "\" is no period");
  }
  if (!job.period.empty() && !job.form_answers.empty()) {
    problems.Add(job.line, "period and form-answers exclude each other");
  }
  for (const std::string& file : {job.expect, job.log}) {
    if (!file.empty() && !IsInFolder(file))
      problems.Add(job.line, "\"" + file + "\" is no file in the output");
  }
}

/// Whether a folder is another one or stands in it.
bool IsWithin(const fs::path& path, const fs::path& folder) {
  return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

}  // namespace

std::vector<Job> ReadJobs(std::string_view csv, const fs::path& folder) {
  const std::vector<CsvRow> rows = ReadCsv(csv);
  Problems problems;
  if (rows.empty()) problems.Add(1, "there are no columns");
  problems.Raise();
  const std::vector<std::string>& columns = rows[0].fields;
  for (const std::string& column : columns) {
    if (std::ranges::find(kColumns, column) == std::end(kColumns)) {
      problems.Add(rows[0].line, "there is no column \"" + column + "\"");
    }
  }
  for (const char* needed : {"workbook", "output"}) {
    if (std::ranges::find(columns, needed) == columns.end()) {
      problems.Add(rows[0].line, std::string("the column \"") + needed + "\" is missing");
    }
  }
  problems.Raise();

  std::vector<Job> jobs;
  for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
    if (row->fields.size() > columns.size()) problems.Add(row->line, "there are more fields than columns");
    const auto field = [&](std::string_view column) {
      const auto at = static_cast<std::size_t>(std::ranges::find(columns, column) - columns.begin());
      return at < std::min(columns.size(), row->fields.size()) ? row->fields[at] : std::string();
    };
    const auto path = [&](std::string_view column) {
      const std::string text = field(column);
      return text.empty() ? fs::path() : fs::absolute(folder / text).lexically_normal();
    };
    jobs.push_back({.line = row->line,
                    .workbook = path("workbook"),
                    .macro = field("macro"),
                    .book = field("book"),
                    .answers = path("answers"),
                    .form_answers = path("form-answers"),
                    .period = field("period"),
                    .output = path("output"),
                    .expect = field("expect"),
                    .log = field("log")});
    Job& job = jobs.back();
    if (!job.output.has_filename()) job.output = job.output.parent_path();
    CheckJob(job, problems);
  }
  // A folder comes right before what stands in it.
  std::map<fs::path, int> outputs;
  for (const Job& job : jobs) {
    if (const auto [other, is_new] = outputs.emplace(job.output, job.line); !is_new && !job.output.empty()) {
      problems.Add(job.line, "its output is that of line " + std::to_string(other->second));
    }
  }
  for (auto outer = outputs.begin(); outer != outputs.end(); ++outer) {
    const auto inner = std::next(outer);
    if (inner == outputs.end() || outer->first.empty() || !IsWithin(inner->first, outer->first)) continue;
    problems.Add(inner->second, "its output stands in that of line " + std::to_string(outer->second));
  }
  problems.Raise();
  return jobs;
}

nlohmann::ordered_json ToJson(const Job& job) {
  return {{"workbook", job.workbook.string()},
          {"macro", job.macro},
          {"book", job.book},
          {"answers", job.answers.string()},
          {"form_answers", job.form_answers.string()},
          {"period", job.period},
          {"expect", job.expect},
          {"log", job.log}};
}

}  // namespace qva
