// Reports finished in LibreOffice: printed, frozen, locked, coloured and stored in the archive.
#include <unistd.h>

#include "tests/calc/calc_fixture.h"
#include "tools/report-runner/Process.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class CalcFinish : public CalcTest {
 protected:
  CalcFinish() { fs::create_directories(archive); }

  /// A workbook whose project is "Balansas": the sheet "Lapas" of 120 rows "E<row>S<column>", of which the
  /// name "Print" means the rows 3 to 110 of two columns, and an empty sheet; "Saved" is the cell H5.
  RunResult RunReport(const std::string& macro, std::vector<std::string> options = {}) {
    std::string rows;
    for (int row = 1; row <= 120; ++row) {
      rows += "<table:table-row>";
      for (int column = 1; column <= 4; ++column) {
        rows += "<table:table-cell office:value-type=\"string\"><text:p>E" + std::to_string(row) + "S" +
                std::to_string(column) + "</text:p></table:table-cell>";
      }
      rows += "</table:table-row>";
    }
    const auto name = [](const std::string& what, const std::string& cells) {
      return "<table:named-range table:name=\"" + what +
             "\" table:base-cell-address=\"$Lapas.$A$1\" table:cell-range-address=\"$Lapas." + cells + "\"/>";
    };
    const fs::path workbook = WriteWorkbook(
        macro, "Balansas",
        "<table:table table:name=\"Lapas\">" + rows +
            "</table:table><table:table table:name=\"Antras\"><table:table-row><table:table-cell/>"
            "</table:table-row></table:table><table:named-expressions>" +
            name("Print", "$A$3:.$B$110") + name("Saved", "$H$5") + "</table:named-expressions>");
    options.insert(options.end(), {"--no-picture", "--macro", "Balansas.Ataskaita.Main"});
    return RunWorkbook(workbook, std::move(options), {{"QVA_VARNHOLT_DRIVES", folder / "drives"}});
  }

  /// The options that let the boxes be answered so.
  std::vector<std::string> Answers(const std::vector<std::string>& answers) {
    std::string lines;
    for (const std::string& answer : answers) lines += answer + "\n";
    WriteFile(folder / "answers.txt", lines);
    return {"--answers", (folder / "answers.txt").string()};
  }

  /// The text of a printed job, its pages parted by form feeds.
  std::string PrintedText(int job) {
    const fs::path pdf = output / ("printed-" + std::to_string(job) + ".pdf");
    return fs::exists(pdf) ? PdfText(pdf) : std::string();
  }
  static std::ptrdiff_t Pages(const std::string& text) { return std::count(text.begin(), text.end(), '\f'); }

  fs::path archive = folder / "drives/C/Ataskaitos/Archyvas";
};

TEST_F(CalcFinish, AReportIsPrintedFrozenLockedColouredAndStored) {
  const RunResult run = RunReport("finish", Answers({"Po vieną puslapį", "Gerai", "Gerai", "Gerai", "Ne",
                                                     "Taip", "Gerai", "Gerai", "Gerai"}));
  EXPECT_EQ(run.exit_status, 1) << "the library told of a failure";
  EXPECT_THAT(
      run.lines,
      ElementsAre("printed: 0 Antras $A$3:$B$110", "a date: False Date 2024-05-15", "like formulas: =J1 =J1",
                  "screen: True $A$1", "saved: True Balansas_2024_03.xls True", "refused: True False",
                  "replaced: True True", "by date: True Balansas_2024_05.xls", "wrong year: False",
                  "opened: Kopija.xls", "formulas: 6|10|10.5||#DIV/0!|#N/A|0|ąč|a = b|=F1*2",
                  "block: 11,0,100|21,0,200|31,0,300|=J1,=J1,", "saved cell: True", "locked: True False True",
                  "colours: 15 -4142 -4142", "stored first: 5 True"));

  const std::string archived = Contents(archive / "2024/Balansas_2024_03.xls");
  EXPECT_THAT(archived, StartsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
  EXPECT_TRUE(fs::exists(archive / "2024/Balansas_2024_05.xls"));

  const std::string whole = PrintedText(1);
  EXPECT_EQ(Pages(whole), 3);
  EXPECT_THAT(whole, AllOf(HasSubstr("E3S1"), HasSubstr("E110S2")));
  for (const char* outside : {"E1S1", "E2S1", "E111S1", "E3S3"}) EXPECT_THAT(whole, Not(HasSubstr(outside)));
  const std::string first = PrintedText(2);
  const std::string second = PrintedText(3);
  EXPECT_EQ(Pages(first), 1);
  EXPECT_EQ(Pages(second), 1);
  EXPECT_EQ(whole.substr(0, first.size()), first);
  EXPECT_THAT(second, AllOf(Not(HasSubstr("E3S1")), Not(HasSubstr("E110S1"))));
  EXPECT_EQ(PrintedText(4), "") << "a sheet without print area is not printed";

  for (const char* text :
       {"Kaip spausdinti ataskaitą?", "Paruoškite spausdintuvą: bus spausdinamas 2 puslapis.",
        "Šiame lape nenustatyta spausdinimo sritis", "Šio laikotarpio ataskaita archyve jau yra",
        "„C:\\Ataskaitos\\Archyvas\\2024\\Balansas_2024_03.xls“.",
        "Neteisingai nurodyta formos data arba ataskaitos laikotarpis."}) {
    EXPECT_THAT(run.messages, HasSubstr(text));
  }
}

TEST_F(CalcFinish, APreviewTakesTheWindowAndPrintsNothing) {
  const RunResult run = RunReport("preview");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("cells: True", "cells: False"));
  EXPECT_EQ(run.messages, "");
  EXPECT_EQ(PrintedText(1), "");
}

TEST_F(CalcFinish, AStoredReportIsFoundInAFolderThatCannotBeListed) {
  const fs::path stored = archive / "2024/Balansas_2024.xls";
  for (const char* year : {"2024", "2025"}) fs::create_directories(archive / year);
  WriteFile(stored, "of last week");
  for (const char* year : {"2024", "2025"}) {
    fs::permissions(archive / year, fs::perms::owner_write | fs::perms::owner_exec);
  }
  // Root may list every folder, unless he gives that up.
  constexpr char kAsOthers[] =
      "setpriv --inh-caps=-dac_override,-dac_read_search "
      "--bounding-set=-dac_override,-dac_read_search";
  if (geteuid() == 0) launcher = kAsOthers;
  const RunResult run = RunReport("archive_unlisted", Answers({"Ne", "Taip", "Gerai", "Gerai"}));
  for (const char* year : {"2024", "2025"}) fs::permissions(archive / year, fs::perms::owner_all);
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("kept: True archive_unlisted.fods", "replaced: True Balansas_2024.xls",
                                     "new: True Balansas_2025.xls"));
  for (const char* year : {"2024", "2025"}) {
    EXPECT_THAT(Contents(archive / year / ("Balansas_" + std::string(year) + ".xls")),
                StartsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
  }
}

TEST_F(CalcFinish, AReportWithoutAnArchiveIsNotStored) {
  fs::remove_all(archive);
  const RunResult run = RunReport("no_archive");
  EXPECT_EQ(run.exit_status, 1) << "the library told of a failure";
  EXPECT_THAT(run.lines, ElementsAre("saved: False no_archive.fods True"));
  EXPECT_THAT(run.messages, HasSubstr("C:\\Ataskaitos\\Archyvas\\2024\\"));
}

}  // namespace
}  // namespace qva
