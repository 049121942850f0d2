// What report workbooks' macros see of the library in LibreOffice.
#include <cstdlib>
#include <filesystem>

#include "tests/calc/calc_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class CalcMacros : public CalcTest {};

TEST_F(CalcMacros, InitConnectWithEmptyP0RaisesNumberSourceAndText) {
  const RunResult run = RunMacro("connect_failures", {"--book", ""});
  EXPECT_EQ(run.exit_status, 1) << "the library told of a failure";
  EXPECT_THAT(
      run.lines,
      ElementsAre("InitConnectEX: -2147221504 | InitConnectEX | "
                  "Nepasirinkta apskaitos knyga. Atverkite ją apskaitos sistemoje ir bandykite dar kartą.",
                  "book is Nothing: True"));
}

TEST_F(CalcMacros, InitConnectWithAnUnknownBookRaises842WithTheBook) {
  const RunResult run = RunMacro("connect_failures", {"--book", "NĖRA TOKIOS"});
  EXPECT_EQ(run.exit_status, 1) << "the library told of a failure";
  EXPECT_THAT(run.lines, ElementsAre("InitConnectEX: -2147221504 | InitConnectEX | Nepavyko prisijungti prie "
                                     "apskaitos knygos „NĖRA TOKIOS“.",
                                     "book is Nothing: True"));
}

TEST_F(CalcMacros, WrongUseGivesAutomationsOwnErrors) {
  const RunResult run = RunMacro("automation_errors");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::string lib = " | QVA_Varnholt | ";
  EXPECT_THAT(
      run.lines,
      ElementsAre(
          "unknown method: 438" + lib + "Object doesn't support this property or method",
          "unknown property: 438" + lib + "Object doesn't support this property or method",
          "unknown property put: 438" + lib + "Object doesn't support this property or method",
          "too few arguments: 450" + lib + "Wrong number of arguments or invalid property assignment",
          "too many arguments: 450" + lib + "Wrong number of arguments or invalid property assignment",
          "no object: 13" + lib + "Type mismatch", "no text: 13" + lib + "Type mismatch",
          "unknown named argument: 448" + lib + "Named argument not found",
          "read-only property: 438" + lib + "Object doesn't support this property or method",
          "object not set: 91" + lib + "Object variable or With block variable not set",
          "host's own error: -2147221499 | NVXCommonObjects | CompanyAttributes.Init needs a book",
          "unknown class: 429" + lib + "QVA_Varnholt.NoSuchClass: no such class",
          HasSubstr("foreign class: 323"), "handler: 13" + lib + "Type mismatch"));
}

TEST_F(CalcMacros, HelpOpensThePagesBesideAHelpFile) {
  // The desktop's program for files tells what it was given.
  namespace fs = std::filesystem;
  const fs::path opened = folder / "opened";
  const fs::path opener = folder / "bin" / "xdg-open";
  const fs::path pages = folder / "drives" / "C" / "Help" / "Reports";
  fs::create_directories(opener.parent_path());
  fs::create_directories(pages);
  WriteFile(opener, "#!/bin/sh\necho \"$1\" > '" + opened.string() + ".new'\nmv '" + opened.string() +
                        ".new' '" + opened.string() + "'\n");
  fs::permissions(opener, fs::perms::owner_all);
  WriteFile(pages / "index.html", "<html></html>");
  StartMacro("help_pages", {},
             {{"PATH", opener.parent_path().string() + ":" + std::getenv("PATH")},
              {"QVA_VARNHOLT_DRIVES", (folder / "drives").string()},
              {"QVA_TEST_OPENED", opened.string()}});
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("shown: 0 |  | ", HasSubstr("shown: 1004 | ")));
  EXPECT_THAT(Contents(opened), HasSubstr("/C/Help/Reports/index.html"));
}

TEST_F(CalcMacros, AReportLivesFromConnectionToReset) {
  const RunResult run = RunMacro("report_life");
  EXPECT_EQ(run.exit_status, 1) << "the library told of a failure";
  EXPECT_THAT(run.lines, ElementsAre("connected: 1", "again: 1", "book: MEDVILNE", "same book: True",
                                     "second instance: 0", "passed book: 0", "kept: True BALTIJA",
                                     StartsWith("caption: Ataskaita ąčę"), HasSubstr("name: before | "),
                                     HasSubstr("code: "), HasSubstr("address: "), "untouched: before",
                                     "toolbars survive: True", "toolbars gone: True", "environment: True",
                                     "environment gone: True", "reset: True True", "reported"));
  EXPECT_THAT(run.messages, HasSubstr("Klaida ąčę"));
}

