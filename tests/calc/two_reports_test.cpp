// Several workbooks with toolbars, and several windows of one, in a real LibreOffice.
#include "tests/calc/toolbar_fixture.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class CalcTwoReports : public CalcToolbar {
 protected:
  /// Runs a procedure of the report, beside which lie another one and one of its own name.
  RunResult Run(const std::string& procedure) {
    const fs::path report = ToolbarWorkbook("two_reports");
    fs::copy_file(report, folder / "Kita.fods");
    fs::create_directory(folder / "kita");
    fs::copy_file(report, folder / "kita" / report.filename());
    fs::copy_file(report, folder / "kita" / "Jono's ataskaita.fods");
    return RunWorkbook(report, {"--no-picture", "--macro", "VBAProject.Ataskaita." + procedure});
  }
};

TEST_F(CalcTwoReports, EachToolbarKeepsToItsOwnDocument) {
  const RunResult run = Run("Main");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::string other = " | none, keys 0, menu none, marks True";
  EXPECT_THAT(
      run.lines,
      ElementsAre("shown: ~Rikiuoti, keys 5, menu none, marks True" + other, "button: 0",
                  "used: Taškas, keys 5, menu Grįžti į ataskaitą, marks True" + other,
                  "comments again: Taškas, keys 5, menu Grįžti į ataskaitą, marks False" + other, "button: 0",
                  "report state: ~Rikiuoti, keys 13, menu Grįžti į ataskaitą, marks False" + other,
                  "ordinary state: ~Rikiuoti, keys 5, menu Grįžti į ataskaitą, marks True" + other, "dropped",
                  "dropped: none, keys 0, menu none, marks True" + other));
}

TEST_F(CalcTwoReports, AnotherOneGoesOnWhenOneIsClosedWithItsToolbar) {
  const RunResult run = Run("AfterAClosedOne");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("other: ~Rikiuoti, keys 5, menu none, marks True", "own: 1"));
}

TEST_F(CalcTwoReports, AnotherOneGoesOnWhenTheConnectedOneIsClosedBeforeItHadBars) {
  const RunResult run = Run("AfterAClosedOneWithoutBars");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("created: 1004 | LibreOffice | The workbook is closed", "own: 1"));
}

TEST_F(CalcTwoReports, ButtonsRunTheMacrosOfTheirOwnDocumentAmongTwoOfOneName) {
  const RunResult run = Run("OfOneName");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("sorted in the report", "sorted in the other one", "sorted in the report"));
}

TEST_F(CalcTwoReports, TheMarksOfCommentsBringBackTheCellsOfTheirOwnDocument) {
  const RunResult run = Run("InPreview");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("previews: preview preview", "comments: cells preview True"));
}

TEST_F(CalcTwoReports, AMacroOfANamedWorkbookIsSoughtInThatWorkbookAlone) {
  const RunResult run = Run("OfQuotedNames");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("sorted in the other one", "sorted in the report", "closed"));
  EXPECT_THAT(run.messages, HasSubstr("Nerasta makrokomanda „'Jono''s ataskaita.fods'!Rikiuoti“."));
}

TEST_F(CalcToolbar, KeysThatLibreOfficeCannotBindAreTakenWithoutEffect) {
  const RunResult run = RunWorkbook(ToolbarWorkbook("toolbar_keys"), {"--no-picture"});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("shown: True", "^- 0, keys 4", "^= 0, keys 4", "^; 0, keys 4", "^{+} 0, keys 4",
                          "+^%{]} 0, keys 4", "^{BREAK} 0, keys 4", "{CAPSLOCK} 0, keys 4", "{}} 0, keys 4",
                          "{CLEAR} 0, keys 4", "%š 0, keys 4", "^m 0, keys 5",
                          "no key: 1004 | LibreOffice | There is no key '{NERA}'", "reset: True", "keys 0"));
}

TEST_F(CalcToolbar, EveryWindowHasLiveButtonsAndAMissingMacroIsTold) {
  const RunResult run = RunWorkbook(ToolbarWorkbook("toolbar_windows"), {"--no-picture"});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("another window: True", "first: True", "sorted", "dot", "second: True", "sorted",
                          "dot", "button hidden: True True", "second alone: True", "sorted", "dot",
                          "in the preview: False", "after the preview: True", "invisible: False"));
  EXPECT_THAT(run.messages, HasSubstr("Nerasta makrokomanda „toolbar_windows.fods!Nera“."));
  EXPECT_THAT(run.messages, HasSubstr("Nerasta makrokomanda „toolbar_windows.fods!Nera.Taip“."));
}

}  // namespace
}  // namespace qva
