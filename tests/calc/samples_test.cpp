// The sample reports from opening to closing, and what they leave in the archive.
#include <cmath>
#include <iomanip>
#include <map>
#include <regex>
#include <sstream>
#include <utility>

#include "tests/calc/windows_fixture.h"
#include "tests/test_paths.h"
#include "tools/report-runner/Process.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The profit of 2025 by the sample company's ledger, which the balance sheet and the statement of profit
/// share.
constexpr const char* kProfit = "30021.32";

class Samples : public CalcTest {
 protected:
  fs::path Archive() const { return output / "drives/C/Ataskaitos/Archyvas"; }

  RunResult RunSample(const std::string& name, const fs::path& answers = {}) {
    const fs::path samples = SourceFolder() / "samples";
    const fs::path form_answers = answers.empty() ? samples / (name + ".answers") : answers;
    return RunWorkbook(samples / (name + ".fods"),
                       {"--form-answers", form_answers.string(), "--log", name + ".log"});
  }

  /// Runs a sample whose macro does something more after Main, as the toolbar's buttons do when the user
  /// presses them.
  RunResult RunAfterwards(const std::string& sample, const std::string& name, const fs::path& answers,
                          const std::string& calls, const std::vector<std::string>& options = {}) {
    std::string workbook = Contents(SourceFolder() / "samples" / (sample + ".fods"));
    const std::string end = "</ooo:source-code>";
    workbook.insert(workbook.find(end), "\nPublic Sub Toliau()\n    Main\n" + calls + "End Sub\n");
    WriteFile(folder / (name + ".fods"), workbook);
    std::vector<std::string> all = {"--no-picture",     "--log",          name + ".log",   "--macro",
                                    "Ataskaita.Toliau", "--form-answers", answers.string()};
    all.insert(all.end(), options.begin(), options.end());
    return RunWorkbook(folder / (name + ".fods"), all);
  }

  /// The log's entries without their times.
  std::vector<std::string> Log(const std::string& name) {
    std::vector<std::string> entries;
    std::istringstream lines(Contents(output / (name + ".log")));
    for (std::string line; std::getline(lines, line);) {
      const std::size_t colon = line.find("  :  ");
      EXPECT_TRUE(std::regex_match(line.substr(0, colon), std::regex("[0-9-]{10} [0-9:]{8}"))) << line;
      entries.push_back(colon == line.npos ? line : line.substr(colon + 5));
    }
    return entries;
  }

