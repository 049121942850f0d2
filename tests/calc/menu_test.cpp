// The extension's menu: its commands, and what they tell of whatever does not work.

#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kNever = "0";   ///< com.sun.star.document.MacroExecMode.NEVER_EXECUTE
constexpr const char* kAlways = "4";  ///< ALWAYS_EXECUTE_NO_WARN

struct Module {
  std::string name;
  std::string source;
};

class CalcMenu : public CalcTest {
 protected:
  CalcMenu() {
    // The component's folder as the extension has it, with a template that may be missing.
    build = BuildFolderWith(HostModuleFile());
    fs::create_directory(build / "samples");
  }

  RunResult Run(const std::string& macro, std::vector<std::string> options = {},
                std::map<std::string, std::string> environment = {}) {
    options.insert(options.end(), {"--macro", "Ataskaita." + macro, "--build-folder", build.string()});
    environment["QVA_VARNHOLT_DRIVES"] = drives.string();
    StartMacro("menu", options, std::move(environment));
    return Finish();
  }
  RunResult RunAnother(const std::vector<Module>& modules, const std::string& mode = kAlways) {
    return Run("RunsAnother", {}, {{"QVA_TEST_BOOK", WriteBook(modules)}, {"QVA_TEST_MODE", mode}});
  }

  /// A workbook of such modules in its own library.
  std::string WriteBook(const std::vector<Module>& modules) const {
    const fs::path book = folder / "kita.fods";
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<office:document xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\"\n"
        " xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\"\n"
        " xmlns:script=\"urn:oasis:names:tc:opendocument:xmlns:script:1.0\"\n"
        " xmlns:ooo=\"http://openoffice.org/2004/office\" office:version=\"1.3\"\n"
        " office:mimetype=\"application/vnd.oasis.opendocument.spreadsheet\">\n";
    if (!modules.empty()) {
      xml +=
          "<office:scripts><office:script script:language=\"ooo:Basic\"><ooo:libraries>"
          "<ooo:library-embedded ooo:name=\"Kita\">";
      for (const Module& module : modules) {
        xml += "<ooo:module ooo:name=\"" + module.name + "\"><ooo:source-code>" +
               XmlText("Option VBASupport 1\n" + module.source +
                       Contents(SourceFolder() / "tests/calc/macros/log.bas")) +
               "</ooo:source-code></ooo:module>";
      }
      xml += "</ooo:library-embedded></ooo:libraries></office:script></office:scripts>";
    }
    xml +=
        "<office:body><office:spreadsheet><table:table table:name=\"Lapas\"><table:table-row>"
        "<table:table-cell/></table:table-row></table:table></office:spreadsheet></office:body>"
        "</office:document>\n";
    WriteFile(book, xml);
    return book.string();
  }
  static std::string Writing(const std::string& text) { return "  WriteLine \"" + text + "\"\n"; }
  fs::path Reports() const { return drives / "C/Pavyzdziai"; }
  fs::path Archive() const { return drives / "C/Ataskaitos/Archyvas"; }

  fs::path build;
  fs::path drives = folder / "drives";
};

TEST_F(CalcMenu, RunsTheActiveWorkbookAlsoFromAMacroThatRuns) {
  const RunResult run = Run("RunsItself");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("Main of this workbook", "back"));
  EXPECT_THAT(run.messages, IsEmpty());
}

TEST_F(CalcMenu, RunsMainOfTheModuleAtaskaitaBeforeOthersAndLeavesTheWorkbookUnmodified) {
  const RunResult run = RunAnother({{"Aaa", "Sub Main()\n" + Writing("Aaa") + "End Sub\n"},
                                    {"Ataskaita", "Public Sub Main\n" + Writing("Ataskaita") + "End Sub\n"},
                                    {"Zzz", "Sub Main()\n" + Writing("Zzz") + "End Sub\n"}});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("Ataskaita", "modified: False"));
}

TEST_F(CalcMenu, RunsTheFirstPublicMainOfAnotherModule) {
  const RunResult run =
      RunAnother({{"Ataskaita", "Private Sub Main()\nEnd Sub\n' Sub Main()\nSub Maina()\nEnd Sub\n"},
                  {"Kitas", "Sub Main(n)\nEnd Sub\n"},
                  {"Trecias", "\tPUBLIC  sub MAIN ( ) ' pradžia\n" + Writing("Trecias") + "End Sub\n"}});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("Trecias", "modified: False"));
}

TEST_F(CalcMenu, TellsThatAWorkbookHasNoMacroToRun) {
  for (const auto& modules :
       {std::vector<Module>{}, std::vector<Module>{{"Ataskaita", "Private Sub Main()\nEnd Sub\n"}}}) {
    const RunResult run = RunAnother(modules);
    EXPECT_EQ(run.exit_status, 0) << run.errors;
    EXPECT_THAT(run.messages, AllOf(HasSubstr("Šioje knygoje nėra makrokomandos „Main“."),
                                    HasSubstr("„Nauja ataskaita iš šablono“")));
  }
}

