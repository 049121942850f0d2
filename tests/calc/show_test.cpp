// The report runner on a screen, where a user answers.
#include "tests/calc/calc_fixture.h"
#include "tests/calc/desktop.h"

namespace qva {
namespace {

using testing::ElementsAre;

class ReportRunnerShown : public CalcTest {
 protected:
  Desktop desktop{folder / "desktop"};
};

TEST_F(ReportRunnerShown, LetsTheUserAnswerTheMacro) {
  StartMacro("shown", {"--show"}, desktop.environment());
  const Desktop::Window box = desktop.WaitForWindow("Pasisveikinimas");
  EXPECT_TRUE(desktop.HasWindow("shown.fods")) << "the workbook";
  desktop.Keys(box, {"Return"});
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("answer: 1"));
}

}  // namespace
}  // namespace qva
