// LibreOffice's windows keep what all forms, lists and message boxes promise.
#include <sstream>
#include <thread>

#include "tests/calc/windows_fixture.h"

namespace qva {
namespace {

using testing::Contains;
using testing::StartsWith;

class CalcContracts : public CalcWindows {
 protected:
  /// Does with each window what the tests in LibreOffice tell, until they have ended.
  void BeTheUser() {
    std::size_t done = 0;  // of what was told
    while (IsRunning()) {
      const std::string told = Contents(folder / "user").substr(done);
      const std::size_t end = told.find('\n');
      if (end == told.npos) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        continue;
      }
      done += end + 1;
      std::istringstream line(told.substr(0, end));
      std::string title, text, key;
      std::getline(line, title, '\t');
      std::getline(line, text, '\t');
      title = "^" + title + "$";
      const Desktop::Window window = desktop.WaitForWindow(title);
      if (!text.empty()) desktop.Type(window, text);
      while (line >> key) desktop.Keys(window, {key});
      // A form that is shown again has the same window at once.
      desktop.WaitFor("the end of a window",
                      [&] { return Contents(folder / "user").size() > done || !desktop.HasWindow(title); });
    }
  }
};

TEST_F(CalcContracts, AreKept) {
  std::map<std::string, std::string> environment = desktop.environment();
  environment["QVA_TEST_USER"] = (folder / "user").string();
  StartMacro("contracts",
             {"--show", "--timeout", "300", "--build-folder", BuildFolderWith(ContractsModuleFile())},
             environment);
  BeTheUser();
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  ASSERT_FALSE(run.lines.empty());
  if (run.lines.back() != "all passed") {
    for (const std::string& line : run.lines) ADD_FAILURE() << line;
  }
  for (const char* contract : {"FormContract", "MessageBoxContract", "ListChooserContract"}) {
    EXPECT_THAT(run.lines, Contains(StartsWith(std::string("passed: CalcWindows/") + contract)));
  }
}

}  // namespace
}  // namespace qva