  /// The first sheet of an archived workbook, as LibreOffice reads it anew.
  std::string FirstSheet(const fs::path& archived) {
    EXPECT_THAT(Contents(archived), StartsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1")) << archived;
    Process convert({"soffice", "--headless", "--norestore",
                     "-env:UserInstallation=file://" + (folder / "convert").string(), "--convert-to", "fods",
                     "--outdir", (folder / "converted").string(), archived.string()},
                    {}, folder / "convert.txt");
    EXPECT_EQ(convert.Wait(std::chrono::seconds(90)), 0) << Contents(folder / "convert.txt");
    const std::string book = Contents(folder / "converted" / (archived.stem().string() + ".fods"));
    const std::size_t begin = book.find("<table:table ");
    return book.substr(begin, book.find("</table:table>", begin) - begin);
  }

  /// The cells of the row that holds a text, empty ones left out, with "|" between: numbers as they are.
  static std::string Row(const std::string& sheet, const std::string& text) {
    const std::size_t at = sheet.find(">" + text + "<");
    if (at == sheet.npos) return {};
    const std::size_t begin = sheet.rfind("<table:table-row", at);
    const std::string row = sheet.substr(begin, sheet.find("</table:table-row>", begin) - begin);
    static const std::regex cell("<table:table-cell([^>]*[^/])>(.*?)</table:table-cell>");
    static const std::regex value("office:value=\"([^\"]*)\"");
    std::string flat = row;
    for (char& c : flat) c = c == '\n' ? ' ' : c;
    std::string cells;
    for (std::sregex_iterator i(flat.begin(), flat.end(), cell), end; i != end; ++i) {
      const std::string attributes = (*i)[1];
      const std::string content = std::regex_replace((*i)[2].str(), std::regex(" *<[^>]*> *"), "");
      std::smatch number;
      cells += (cells.empty() ? "" : "|") +
               (std::regex_search(attributes, number, value) ? number[1].str() : content);
    }
    return cells;
  }

  /// All rows that hold something, in the same way, with six decimals of numbers at most: what
  /// tests/calc/figures has of each sample, for whoever makes it by other means.
  static std::string Figures(const std::string& sheet) {
    static const std::regex cell("<table:table-cell([^>]*[^/])>(.*?)</table:table-cell>");
    static const std::regex value("office:value=\"([^\"]*)\"");
    static const std::regex repeated("columns-repeated=\"(\\d+)\"");
    std::string figures;
    for (std::size_t begin = sheet.find("<table:table-row"); begin != sheet.npos;
         begin = sheet.find("<table:table-row", begin + 1)) {
      std::string row = sheet.substr(begin, sheet.find("</table:table-row>", begin) - begin);
      for (char& c : row) c = c == '\n' ? ' ' : c;
      std::string cells;
      for (std::sregex_iterator i(row.begin(), row.end(), cell), end; i != end; ++i) {
        const std::string attributes = (*i)[1];
        std::string content = std::regex_replace((*i)[2].str(), std::regex(" *<[^>]*> *"), "");
        std::smatch found;
        if (std::regex_search(attributes, found, value)) {
          std::ostringstream number;
          number << std::setprecision(15) << std::round(std::stod(found[1]) * 1e6) / 1e6;
          content = number.str();
        }
        int times = content.empty() ? 0 : 1;
        if (times && std::regex_search(attributes, found, repeated)) times = std::stoi(found[1]);
        for (int n = 0; n < times; ++n) cells += (cells.empty() ? "" : "|") + content;
      }
      if (!cells.empty()) figures += cells + "\n";
    }
    return figures;
  }
  static std::string ExpectedFigures(const std::string& name) {
    return Contents(SourceFolder() / "tests/calc/figures" / (name + ".txt"));
  }

  static testing::Matcher<std::string> FinishedSheet() {
    return AllOf(HasSubstr("table:protected=\"true\""), Not(HasSubstr("#REF!")), Not(HasSubstr("Err:")));
  }
  /// The number of formulas that are left.
  static std::ptrdiff_t Formulas(const std::string& sheet) {
    const std::regex formula("table:formula=");
    return std::distance(std::sregex_iterator(sheet.begin(), sheet.end(), formula), std::sregex_iterator());
  }
  void ExpectPaper(const std::string& name) {
    EXPECT_THAT(Contents(output / (name + ".pdf")), StartsWith("%PDF-"));
    EXPECT_THAT(Contents(output / (name + ".png")), StartsWith("\x89PNG"));
    EXPECT_THAT(Contents(output / "printed-1.pdf"), StartsWith("%PDF-")) << "nothing was printed";
    const std::string pages = PdfText(output / (name + ".pdf"));
    EXPECT_EQ(std::count(pages.begin(), pages.end(), '\f'), 1) << "not on one page";
    EXPECT_THAT(pages, Not(HasSubstr("###")));
    EXPECT_THAT(pages, AllOf(HasSubstr("UAB „Medvilnės namai“"), HasSubstr("Šarūnas Įkalnis"),
                             ContainsRegex("1 */ *1\n")));
  }
};

TEST_F(Samples, TheBalanceSheetBalancesAndIsArchived) {
  const RunResult run = RunSample("balance");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Log("balance"),
              ElementsAre("Prisijungta prie apskaitos knygos MEDVILNE", StartsWith("Įrankių juosta „"),
                          "Parengta ataskaitos aplinka", "Laikotarpis 2025-01-01 – 2025-12-31",
                          "Įmonė UAB „Medvilnės namai“, kodas 398417265",
                          "Perskaityti sąskaitų likučiai, balanso suma 835959.01 EUR",
                          "Archyve palyginti nėra: Balansas_2024.xls",
                          "Formulės pakeistos reikšmėmis, lapas apsaugotas", "Išspausdinta",
                          "Išsaugota archyve: Balansas_2025.xls",
                          "Baigta: balansas, laikotarpis 2025-01-01 – 2025-12-31",
                          "Grąžinta „Excel“ būsena, atsijungta nuo apskaitos knygos"));
  EXPECT_THAT(run.output, HasSubstr("Baigta: balansas")) << "the runner prints the log";
  ExpectPaper("balance");

