// The report state in a real LibreOffice, and the user's own settings afterwards.
#include "tests/calc/calc_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

class CalcEnvironment : public CalcTest {};

// What is missing is listed in docs/libreoffice.md: a LibreOffice that has more of Excel's settings shows
// here.
TEST_F(CalcEnvironment, EverySettingThatLibreOfficeHasComesBack) {
  const RunResult run = RunMacro("environment");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(
      run.lines,
      ElementsAre(
          "settings: 16, missing 13", "snapshot: the same",
          "report: formula bar False, status bar True, gridlines False, headings False, outline False, "
          "tabs True, vertical True, zoom 100, calculation -4105, cell $A$1, caption []",
          "round: the same", "released: True",
          "user's: formula bar True, status bar False, gridlines False, headings True, outline True, "
          "tabs False, vertical False, zoom 80, calculation -4105, cell $C$5, caption [Mano]",
          "report: formula bar False, status bar True, gridlines False, headings False, outline False, "
          "tabs False, vertical False, zoom 100, calculation -4105, cell $A$1, caption []",
          "ordinary: formula bar True, status bar True, gridlines True, headings True, outline True, "
          "tabs True, vertical False, zoom 100, calculation -4105, cell $A$1, caption []",
          "report again: formula bar False, status bar True, gridlines False, headings False, outline "
          "False, tabs False, vertical False, zoom 100, calculation -4105, cell $A$1, caption []",
          "nested round: the same"));
}

// Without our refusal of what would crash it, LibreOffice ends in the middle of this macro.
TEST_F(CalcEnvironment, AWorkbookThatIsHiddenDoesNotCrashLibreOffice) {
  const RunResult run = RunMacro("hidden_window");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("visible: False", "report: zoom 100, gridlines False",
                          "ordinary: zoom 100, gridlines True", "user's: zoom 100, gridlines True", "alive"));
}

}  // namespace
}  // namespace qva
