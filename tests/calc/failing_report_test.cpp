// A report that fails in its middle: its error handler gives the user his program back.

#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kUsersProgram[] =
    "menus True, standard bar True, report bars 0, keys 0, formula bar True, gridlines True, headings False, "
    "zoom 80, locked False";

class CalcFailingReport : public CalcTest {
 protected:
  static std::string Module(const std::string& name, const std::string& source) {
    return "<ooo:module ooo:name=\"" + name + "\"><ooo:source-code>" + XmlText(source) +
           "</ooo:source-code></ooo:module>";
  }

  /// Puts `added` behind the only place where `text` has `after`.
  static void Insert(std::string& text, const std::string& after, const std::string& added) {
    const std::size_t at = text.find(after);
    ASSERT_NE(at, text.npos) << after;
    ASSERT_EQ(text.find(after, at + 1), text.npos) << after;
    text.insert(at + after.size(), added);
  }

  /// Runs the workbook, which a module that looks at the user's program joins.
  void ExpectTheUsersProgramBack(std::string workbook, const std::string& name) {
    const fs::path macros = SourceFolder() / "tests/calc/macros";
    Insert(workbook, "<ooo:library-embedded ooo:name=\"" + name + "\">",
           Module("Tikrinimas", Contents(macros / "failing_sample.bas") + Contents(macros / "log.bas")));
    const fs::path file = folder / "failing.fods";
    WriteFile(file, workbook);
    const RunResult run =
        RunWorkbook(file, {"--no-picture", "--macro", "Tikrinimas.RunSample", "--form-answers",
                           (SourceFolder() / "samples/balance.answers").string()});
    EXPECT_EQ(run.exit_status, 1) << run.errors;
    EXPECT_THAT(run.messages, HasSubstr("text:    Nutrūko"));
    EXPECT_THAT(run.lines,
                ElementsAre(std::string("before: ") + kUsersProgram, std::string("after: ") + kUsersProgram));
  }
};

constexpr char kError[] = "    Err.Raise 1004, \"Ataskaita\", \"Nutrūko\"\n";

TEST_F(CalcFailingReport, OfTheSamplesGivesTheUserHisProgramBack) {
  std::string workbook = Contents(SourceFolder() / "samples/balance.fods");
  Insert(workbook, "Private Sub Uzbaigti()\n", kError);
  ExpectTheUsersProgramBack(workbook, "Balansas");
}

// What belongs to a window is given back in the active one.
TEST_F(CalcFailingReport, WhileAnotherWorkbookIsActiveGivesTheUserHisProgramBack) {
  std::string workbook = Contents(SourceFolder() / "samples/balance.fods");
  Insert(workbook, "Private Sub Uzbaigti()\n", std::string("    Workbooks.Add\n") + kError);
  ExpectTheUsersProgramBack(workbook, "Balansas");
}

TEST_F(CalcFailingReport, TellsWhatTheReportItselfFound) {
  std::string workbook = Contents(SourceFolder() / "samples/balance.fods");
  Insert(workbook, "\n    RasytiLikucius\n", "    Sritis(&quot;Skirtumas&quot;).Value = 1\n");
  const fs::path file = folder / "unequal.fods";
  WriteFile(file, workbook);
  const RunResult run = RunWorkbook(
      file, {"--no-picture", "--form-answers", (SourceFolder() / "samples/balance.answers").string()});
  EXPECT_THAT(run.messages, HasSubstr("Turtas nelygus nuosavam kapitalui ir įsipareigojimams."));
}

/// A second sample that is opened meanwhile, and does all that it does; which of the two goes first.
class CalcTwoSamples : public CalcFailingReport, public testing::WithParamInterface<bool> {};

TEST_P(CalcTwoSamples, DoNotMeetAndLeaveTheUsersProgramAsItWas) {
  const fs::path macros = SourceFolder() / "tests/calc/macros";
  std::string workbook = Contents(SourceFolder() / "samples/balance.fods");
  Insert(workbook, "<ooo:library-embedded ooo:name=\"Balansas\">",
         Module("Tikrinimas", Contents(macros / "failing_sample.bas") + Contents(macros / "two_samples.bas") +
                                  Contents(macros / "log.bas")));
  WriteFile(folder / "two.fods", workbook);
  fs::copy_file(SourceFolder() / "samples/vat.fods", folder / "vat.fods");
  WriteFile(
      folder / "two.answers",
      "[frmReportPeriod]\ntxtYear = 2025\noptYear\nbtOk\n[frmDatePic]\nMonthView1 double 2026-02-27\n" +
          Contents(SourceFolder() / "samples/vat.answers") +
          "[frmReportPeriod]\ntxtYear = 2024\noptYear\nbtOk\n[frmDatePic]\nMonthView1 double 2025-02-28\n");
  const RunResult run = RunWorkbook(
      folder / "two.fods",
      {"--no-picture", "--macro", "Tikrinimas.RunBoth", "--form-answers", (folder / "two.answers").string()},
      {{"QVA_TEST_SECOND", folder / "vat.fods"}, {"QVA_TEST_FIRST_GOES_FIRST", GetParam() ? "1" : "0"}});
  EXPECT_EQ(run.exit_status, 0) << run.errors << run.messages;
  EXPECT_THAT(
      run.lines,
      ElementsAre(
          std::string("before: ") + kUsersProgram, "both: bars True True",
          GetParam() ? "one left: bars False True" : "one left: bars True False",
          HasSubstr("after: menus True, standard bar True, report bars 0, keys 0, formula bar True")));
  EXPECT_TRUE(fs::exists(output / "drives/C/Ataskaitos/Archyvas/2025/Balansas_2025.xls"));
  EXPECT_TRUE(fs::exists(output / "drives/C/Ataskaitos/Archyvas/2025/PVM registrai_2025_12.xls"));
  EXPECT_EQ(fs::exists(output / "drives/C/Ataskaitos/Archyvas/2024/Balansas_2024.xls"), !GetParam());
  EXPECT_THAT(Contents(GetParam() ? folder / "vat.log" : output / "two.log"),
              HasSubstr("Žinyno parodyti nepavyko: There is no help file"));
}

INSTANTIATE_TEST_SUITE_P(Closed, CalcTwoSamples, testing::Bool(),
                         [](const auto& order) { return order.param ? "FirstOneFirst" : "SecondOneFirst"; });

// The README's macro, in the balance sheet's workbook.
TEST_F(CalcFailingReport, OfTheReadmeGivesTheUserHisProgramBack) {
  const std::string readme = Contents(SourceFolder() / "README.md");
  const std::size_t begin = readme.find("```vb\n") + 6;
  std::string macro = "Option VBASupport 1\n" + readme.substr(begin, readme.find("```", begin) - begin);
  Insert(macro, "        ' … the report itself …\n", kError);

  std::string workbook = Contents(SourceFolder() / "samples/balance.fods");
  const std::string module = "<ooo:module ooo:name=\"Ataskaita\">", end = "</ooo:module>";
  const std::size_t at = workbook.find(module);
  ASSERT_NE(at, workbook.npos);
  workbook.replace(at, workbook.find(end, at) + end.size() - at, Module("Ataskaita", macro));
  ExpectTheUsersProgramBack(workbook, "Balansas");
}

}  // namespace
}  // namespace qva
