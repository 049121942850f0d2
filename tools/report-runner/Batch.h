// Many reports, in LibreOffices that stay warm (docs/batch.md).
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>

#include "tools/report-runner/Office.h"
#include "tools/report-runner/ReportResult.h"

namespace qva {

struct BatchOptions {
  std::filesystem::path jobs_file;
  std::filesystem::path summary_folder;  ///< empty: that of the jobs file's name, ending in ".summary"
  OfficeOptions office;
  int workers = 1;
  int jobs_per_worker = 100;                                         ///< before a fresh one takes its place
  std::uintmax_t memory_limit = std::uintmax_t{2048} * 1024 * 1024;  ///< bytes, of a worker and of a job
  std::chrono::seconds timeout{120};                                 ///< of a job
  bool picture = true;
  /// Asked now and then; true ends the batch at once.
  std::function<bool()> interrupted = [] { return false; };
};

/// Runs the jobs that are not done yet, and tells on `err` how far it is and, at the end, what failed. A
/// job's output folder comes into being when the job has ended, with all that it left and its result in
/// "result.json"; where it has failed, too. What hangs, dies or takes too much memory is tried once more in a
/// fresh LibreOffice. The summary folder gets "summary.csv" and "summary.json". Ends as WrongCommandLine
/// where the jobs file is wrong, or an output folder is there that is no job's; before anything is done then.
/// Raises std::exception where the summary folder cannot be written.
ReportStatus RunBatch(const BatchOptions& options, std::ostream& err);

}  // namespace qva