  const std::string sheet = FirstSheet(Archive() / "2025/Balansas_2025.xls");
  EXPECT_THAT(sheet, FinishedSheet());
  EXPECT_EQ(Formulas(sheet), 2);
  EXPECT_EQ(Row(sheet, "Ataskaitinių metų pelnas (nuostoliai)"),
            "3.1|Ataskaitinių metų pelnas (nuostoliai)|" + std::string(kProfit) + "|26708.52");
  EXPECT_EQ(Row(sheet, "TURTO IŠ VISO"), "TURTO IŠ VISO|835959.01|833840.56");
  EXPECT_EQ(Row(sheet, "NUOSAVO KAPITALO IR ĮSIPAREIGOJIMŲ IŠ VISO"),
            "NUOSAVO KAPITALO IR ĮSIPAREIGOJIMŲ IŠ VISO|835959.01|833840.56");
  EXPECT_THAT(sheet, HasSubstr(">2025 M. GRUODŽIO 31 D. BALANSAS<"));
  EXPECT_THAT(sheet, HasSubstr(">Sudaryta 2026-02-27<"));
  EXPECT_EQ(Row(sheet, "Įmonės vadovas"), "Įmonės vadovas|Rūta Žiedaitė");
  EXPECT_EQ(Figures(sheet), ExpectedFigures("balance"));
}

TEST_F(Samples, TheBalanceSheetCountsAnEntryOfThirtyMillion) {
  const std::string resources = ResourcesWith(
      "INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name) VALUES "
      "('MEDVILNE', '2025-06-15', 'OPER', '2710', '3011', 3000000000, 'Kapitalo didinimas');");
  const fs::path samples = SourceFolder() / "samples";
  const RunResult run =
      RunWorkbook(samples / "balance.fods", {"--no-picture", "--host-resources", resources, "--form-answers",
                                             (samples / "balance.answers").string(), "--log", "balance.log"});
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Log("balance"),
              testing::Contains("Perskaityti sąskaitų likučiai, balanso suma 30835959.01 EUR"));
  EXPECT_THAT(PdfText(output / "printed-1.pdf"), HasSubstr("30 835 959"));
}

TEST_F(Samples, TheBalanceSheetMeetsLastYearsOneInTheArchive) {
  WriteFile(folder / "2024.answers",
            "[frmReportPeriod]\ntxtYear = 2024\noptYear\nbtOk\n"
            "[frmDatePic]\nMonthView1 double 2025-02-28\n");
  ASSERT_EQ(RunSample("balance", folder / "2024.answers").exit_status, 0);
  EXPECT_TRUE(fs::exists(Archive() / "2024/Balansas_2024.xls"));
  const RunResult run = RunSample("balance");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.output, HasSubstr("Archyve turto 833840.56 EUR, čia praeito laikotarpio 833840.56 EUR"));
  EXPECT_TRUE(fs::exists(Archive() / "2025/Balansas_2025.xls"));
}

