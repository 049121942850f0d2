// One run of a report workbook in LibreOffice.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

namespace qva {

struct ReportRunOptions {
  std::filesystem::path workbook;
  std::string macro =
      "Ataskaita.Main";           ///< Module.Procedure of the workbook's library, or with another before
  std::string book = "MEDVILNE";  ///< code of the host's book
  std::filesystem::path output_folder = "out";
  std::filesystem::path build_folder;    ///< of libqva_calc.so and libqva_host.so
  std::filesystem::path host_resources;  ///< of sample.sql and QVAFormRes.txt
  std::filesystem::path answers;         ///< to message boxes; none when empty
  std::filesystem::path form_answers;    ///< to dialogs; none when empty
  std::chrono::seconds timeout{120};
  bool show = false;    ///< on the user's screen, where nobody answers for the user
  bool picture = true;  ///< PDF and PNG of the workbook as the macro left it
  std::string expect;   ///< path in the output folder of a file that the macro must leave; none when empty
  std::string
      log;  ///< path there of the log that the macro writes, printed in place of its calls; none when empty
  /// Asked now and then; true ends the run at once.
  std::function<bool()> interrupted = [] { return false; };
};

/// Copies the workbook into the output folder, runs its macro in a LibreOffice of its own - a private profile
/// that goes again, our component, the embedded host, and unless the user has drives of his own, a drive C in
/// the folder "drives" of the output folder, with the sample companies' archives - and prints each step to
/// `out`, failures to `err`. Result: 0 when the macro went through, 1 when it failed, the library told of a
/// failure, an answer was wrong, it did not leave the file that is expected of it, or another run or program
/// has the folder or the copy; 3 when LibreOffice is missing, could not be started or had to be stopped at
/// the time limit or on interruption. Nothing that was started goes on afterwards, and however a run ended,
/// the next one can have its folder; nothing there is deleted but logs and prints of the earlier run, which
/// are replaced, and only this run's files are listed. Raises std::exception when the output folder cannot be
/// written.
int RunReport(const ReportRunOptions& options, std::ostream& out, std::ostream& err);

}  // namespace qva
