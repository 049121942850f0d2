// A report that fails in its middle: its error handler gives the user his program back.
#include <fstream>

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
    std::ofstream(file) << workbook;
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