TEST_F(Samples, TheStatementOfProfitAgreesWithTheLedgerAndComparesWithBudgets) {
  const RunResult run = RunSample("profit-loss");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(
      Log("profit-loss"),
      ElementsAre("Prisijungta prie apskaitos knygos MEDVILNE", StartsWith("Įrankių juosta „"),
                  "Parengta ataskaitos aplinka", "Ataskaitų bibliotekos aplankas įrašytas į paieškos kelią",
                  "Laikotarpis 2025-01-01 – 2025-12-31, biudžetų 2",
                  "Įmonė UAB „Medvilnės namai“, kodas 398417265",
                  "Perskaitytos apyvartos: pajamos 502607 EUR, grynasis pelnas 30021 EUR",
                  "Formulės pakeistos reikšmėmis, lapas apsaugotas", "Išspausdinta",
                  "Išsaugota archyve: PelnasNuostoliai_2025_12.xls",
                  "Baigta: pelno (nuostolių) ataskaita, laikotarpis 2025-01-01 – 2025-12-31",
                  "Grąžinta „Excel“ būsena, atsijungta nuo apskaitos knygos"));
  EXPECT_THAT(run.messages, HasSubstr("Kaip spausdinti ataskaitą?"));
  ExpectPaper("profit-loss");

  const std::string sheet = FirstSheet(Archive() / "2025/PelnasNuostoliai_2025_12.xls");
  EXPECT_THAT(sheet, FinishedSheet());
  EXPECT_EQ(Formulas(sheet), 4);
  EXPECT_THAT(sheet, HasSubstr(">Sudaryta 2026-02-27<"));
  EXPECT_THAT(Row(sheet, "Pardavimo pajamos"), AllOf(StartsWith("1|Pardavimo pajamos|36130|34981|40010|"),
                                                     HasSubstr("|502607|474291|"), HasSubstr("|500000|")));
  EXPECT_THAT(Row(sheet, "GRYNASIS PELNAS (NUOSTOLIAI)"), HasSubstr("|30021|26709|"));
  EXPECT_EQ(Row(sheet, "Patikra: grynasis pelnas pagal didžiąją knygą, EUR"),
            "Patikra: grynasis pelnas pagal didžiąją knygą, EUR|" + std::string(kProfit) + "|26708.52");
  EXPECT_EQ(Figures(sheet), ExpectedFigures("profit-loss"));
}

TEST_F(Samples, TheVatReturnAgreesWithTheLedgerAndIsSavedAmongTheForms) {
  const RunResult run = RunSample("vat");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  const std::string form = "PVM deklaracija_FR0600_398417265_20251231.xls";
  const std::string root = "C:\\Ataskaitos\\Archyvas\\";
  EXPECT_THAT(
      Log("vat"),
      testing::IsSupersetOf(std::vector<std::string>{
          "Mokestinis laikotarpis 2025-12-01 – 2025-12-31", "Perskaityti registrai: mokėtinas PVM 3044 EUR",
          "Išsaugota: " + root + "FR0600\\" + form, "Praeito mėnesio registrų archyve nėra",
          "Išsaugota: " + root + "2025\\PVM registrai_2025_12.xls",
          "Baigta: PVM deklaracija, laikotarpis 2025-12-01 – 2025-12-31"}));
  ExpectPaper("vat");

  EXPECT_TRUE(fs::exists(Archive() / "2025/PVM registrai_2025_12.xls"));
  const std::string sheet = FirstSheet(Archive() / "FR0600" / form);
  EXPECT_THAT(sheet, FinishedSheet());
  EXPECT_EQ(Formulas(sheet), 2);
  EXPECT_EQ(Row(sheet, "PVM apmokestinami sandoriai"), "11|PVM apmokestinami sandoriai|PVM1|33397|34924");
  EXPECT_EQ(Row(sheet, "MOKĖTINAS (+) ARBA GRĄŽINTINAS (–) PVM"),
            "36|MOKĖTINAS (+) ARBA GRĄŽINTINAS (–) PVM|3044|3260");
  EXPECT_THAT(sheet, HasSubstr(">Mokestinis laikotarpis: 2025 m. gruodžio mėn.<"));
  EXPECT_THAT(sheet, HasSubstr("2026-01-22")) << "the date of filling in";
  EXPECT_EQ(Figures(sheet), ExpectedFigures("vat"));
}