TEST_F(CalcMenu, TellsWhatToDoWhereMacrosAreDisabled) {
  const RunResult run = RunAnother({{"Ataskaita", "Sub Main()\n" + Writing("runs") + "End Sub\n"}}, kNever);
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("modified: False"));
  EXPECT_THAT(run.messages, AllOf(HasSubstr("Šios knygos makrokomandos išjungtos."), HasSubstr("Saugumas")));
}

TEST_F(CalcMenu, TellsThatThereIsNoWorkbook) {
  const RunResult run = Run("RunsWithoutAWorkbook");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, HasSubstr("Nėra atvertos knygos."));
}

TEST_F(CalcMenu, TellsTheErrorOfAMacro) {
  const RunResult run =
      RunAnother({{"Ataskaita", "Sub Main()\n  Err.Raise 1004, \"Kita\", \"Lapas apsaugotas\"\nEnd Sub\n"}});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, HasSubstr("Lapas apsaugotas"));
}

TEST_F(CalcMenu, TellsTheNumberOfAnErrorWithoutWords) {
  const RunResult run =
      RunAnother({{"Ataskaita", "Sub Main()\n  Err.Raise 4711, \"Kita\", \"\"\nEnd Sub\n"}});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, HasSubstr("Komandos įvykdyti nepavyko. (4711)"));
}

TEST_F(CalcMenu, TellsNothingOfAMacroThatEndsItself) {
  const RunResult run = RunAnother({{"Ataskaita", "Sub Main()\n" + Writing("ends") + "  End\nEnd Sub\n"}});
  EXPECT_EQ(run.exit_status, 1) << "End ends the macro that chose the command, too";
  EXPECT_THAT(run.lines, ElementsAre("ends"));
  EXPECT_THAT(run.messages, IsEmpty());
}

TEST_F(CalcMenu, TheBookThatIsChosenIsTheHostsFromThenOn) {
  WriteFile(folder / "answers.txt", "list = BALTIJA\n");
  const RunResult run = Run("ChoosesTheBook", {"--form-answers", (folder / "answers.txt").string()});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("\"P0\"=\"BALTIJA\""));
  EXPECT_TRUE(fs::is_directory(Archive())) << "its reports could not be stored";
}

TEST_F(CalcMenu, MakesTheArchiveThatTheHostHasForTheReportsOfAllBooksAndNoOther) {
  const std::string resources = ResourcesWith(
      "UPDATE PathKey SET Folder = 'C:\\Kitur\\Archyvas' WHERE Code = 'BookRepSave' AND BookCode = '';");
  WriteFile(folder / "answers.txt", "list = BALTIJA\n");
  fs::copy_file(SourceFolder() / "samples/sablonas.fods", build / "samples/sablonas.fods");
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{"ChoosesTheBook", "--form-answers", (folder / "answers.txt").string()},
        std::vector<std::string>{"MakesTwoReports", "--book", "BALTIJA"}}) {
    std::vector<std::string> rest(options.begin() + 1, options.end());
    rest.insert(rest.end(), {"--host-resources", resources});
    const RunResult run = Run(options[0], rest);
    EXPECT_EQ(run.exit_status, 0) << run.errors;
    EXPECT_TRUE(fs::is_directory(drives / "C/Kitur/Archyvas")) << options[0];
    EXPECT_FALSE(fs::exists(drives / "C/Ataskaitos")) << options[0];
    fs::remove_all(drives);
  }
}

TEST_F(CalcMenu, MakesAReportWhereTheArchiveCannotBeMade) {
  fs::copy_file(SourceFolder() / "samples/sablonas.fods", build / "samples/sablonas.fods");
  const RunResult run = Run(
      "MakesTwoReports", {"--host-resources", ResourcesWith("UPDATE PathKey SET Folder = 'Q:\\Archyvas';")});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, IsEmpty());
  EXPECT_TRUE(fs::exists(Reports() / "Nauja ataskaita.fods"));
}

TEST_F(CalcMenu, TheBookStaysWhenNoneIsChosen) {
  WriteFile(folder / "answers.txt", "list\n");
  const RunResult run = Run("ChoosesTheBook", {"--form-answers", (folder / "answers.txt").string()});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("\"P0\"=\"MEDVILNE\""));
}

TEST_F(CalcMenu, TellsWhichFileCannotKeepTheBook) {
  WriteFile(folder / "answers.txt", "list = BALTIJA\n");
  WriteFile(folder / "no-folder", "");
  const fs::path registry = folder / "no-folder" / "registry.reg";
  const RunResult run = Run("ChoosesABook", {"--form-answers", (folder / "answers.txt").string()},
                            {{"LD_PRELOAD", FileCallsLibrary()},
                             {"QVA_TEST_FILES", folder.string()},
                             {"QVA_TEST_REGISTRY", registry.string()}});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, AllOf(HasSubstr("Pasirinktos knygos įrašyti nepavyko."),
                                  HasSubstr("nustatymų failą: " + registry.string())));
}

