// What becomes of a handler's exception in LibreOffice's windows.
#include "tests/calc/windows_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

class CalcWindowFailures : public CalcWindows {};

TEST_F(CalcWindowFailures, EndTheFormAndComeOutOfIt) {
  StartShown("shown_failures", {"--build-folder", BuildFolderWith(ExcelCallsModuleFile())});
  for (const char* failure : {"memory", "range", "error", "none"}) {
    const Desktop::Window form = desktop.WaitForWindow(std::string("Klaida: ") + failure);
    desktop.Keys(form, {"Return"});
    desktop.WaitUntilGone(form);
  }
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("memory: bad_alloc", "range: beyond the end", "error: 1004 Refused",
                                     "none: nothing"));
}

}  // namespace
}  // namespace qva