TEST_F(Samples, TheButtonsOfTheToolbarWorkUntilTheReportIsClosed) {
  const RunResult run =
      RunAfterwards("balance", "buttons", SourceFolder() / "samples/balance.answers",
                    "    cmdComment\n    cmdComment\n    Worksheets(\"Laikotarpis\").Activate\n"
                    "    cmdFreeze\n    Zingsnis ActiveSheet.Name &amp; \" frozen: \" &amp; "
                    "ActiveWindow.FreezePanes\n"
                    "    cmdFreeze\n    Zingsnis \"frozen: \" &amp; ActiveWindow.FreezePanes\n"
                    "    EitiIExcel\n    Zingsnis \"shown: \" &amp; oJuosta.VisibleToolbar\n"
                    "    RestoreApp\n    Zingsnis \"shown: \" &amp; oJuosta.VisibleToolbar\n");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  const std::vector<std::string> log = Log("buttons");
  ASSERT_GT(log.size(), 9u);
  EXPECT_THAT(std::vector<std::string>(log.begin() + 11, log.end()),
              ElementsAre("Balansas frozen: True", "frozen: False",
                          "Įprastas „Excel“; grąžina komanda „Grįžti į ataskaitą“", "shown: False",
                          "Grįžta į ataskaitą", "shown: True",
                          "Grąžinta „Excel“ būsena, atsijungta nuo apskaitos knygos"));
}

// A folder has the place of the archive's file, and the name that a button needs is gone.
TEST_F(Samples, AReportOutlivesASaveAndAButtonThatFail) {
  fs::create_directories(Archive() / "2025/Sablonas_2025.xls");
  const RunResult run = RunAfterwards(
      "sablonas", "outlived", SourceFolder() / "samples/sablonas.answers",
      "    Dim sBusena As String\n"
      "    sBusena = Sritis(\"Saved\").Value &amp; \", alerts \" &amp; Application.DisplayAlerts\n"
      "    ThisWorkbook.Names.Item(\"PirmaEilute\").Delete\n"
      "    Application.EnableEvents = False\n"
      "    cmdFreeze\n"
      "    sBusena = sBusena &amp; \", events \" &amp; Application.EnableEvents &amp; \", open \" "
      "&amp; Not oExcel Is Nothing\n"
      "    cmdComment\n"
      "    Zingsnis \"saved \" &amp; sBusena &amp; \", bar \" &amp; oJuosta.VisibleToolbar\n");
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_THAT(Log("outlived"),
              testing::Contains("saved False, alerts True, events True, open False, bar True"))
      << run.errors << run.messages;
}

TEST_F(Samples, ThePeriodButtonMakesTheReportAnewForAnotherPeriod) {
  WriteFile(folder / "twice.answers",
            "[frmReportPeriod]\ntxtYear = 2025\noptYear\nbtOk\n"
            "[frmDatePic]\nMonthView1 double 2026-02-27\n"
            "[frmReportPeriod]\ntxtYear = 2024\noptYear\nbtOk\n"
            "[frmDatePic]\nMonthView1 double 2025-02-28\n");
  const std::map<std::string, std::pair<std::string, std::string>> kRows = {
      {"balance", {"Balansas_2024.xls", "TURTO IŠ VISO|833840.56|"}},
      {"profit-loss", {"PelnasNuostoliai_2024_12.xls", "|26708|"}}};
  for (const auto& [name, expected] : kRows) {
    output = folder / ("out-" + name);
    const RunResult run = RunAfterwards(name, name + "-twice", folder / "twice.answers",
                                        "    KeistiLaikotarpi\n    Issaugoti\n"
                                        "    Zingsnis \"selected: \" &amp; Selection.Row &amp; \" \" &amp; "
                                        "Selection.Rows.Count\n");
    ASSERT_EQ(run.exit_status, 0) << run.errors;
    EXPECT_THAT(Log(name + "-twice"), testing::Contains("selected: 1 1")) << name;
    const std::string sheet = FirstSheet(Archive() / "2024" / expected.first);
    EXPECT_THAT(sheet, FinishedSheet());
    const std::string row = name == "balance" ? "TURTO IŠ VISO" : "GRYNASIS PELNAS (NUOSTOLIAI)";
    EXPECT_THAT(Row(sheet, row), HasSubstr(expected.second)) << name;
  }
}