TEST_F(CalcMenu, NewReportsGetNamesOfTheirOwnAndReplaceNothing) {
  fs::copy_file(SourceFolder() / "samples/sablonas.fods", build / "samples/sablonas.fods");
  fs::create_directories(Reports());
  WriteFile(Reports() / "nauja ATASKAITA.fods", "the user's own");
  const RunResult run = Run("MakesTwoReports");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, IsEmpty());
  EXPECT_THAT(run.lines,
              ElementsAre("C/Pavyzdziai/Nauja ataskaita 2.fods", "C/Pavyzdziai/Nauja ataskaita 3.fods"));
  EXPECT_EQ(Contents(Reports() / "nauja ATASKAITA.fods"), "the user's own");
  EXPECT_THAT(Contents(Reports() / "Nauja ataskaita 3.fods"),
              AllOf(HasSubstr("<ooo:library-embedded ooo:name=\"NaujaAtaskaita3\">"),
                    HasSubstr("<dc:title>Nauja ataskaita 3</dc:title>"), Not(HasSubstr("ablonas"))))
      << "its archive would be another report's";
  EXPECT_TRUE(fs::is_directory(Archive())) << "they could not be stored";
}

TEST_F(CalcMenu, TellsThatTheTemplateIsMissing) {
  const RunResult run = Run("MakesTwoReports");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, HasSubstr("Šablono nėra"));
  EXPECT_TRUE(fs::is_empty(Reports()));
}

TEST_F(CalcMenu, TellsWhyANewReportCannotBeWritten) {
  WriteFile(build / "samples/sablonas.fods", "");
  const RunResult run = Run("MakesTwoReports");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, HasSubstr("Naujos ataskaitos failo sukurti nepavyko: there is no template " +
                                      (build / "samples/sablonas.fods").string()));
  EXPECT_TRUE(fs::is_empty(Reports()));
}

TEST_F(CalcMenu, TellsThatNoNameIsLeftForANewReport) {
  WriteFile(build / "samples/sablonas.fods", "no workbook");
  fs::create_directories(Reports());
  WriteFile(Reports() / "Nauja ataskaita.fods", "");
  for (int number = 2; number <= 9999; ++number) {
    WriteFile(Reports() / ("Nauja ataskaita " + std::to_string(number) + ".fods"), "");
  }
  const RunResult run = Run("MakesAReport");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, AllOf(HasSubstr("Naujai ataskaitai neliko laisvo vardo."),
                                  HasSubstr("iš aplanko C:\\Pavyzdziai")));
}

TEST_F(CalcMenu, TellsThatTheTemplateIsNoWorkbook) {
  WriteFile(build / "samples/sablonas.fods", "no workbook");
  const RunResult run = Run("MakesTwoReports");  // which fails itself then: there is no report to close
  EXPECT_THAT(run.messages, HasSubstr("Ataskaitos knygos atverti nepavyko."));
}

TEST_F(CalcMenu, TellsThatTheMacrosDoNotCompile) {
  for (const std::string& source : {"Dim n\nSub Main()\n" + Writing("runs") + "  x = = 1\nEnd Sub\n",
                                    "' pastaba\nDim = 1\nSub Main()\n" + Writing("runs") + "End Sub\n"}) {
    const RunResult run = RunAnother({{"Ataskaita", source}});
    EXPECT_EQ(run.exit_status, 0) << run.errors;
    EXPECT_THAT(run.lines, ElementsAre("modified: False"));
    EXPECT_THAT(run.messages, AllOf(HasSubstr("Knygos makrokomandose yra klaida, todėl jų vykdyti negalima."),
                                    HasSubstr("„Kompiliuoti“")));
    fs::remove(folder / "macro.log");
  }
}

TEST_F(CalcMenu, OpensTheGuideWithTheDesktopsProgramAndTellsWhereItIsMissing) {
  EXPECT_THAT(Run("ShowsTheGuide").messages, HasSubstr("Gido nėra"));
  const fs::path opened = folder / "opened", opener = folder / "bin" / "xdg-open";
  fs::create_directories(opener.parent_path());
  fs::create_directories(build / "FReport");
  WriteFile(opener, "#!/bin/sh\necho \"$1\" > '" + opened.string() + ".new'\nmv '" + opened.string() +
                        ".new' '" + opened.string() + "'\n");
  fs::permissions(opener, fs::perms::owner_all);
  WriteFile(build / "FReport" / "index.html", "<html></html>");
  const RunResult run = Run("ShowsTheGuide", {},
                            {{"PATH", opener.parent_path().string() + ":" + std::getenv("PATH")},
                             {"QVA_TEST_OPENED", opened.string()}});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.messages, IsEmpty());
  EXPECT_THAT(Contents(opened), HasSubstr("/build/FReport/index.html"));
}

}  // namespace
}  // namespace qva
