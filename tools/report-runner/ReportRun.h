// One run of a report workbook in LibreOffice.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

#include "host/Sample.h"
#include "server/calc/entry_macro.h"
#include "tools/report-runner/Office.h"
#include "tools/report-runner/ReportResult.h"

namespace qva {

struct ReportRunOptions {
  std::filesystem::path workbook;
  std::string macro = kEntryMacro;           ///< Module.Procedure, or with the workbook's library before
  std::string book = embedded::kSampleBook;  ///< code of the host's book
  std::filesystem::path output_folder = "out";
  OfficeOptions office;
  std::filesystem::path answers;       ///< to message boxes; none when empty
  std::filesystem::path form_answers;  ///< to dialogs; none when empty
  std::string period;  ///< in their place, what the period dialog is answered (PeriodAnswers.h)
  std::chrono::seconds timeout{120};
  std::uintmax_t memory_limit = 0;  ///< bytes that the job's process may have; any number when 0
  bool picture = true;              ///< PDF and PNG of the workbook as the macro left it
  bool keep_database = false;       ///< leave the host's database in the output folder
  std::filesystem::path database;   ///< to begin with, for the host; it makes its own where there is none
  bool own_drives = false;          ///< also where the user's environment has drives
  std::string expect;  ///< path in the output folder of a file that the macro must leave; none when empty
  std::string
      log;  ///< path there of the log that the macro writes, printed in place of its calls; none when empty
  /// Asked now and then; true ends the run at once.
  std::function<bool()> interrupted = [] { return false; };
};

/// Copies the workbook into the output folder, runs its macro in the LibreOffice that `start` gives - with
/// registry, host's database and, unless the user has drives of his own, a drive C in the folder "drives" of
/// the output folder, with the sample companies' archives - and prints each step to `out`, what else there is
/// to say to `err`. The result tells whether it went through. Nothing that was started goes on afterwards,
/// and however a run ended, the next one can have its folder; nothing there is deleted but logs and prints of
/// the earlier run, which are replaced, and only this run's files are listed. Raises std::exception when the
/// output folder cannot be written.
ReportResult RunReport(const ReportRunOptions& options, const StartJob& start, std::ostream& out,
                       std::ostream& err);

}  // namespace qva