TEST_F(Samples, AReportThatTheUserDoesNotLetReplaceIsNotLoggedAsSaved) {
  ASSERT_EQ(RunSample("balance").exit_status, 0);
  const fs::path archived = Archive() / "2025/Balansas_2025.xls";
  const std::string before = Contents(archived);
  WriteFile(folder / "no.txt", "Ne\n");
  const RunResult run =
      RunWorkbook(SourceFolder() / "samples/balance.fods",
                  {"--no-picture", "--answers", (folder / "no.txt").string(), "--form-answers",
                   (SourceFolder() / "samples/balance.answers").string(), "--log", "balance.log"});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Log("balance"),
              AllOf(testing::Contains("Neišsaugota"), Not(testing::Contains(StartsWith("Išsaugota")))));
  EXPECT_EQ(Contents(archived), before);
}

/// A report that is in the archive already, made once more, and not stored.
class ReportThatStays : public Samples, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    ASSERT_EQ(RunSample(GetParam()).exit_status, 0);
    WriteFile(folder / "no.txt", "Ne\n");
    WriteFile(folder / "2024.answers",
              "[frmReportPeriod]\ntxtYear = 2024\noptYear\nbtOk\n"
              "[frmDatePic]\nMonthView1 double 2025-02-28\n");
  }
  RunResult RunWithoutStoring(const std::string& calls) {
    const std::string sample = GetParam();
    return RunAfterwards(sample, "kept", SourceFolder() / "samples" / (sample + ".answers"), calls,
                         {"--answers", (folder / "no.txt").string()});
  }
  /// The workbook that a run left, run once more as it is, for the year 2024.
  RunResult RunAgain() {
    fs::rename(output / "kept.fods", folder / "again.fods");
    return RunWorkbook(folder / "again.fods", {"--no-picture", "--log", "again.log", "--form-answers",
                                               (folder / "2024.answers").string()});
  }
  /// What was printed last.
  std::string Printed() { return PdfText(output / "printed-1.pdf"); }
};

TEST_P(ReportThatStays, ClosesWithoutAQuestionAboutTheWorkbook) {
  const RunResult run = RunWithoutStoring("    Zingsnis \"saved: \" &amp; ThisWorkbook.Saved\n");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Log("kept"), AllOf(testing::Contains("Neišsaugota"), testing::Contains("saved: True")));
}

// The workbooks are stored by LibreOffice's own store: Workbook.Save is done only when the macro gives way.
TEST_P(ReportThatStays, IsMadeForAnotherYearFromTheWorkbookThatTheUserSavedAtClosing) {
  const RunResult run =
      RunWithoutStoring("    ThisWorkbook.Saved = False\n    Uzverti\n    ThisComponent.store\n");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  const RunResult again = RunAgain();
  ASSERT_EQ(again.exit_status, 0) << again.errors;
  const std::string printed = Printed();
  const RunResult fresh = RunSample(GetParam(), folder / "2024.answers");
  ASSERT_EQ(fresh.exit_status, 0) << fresh.errors;
  EXPECT_EQ(printed, Printed());
}

TEST_P(ReportThatStays, IsNotMadeAnewFromValues) {
  const RunResult run = RunWithoutStoring("    ThisComponent.store\n");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  const RunResult again = RunAgain();
  EXPECT_EQ(again.exit_status, 1);
  EXPECT_THAT(again.errors, HasSubstr("Šioje knygoje ataskaita jau užbaigta"));
  EXPECT_FALSE(fs::exists(Archive() / "2024"));
}

