#include "tools/report-runner/Summary.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>

#include "tools/report-runner/Csv.h"

namespace qva {
namespace {

using Json = nlohmann::ordered_json;

std::string Fixed(double number, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", digits, number);
  return text;
}

/// A time for people: "42 s", "12 min", "3 h 20 min".
std::string Duration(double seconds) {
  if (seconds < 100) return Fixed(seconds, 0) + " s";
  const auto minutes = std::lround(seconds / 60);
  if (minutes < 100) return std::to_string(minutes) + " min";
  return std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) + " min";
}

std::string StatusOf(const JobOutcome& outcome) {
  return outcome.kind == JobOutcome::Kind::NotBegun ? std::string() : std::string(NameOf(outcome.status));
}

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

bool Failed(const JobOutcome& outcome) {
  return outcome.kind != JobOutcome::Kind::NotBegun && outcome.status != ReportStatus::Ok;
}

struct Counts {
  std::size_t done = 0, earlier = 0, failed = 0, not_begun = 0;
};

Counts CountsOf(const Outcomes& outcomes) {
  Counts counts;
  for (const JobOutcome& outcome : outcomes) {
    ++(outcome.kind == JobOutcome::Kind::NotBegun  ? counts.not_begun
       : Failed(outcome)                           ? counts.failed
       : outcome.kind == JobOutcome::Kind::Earlier ? counts.earlier
                                                   : counts.done);
  }
  return counts;
}

}  // namespace

std::string SummaryCsv(const std::vector<Job>& jobs, const Outcomes& outcomes) {
  std::string csv =
      CsvLine({"line", "workbook", "book", "output", "status", "exit_status", "seconds", "tries", "text"});
  for (std::size_t n = 0; n < jobs.size(); ++n) {
    const Job& job = jobs[n];
    const JobOutcome& outcome = outcomes[n];
    const bool is_begun = outcome.kind != JobOutcome::Kind::NotBegun;
    csv += CsvLine({std::to_string(job.line), job.workbook.string(), job.book, job.output.string(),
                    StatusOf(outcome), is_begun ? std::to_string(static_cast<int>(outcome.status)) : "",
                    is_begun ? Fixed(outcome.seconds, 3) : "", is_begun ? std::to_string(outcome.tries) : "",
                    FirstLine(outcome.text)});
  }
  return csv;
}

Json SummaryJson(const std::vector<Job>& jobs, const Outcomes& outcomes, double seconds) {
  const Counts counts = CountsOf(outcomes);
  Json json = {{"done", counts.done},     {"done_earlier", counts.earlier},
               {"failed", counts.failed}, {"not_begun", counts.not_begun},
               {"seconds", seconds},      {"jobs", Json::array()}};
  for (std::size_t n = 0; n < jobs.size(); ++n) {
    const Job& job = jobs[n];
    const JobOutcome& outcome = outcomes[n];
    Json row = {{"line", job.line}, {"workbook", job.workbook.string()}, {"book", job.book}};
    row["output"] = job.output.string();
    row["status"] = outcome.kind == JobOutcome::Kind::NotBegun ? Json(nullptr) : Json(NameOf(outcome.status));
    if (outcome.kind != JobOutcome::Kind::NotBegun) {
      row["exit_status"] = static_cast<int>(outcome.status);
      row["earlier"] = outcome.kind == JobOutcome::Kind::Earlier;
      row["seconds"] = outcome.seconds;
      row["tries"] = outcome.tries;
      row["text"] = outcome.text;
    }
    json["jobs"].push_back(std::move(row));
  }
  return json;
}

void PrintSummary(const std::vector<Job>& jobs, const Outcomes& outcomes, double seconds, std::ostream& out) {
  const Counts counts = CountsOf(outcomes);
  out << counts.done << " done in " << Duration(seconds);
  if (counts.earlier) out << ", " << counts.earlier << " done before";
  out << ", " << counts.failed << " failed";
  if (counts.not_begun) out << ", " << counts.not_begun << " not begun";
  out << '\n';
  for (std::size_t n = 0; n < jobs.size(); ++n) {
    if (!Failed(outcomes[n])) continue;
    std::string status = StatusOf(outcomes[n]);
    status.resize(std::max<std::size_t>(status.size(), 15), ' ');
    out << "  line " << jobs[n].line << "  " << status << "  " << jobs[n].output.string() << "  "
        << FirstLine(outcomes[n].text) << '\n';
  }
  out.flush();
}

std::string ProgressText(std::size_t ended, std::size_t failed, std::size_t all, double seconds) {
  std::string text = std::to_string(ended) + " of " + std::to_string(all) + " done";
  if (failed) text += ", " + std::to_string(failed) + " failed";
  if (ended == 0 || seconds <= 0) return text;
  const double each = seconds / static_cast<double>(ended);
  return text + ", " + Fixed(60 / each, 1) + " a minute, " +
         Duration(each * static_cast<double>(all - ended)) + " left";
}

}  // namespace qva
