// What became of a batch.
#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "tools/report-runner/Jobs.h"
#include "tools/report-runner/ReportResult.h"

namespace qva {

/// What became of a job.
struct JobOutcome {
  enum class Kind {
    NotBegun,  ///< the batch ended before
    Earlier,   ///< done by an earlier batch
    Ended
  };
  Kind kind = Kind::NotBegun;
  ReportStatus status = ReportStatus::Interrupted;  ///< of the others
  std::string text;                                 ///< why it failed
  double seconds = 0;
  int tries = 0;
};

/// One outcome for each job, in their order.
using Outcomes = std::vector<JobOutcome>;

/// A row for each job, in the order of the jobs: its line, workbook, book, output, status, exit status,
/// seconds, tries, and the first line of why it failed. The status of a job that was not begun is empty.
std::string SummaryCsv(const std::vector<Job>& jobs, const Outcomes& outcomes);

/// The same as JSON, with the numbers of jobs that are done, by an earlier batch or this one, that failed and
/// that were not begun.
nlohmann::ordered_json SummaryJson(const std::vector<Job>& jobs, const Outcomes& outcomes, double seconds);

/// Prints how many jobs are done, and a table of those that failed.
void PrintSummary(const std::vector<Job>& jobs, const Outcomes& outcomes, double seconds, std::ostream& out);

/// How far a batch is: "12 of 200 done, 1 failed, 3.4 a minute, 55 min left". `ended` of the jobs that were
/// to be done ended in so many seconds.
std::string ProgressText(std::size_t ended, std::size_t failed, std::size_t all, double seconds);

}  // namespace qva
