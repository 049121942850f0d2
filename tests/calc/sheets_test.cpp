// What macros and users do to sheets and windows in LibreOffice around the library's calls.
#include <algorithm>

#include "tests/calc/calc_fixture.h"

namespace qva {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char kGone[] = ": -2147221080 | LibreOffice | Automation error";
constexpr char kProtected[] =
    ": 1004 | LibreOffice | The cell or chart you are trying to change is protected and therefore read-only.";

class CalcSheets : public CalcTest {
 protected:
  CalcSheets() { std::filesystem::create_directories(folder / "drives/C/Ataskaitos/Archyvas"); }

  /// Runs a macro in a workbook of the sheets "Lapas" and "Antras"; the name "Print" means two areas of the
  /// former, and of the latter a print area.
  RunResult RunSheets(const std::string& macro) {
    const std::string row = "<table:table-row><table:table-cell/></table:table-row></table:table>";
    const std::filesystem::path workbook = WriteWorkbook(
        macro, "Balansas",
        "<table:table table:name=\"Lapas\">" + row +
            "<table:table table:name=\"Antras\" table:print-ranges=\"Antras.A1:Antras.B2\">" + row +
            "<table:named-expressions><table:named-expression table:name=\"Print\" "
            "table:base-cell-address=\"$Lapas.$A$1\" "
            "table:expression=\"[$Lapas.$A$3:.$B$4]~[$Lapas.$D$6]\"/>"
            "<table:named-range table:name=\"Saved\" table:base-cell-address=\"$Lapas.$A$1\" "
            "table:cell-range-address=\"$Lapas.$H$5\"/></table:named-expressions>");
    return RunWorkbook(workbook, {"--no-picture", "--macro", "Balansas.Ataskaita.Main"},
                       {{"QVA_VARNHOLT_DRIVES", folder / "drives"}});
  }
  static std::ptrdiff_t CountOf(const std::string& text, const std::string& part) {
    std::ptrdiff_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
    return count;
  }
};

TEST_F(CalcSheets, TheScreenIsTurnedOffOnceAndOnAtOnce) {
  const RunResult run = RunSheets("screen");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("coloured, off: False", "coloured, on: 0", "coloured, never off: 0",
                                     "taken over: 0", "locked: 0", "held: False", "released: 0",
                                     "frozen: False", "thawed: 0", "held again: False", "disconnected: 0"));
}

TEST_F(CalcSheets, WhatNeedsTheCellsLeavesThePreview) {
  const RunResult run = RunSheets("preview_left");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("preview", "state: cells False 100", "preview", "reset: cells True",
                                     "preview", "coloured: preview 15", "locked: cells False True", "preview",
                                     "printed: cells", "preview", StartsWith("taken over: cells Kita"),
                                     "preview", "preview", "saved: True Balansas_2024_03.xls", "preview",
                                     "hidden: 0 True False", "back: cells Lapas 0"));
  ExpectNoWordOfUno(run);
}

// CToolbar.Init ignores what it cannot read.
TEST_F(CalcSheets, CellsOfAClosedWorkbookRaiseAnError) {
  const RunResult run = RunSheets("closed_workbook");
  EXPECT_EQ(run.exit_status, 1) << "the refusals are failures of the report";
  const auto gone = [](const std::string& what) { return what + kGone; };
  EXPECT_THAT(run.lines, ElementsAre("closed", gone("frozen"), gone("areas frozen"), gone("locked"),
                                     gone("filled"), gone("date"), "shown: 0 |  | ", gone("toolbar"),
                                     "sheet: 0 |  | ", "workbook: 0 |  | ", gone("period"), "alive"));
  EXPECT_EQ(CountOf(run.messages, "Automation error"), 4) << "colours twice, a print, a save";
  ExpectNoWordOfUno(run);
}

TEST_F(CalcSheets, ProtectionFromTheUserAloneLetsTheLibraryWriteAndAnyOtherIsKept) {
  const RunResult run = RunSheets("protected_sheet");
  EXPECT_EQ(run.exit_status, 1) << "the refusals are failures of the report";
  // What a run of all changes leaves and raises, each line of an error's text but the first left out.
  const std::vector<std::string> all = {"colour: 15",         "locking: 0 |  | ",
                                        "unlocking: 0 |  | ", "locked: False",
                                        "frozen: 0 |  | ",    "unlocked cell frozen: 0 |  | ",
                                        "formulas: 2 2",      "unlocked cell of texts frozen: 0 |  | ",
                                        "formula: 2 @",       "filled: 0 |  | ",
                                        "protected: True"};
  const std::vector<std::string> refused = {"colour: -4142",
                                            std::string("locking") + kProtected,
                                            std::string("unlocking") + kProtected,
                                            "locked: False",
                                            std::string("frozen") + kProtected,
                                            "unlocked cell frozen: 0 |  | ",
                                            "formulas: =1+1 2",
                                            std::string("unlocked cell of texts frozen") + kProtected,
                                            "formula: =1+1 @",
                                            std::string("filled") + kProtected,
                                            "protected: True"};
  std::vector<std::string> expected = {"from the user alone"};
  const auto then = [&](const std::vector<std::string>& lines) {
    expected.insert(expected.end(), lines.begin(), lines.end());
  };
  then(all);
  then({"moved: -4142", "password: False", "by a password"});
  then(refused);
  then({"again, wrong and right"});
  then(refused);
  then(all);
  then({"unprotected: False"});
  std::vector<std::string> lines = run.lines;
  std::erase_if(lines, [](const std::string& line) { return line.empty() || line.starts_with("To modify"); });
  EXPECT_EQ(lines, expected);
  EXPECT_EQ(CountOf(run.messages, "protected and therefore read-only"), 2) << "one for each refused colour";
}

TEST_F(CalcSheets, SeveralAreasAreOneZone) {
  const RunResult run = RunSheets("areas");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("list: 15 -4142 -4142 15 -4142 -4142 ", "union: 15 -4142 -4142 15 15 15 ",
                          "none: -4142 -4142 -4142 -4142 15 15 ", "unlocked: False False True",
                          "locked: True True", "frozen: 2 3 =1+3", "print area: $A$3:$B$4,$D$6"));
  EXPECT_EQ(run.messages, "");
  // Each area on a page of its own, and nothing of what stands around them.
  const std::string printed = PdfText(output / "printed-1.pdf");
  EXPECT_EQ(CountOf(printed, "\f"), 2);
  EXPECT_THAT(printed, AllOf(HasSubstr("E3S1"), HasSubstr("E4S1"), HasSubstr("E6S4"), Not(HasSubstr("E6S1")),
                             Not(HasSubstr("E5S"))));
}

}  // namespace
}  // namespace qva
