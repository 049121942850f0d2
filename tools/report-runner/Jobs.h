// The jobs of a batch.
#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace qva {

/// A row of the jobs file. Paths are absolute, but for `expect` and `log`, which are in the output folder.
struct Job {
  int line = 0;  ///< of the jobs file
  std::filesystem::path workbook;
  std::string macro;  ///< empty: that of ReportRunOptions, as with the book
  std::string book;
  std::filesystem::path answers;
  std::filesystem::path form_answers;
  std::string period;
  std::filesystem::path output;
  std::string expect;
  std::string log;
};

/// The jobs of a CSV text: its first row names the columns - those of docs/batch.md, in any order - and each
/// further row is a job. Paths are relative to `folder`. Raises std::runtime_error with all that is wrong,
/// each with its line: unknown and missing columns, a period that is none, a period beside answers to
/// dialogs, files that are not there, and an output folder that is another job's, has another's within it, or
/// stands in one.
std::vector<Job> ReadJobs(std::string_view csv, const std::filesystem::path& folder);

/// What the job is to do, for the result in its output folder: a job is done when that has the same.
nlohmann::ordered_json ToJson(const Job& job);

}  // namespace qva