INSTANTIATE_TEST_SUITE_P(Samples, ReportThatStays, testing::Values("balance", "sablonas"),
                         [](const auto& info) { return std::string(info.param); });

TEST_F(Samples, AReportWithoutAPeriodAsksForItWhenItIsToBePrinted) {
  WriteFile(folder / "late.answers",
            "[frmReportPeriod]\nbtCancel\n"
            "[frmReportPeriod]\ntxtYear = 2024\noptYear\nbtOk\n"
            "[frmDatePic]\nMonthView1 double 2025-02-28\n");
  for (const std::string name : {"balance", "profit-loss", "sablonas"}) {
    output = folder / ("out-" + name);
    const RunResult run = RunAfterwards(name, name + "-late", folder / "late.answers",
                                        "    Zingsnis \"saved: \" &amp; ThisWorkbook.Saved\n"
                                        "    Spausdinti\n    Issaugoti\n");
    EXPECT_EQ(run.exit_status, 0) << name << run.errors;
    EXPECT_THAT(Log(name + "-late"),
                AllOf(testing::Contains("saved: True"), testing::Contains("Išspausdinta"),
                      testing::Contains(StartsWith("Išsaugota archyve: "))))
        << name;
  }
}

TEST_F(Samples, AReportIsNotStoredUnderThePeriodThatItRefuses) {
  WriteFile(folder / "refused.answers",
            "[frmReportPeriod]\ntxtYear = 2025\noptYear\nbtOk\n"
            "[frmReportPeriod]\ntxtYear = 2024\noptYear\nbtOk\n"
            "[frmReportPeriod]\nbtCancel\n");
  std::string workbook = Contents(SourceFolder() / "samples/sablonas.fods");
  const std::string asked = "    If oLaikotarpis.Edit Then bSudaryta = False Else Exit Function\n";
  const std::size_t at = workbook.find(asked);
  ASSERT_NE(at, workbook.npos);
  workbook.insert(at + asked.size(),
                  "    If Year(Sritis(\"RepCurrPerEnd\").Value) = 2024 Then "
                  "Err.Raise qvaKlaida + 11, \"Sudaryti\", \"Ne 2024.\"\n");
  const std::string end = "</ooo:source-code>";
  workbook.insert(workbook.find(end),
                  "\nPublic Sub Toliau()\n    Main\n    KeistiLaikotarpi\n    Issaugoti\nEnd Sub\n");
  WriteFile(folder / "refusing.fods", workbook);
  const RunResult run = RunWorkbook(folder / "refusing.fods",
                                    {"--no-picture", "--log", "refusing.log", "--macro", "Ataskaita.Toliau",
                                     "--form-answers", (folder / "refused.answers").string()});
  EXPECT_THAT(run.messages, HasSubstr("Ne 2024."));
  EXPECT_TRUE(fs::exists(Archive() / "2025/Sablonas_2025.xls"));
  EXPECT_FALSE(fs::exists(Archive() / "2024")) << "the report of 2025 under another year";
}

TEST_F(Samples, AnotherPeriodIsNoReasonToSaveItInTheFileOfTheFirst) {
  WriteFile(folder / "twice.answers",
            "[frmReportPeriod]\ntxtYear = 2025\noptYear\nbtOk\n"
            "[frmReportPeriod]\ntxtYear = 2024\noptYear\nbtOk\n");
  const RunResult run = RunAfterwards("sablonas", "changed", folder / "twice.answers",
                                      "    KeistiLaikotarpi\n"
                                      "    Zingsnis \"saved: \" &amp; ThisWorkbook.Saved\n");
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Log("changed"), testing::Contains("saved: True"));
}

