// What becomes of a handler's exception in LibreOffice's windows.
#include "tests/calc/calc_fixture.h"
#include "tests/calc/desktop.h"

namespace qva {
namespace {

using testing::ElementsAre;

namespace fs = std::filesystem;

class CalcWindowFailures : public CalcTest {
 protected:
  Desktop desktop{folder / "desktop"};
};

TEST_F(CalcWindowFailures, EndTheFormAndComeOutOfIt) {
  const fs::path build = folder / "build";
  fs::create_directory(build);
  fs::create_symlink(QVA_CALC_COMPONENT, build / "libqva_calc.so");
  fs::create_symlink(QVA_EXCEL_CALLS_MODULE, build / "libqva_host.so");
  StartMacro("shown_failures", {"--show", "--build-folder", build.string()}, desktop.environment());
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