TEST_F(CalcMacros, ToolsFindBooksFreezeTheScreenAndProtectSheets) {
  const RunResult run = RunMacro("tools");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("open: True ATASKAITA ĄČ.xls", "found: Ataskaita ąč.xls", "not open: False",
                          "opened: Kita.xls True", "not opened: True", "locked: False 2",
                          "unlocked: True -4143 False", "locked again: True -4143", "held: False 2",
                          "released: True -4143", "protected: True", "changed: 5", "wrong password: True",
                          "unprotected: False", "no sheet: False", "file: True True", "no file: False False",
                          "text: a_b_c_d ą_č__"));
}

TEST_F(CalcMacros, AStatusBarThatTheUserHasHiddenStaysHidden) {
  const RunResult run = RunMacro("status_bar");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("shown: False"));
}

TEST_F(CalcMacros, AReportsTitleGoesFromTheWindowWithItsWorkbook) {
  const RunResult run = RunMacro("caption");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre(StartsWith("report: Pelnas, 2025 m."),
                          StartsWith("after its preview: Pelnas, 2025 m."), Not(HasSubstr("Pelnas"))));
}

TEST_F(CalcMacros, TheSearchPathGainsTheFolderOnce) {
  const RunResult run = RunMacro("set_path");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("added: True", "again: False"));
  EXPECT_THAT(run.messages, HasSubstr("Aplankas „\\Varnholt“ įtrauktas"));
}

TEST_F(CalcMacros, MessagesAreAnsweredFromTheAnswersFileAndLogged) {
  WriteFile(folder / "answers.txt", "# the only question\nNe\n");
  const RunResult run = RunMacro("messages", {"--answers", (folder / "answers.txt").string()});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("answer: 2", "unanswered: 1"));
  EXPECT_THAT(run.messages, HasSubstr("Ar tęsti ąčę?"));
  EXPECT_THAT(run.output, HasSubstr("Ar tęsti ąčę?")) << "the runner tells about boxes as they come";
}

TEST_F(CalcMacros, BasicsOwnObjectsAreStillMade) {
  const RunResult run = RunMacro("foreign_objects");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(
      run.lines,
      ElementsAre("structure: tiesiogiai", "structure by name: pagal vardą", "collection: 1",
                  "unknown host class: 429 | QVA_Varnholt | NVXCommonObjects.NoSuchClass: no such class"));
}

TEST_F(CalcMacros, VariablesThatAMemberLeavesAloneKeepTheirTypes) {
  const RunResult run = RunMacro("byref");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("ID: String 7", "empty: Empty", HasSubstr("cell: Range UAB „Medvilnės namai“")));
}

TEST_F(CalcMacros, ExcelReportErrorQuitsAnInvisibleExcel) {
  const RunResult run = RunMacro("invisible");
  EXPECT_THAT(run.lines, ElementsAre("visible: False"));
  EXPECT_THAT(run.messages, HasSubstr("Klaida nematomame"));
  EXPECT_NE(run.exit_status, 0);
  EXPECT_NE(run.exit_status, 8) << "LibreOffice had to be stopped: " << run.errors;
}

TEST_F(CalcMacros, AnUnhandledErrorOfSeveralLinesIsReportedWhole) {
  const RunResult run = RunMacro("unhandled_lines");
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_THAT(run.errors, HasSubstr("pirma\nantra"));
}

TEST_F(CalcMacros, AnUnhandledErrorFailsTheRunWithItsText) {
  const RunResult run = RunMacro("unhandled");
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_THAT(run.errors, HasSubstr("-2147221503 (makrokomanda) Neapdorota klaida"));
}

TEST_F(CalcMacros, AMacroThatDoesNotCompileFailsTheRun) {
  const RunResult run = RunMacro("does_not_compile");
  EXPECT_EQ(run.exit_status, 4);
  EXPECT_THAT(run.errors, HasSubstr("does not compile"));
}

}  // namespace
}  // namespace qva