TEST_F(Samples, OpenInLibreOfficeWithoutBeingToldWhatTheyAre) {
  const std::map<std::string, std::string> kSheets = {{"balance", "Likučiai"},
                                                      {"profit-loss", "Apyvartos"},
                                                      {"sablonas", "Nustatymai"},
                                                      {"vat", "Registrai"}};
  for (const auto& [name, sheet] : kSheets) {
    Process convert(
        {"soffice", "--headless", "--norestore",
         "-env:UserInstallation=file://" + (folder / "convert").string(), "--convert-to", "ods:calc8",
         "--outdir", (folder / "opened").string(), (SourceFolder() / "samples" / (name + ".fods")).string()},
        {}, folder / "convert.txt");
    ASSERT_EQ(convert.Wait(std::chrono::seconds(90)), 0) << Contents(folder / "convert.txt");
    Process unzip({"unzip", "-q", "-o", (folder / "opened" / (name + ".ods")).string(), "content.xml", "-d",
                   (folder / "opened" / name).string()},
                  {}, folder / "unzip.txt");
    ASSERT_EQ(unzip.Wait(std::chrono::seconds(20)), 0) << Contents(folder / "unzip.txt");
    EXPECT_THAT(Contents(folder / "opened" / name / "content.xml"),
                HasSubstr("table:name=\"" + sheet + "\""));
  }
}

TEST_F(Samples, AReportWhosePeriodIsNotChosenIsNotMadeAndClosesAllTheSame) {
  WriteFile(folder / "cancelled.answers", "[frmReportPeriod]\nbtCancel\n");
  const RunResult run = RunSample("balance", folder / "cancelled.answers");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.output, AllOf(HasSubstr("Baigta: laikotarpis nepasirinktas, balansas nesudarytas"),
                                HasSubstr("Grąžinta „Excel“ būsena, atsijungta nuo apskaitos knygos")));
  EXPECT_FALSE(fs::exists(Archive() / "2025"));
}

class SampleOnTheScreen : public Samples, public testing::WithParamInterface<const char*> {
 protected:
  /// What a run left, as one reads it: the files' names with the contents that have no times in them.
  std::map<std::string, std::string> Left(const std::string& name) {
    std::map<std::string, std::string> left;
    for (const auto& entry : fs::recursive_directory_iterator(output)) {
      if (!entry.is_regular_file()) continue;
      const fs::path& file = entry.path();
      std::string& contents = left[fs::relative(file, output)];
      if (file.extension() == ".xls") contents = FirstSheet(file);
      if (file.extension() == ".pdf") contents = PdfText(file);
      if (file.extension() == ".png") contents = Contents(file);
    }
    for (const std::string& line : Log(name)) left[name + ".log"] += line + "\n";
    return left;
  }
};

TEST_P(SampleOnTheScreen, LeavesTheSameFilesAsWithoutADisplay) {
  const std::string name = GetParam();
  const fs::path samples = SourceFolder() / "samples";
  Desktop desktop(folder / "desktop");
  StartWorkbook(samples / (name + ".fods"),
                {"--show", "--log", name + ".log", "--form-answers", samples / (name + ".answers")},
                desktop.environment());
  // Its message boxes come one after the other, each in front of the report with its toolbar.
  bool first = true;
  desktop.WaitFor("the end of the report", [&] {
    if (desktop.HasWindow(kMessage)) {
      if (std::exchange(first, false)) desktop.Picture(name);
      desktop.TryKey(kMessage, "Return");
    }
    return !IsRunning();
  });
  const RunResult shown = Finish();
  ASSERT_EQ(shown.exit_status, 0) << shown.errors;
  const auto left = Left(name);

  output = folder / "out-unattended";
  ASSERT_EQ(RunSample(name).exit_status, 0);
  auto unattended = Left(name);
  EXPECT_EQ(unattended.erase("messages.txt"), 1u) << "the boxes that nobody saw";
  for (const auto& [file, contents] : left) {
    EXPECT_TRUE(unattended.contains(file) && unattended[file] == contents) << file << " differs";
    unattended.erase(file);
  }
  EXPECT_THAT(unattended, testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleOnTheScreen, testing::Values("balance", "profit-loss", "vat"),
                         [](const auto& sample) {
                           return sample.param == std::string("profit-loss") ? "profit_loss" : sample.param;
                         });

}  // namespace
}  // namespace qva
