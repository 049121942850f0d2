// Macros run in a real LibreOffice by the report runner.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/files.h"
#include "tools/report-runner/Process.h"

namespace qva {

/// One run of the report runner on a workbook.
struct RunResult {
  int exit_status = -1;
  std::string output;              ///< what the runner printed, its steps among it
  std::string errors;              ///< what it printed on the error output
  std::string messages;            ///< log of the message boxes
  std::vector<std::string> lines;  ///< what the macro wrote
};

class CalcTest : public testing::Test {
 protected:
  /// A workbook <macro>.fods in the private folder: the project has one module "Ataskaita", which holds
  /// tests/calc/macros/<macro>.bas, and `sheets` are its sheets and names in OpenDocument's XML.
  std::filesystem::path WriteWorkbook(const std::string& macro, const std::string& project,
                                      const std::string& sheets);
  static std::string XmlText(const std::string& text);

  /// Runs tests/calc/macros/<name>.bas in a workbook of one empty sheet.
  RunResult RunMacro(const std::string& name, std::vector<std::string> options = {});
  /// Runs a workbook; further options of the runner come before its name.
  RunResult RunWorkbook(const std::filesystem::path& workbook, std::vector<std::string> options = {},
                        std::map<std::string, std::string> environment = {});

  /// The same in two steps, for a test that does something meanwhile, such as working LibreOffice's windows
  /// (option "--show", with a Desktop's variables in `environment`).
  void StartMacro(const std::string& name, std::vector<std::string> options,
                  std::map<std::string, std::string> environment);
  void StartWorkbook(const std::filesystem::path& workbook, std::vector<std::string> options,
                     std::map<std::string, std::string> environment);
  /// Starts the runner with these arguments, and with what LibreOffice needs of the environment.
  void StartRunner(const std::vector<std::string>& arguments, std::map<std::string, std::string> environment);
  bool IsRunning() { return run_->IsRunning(); }
  /// Waits until the runner of this start has printed a text.
  void WaitForOutput(const std::string& text) const;
  pid_t RunnerPid() const { return run_->Pid(); }
  /// Waits until the macro has written a line.
  void WaitForLine(const std::string& line) const;
  /// LibreOffice's own process, which a run started through its scripts; that of a worker, where it has a
  /// copy for its job. Raises std::runtime_error where it does not run.
  pid_t OfficePid() const;
  /// Waits for the end of what was started.
  RunResult Finish();
  /// What the macro wrote until now.
  std::vector<std::string> Lines() const;

  /// A copy of the host's resources with more SQL at the end of the sample: the value of --host-resources.
  std::string ResourcesWith(const std::string& sql) const;

  /// A build folder for the runner, with this module in the host's place.
  std::filesystem::path BuildFolderWith(const std::filesystem::path& host_module) const;

  /// The text of a PDF file, its pages ended by form feeds.
  std::string PdfText(const std::filesystem::path& pdf) const;
  /// Everything in the file, empty when there is none.
  static std::string Contents(const std::filesystem::path& path) { return FileContent(path, ""); }
  /// Expects that no text of LibreOffice's for its own developers got out of a run.
  static void ExpectNoWordOfUno(const RunResult& run);

  const TemporaryFolder temporary_folder;
  const std::filesystem::path folder = temporary_folder.path();
  std::filesystem::path output = folder / "out";  ///< the run's output folder
  std::string launcher;                           ///< a command of the shell that comes before the runner's

 private:
  std::unique_ptr<Process> run_;
};

}  // namespace qva
