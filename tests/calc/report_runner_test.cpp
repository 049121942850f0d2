// The report runner on the sample workbook, and where it must give up.
#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/file.h>
#include <unistd.h>

#include <map>
#include <nlohmann/json.hpp>

#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"
#include "tools/report-runner/Process.h"
#include "tools/report-runner/Sha256.h"

namespace qva {
namespace {

using Json = nlohmann::json;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// What the sample leaves.
constexpr const char* kArchived = "drives/C/Ataskaitos/Archyvas/2025/Balansas_2025.xls";

class ReportRunner : public CalcTest {
 protected:
  static std::filesystem::path Sample() { return SourceFolder() / "samples/balance.fods"; }

  /// Options for a run of the sample whose dialog is answered.
  static std::vector<std::string> Answered(std::vector<std::string> options = {}) {
    options.push_back("--form-answers");
    options.push_back((SourceFolder() / "samples/balance.answers").string());
    return options;
  }

  /// A run of the same workbook and folder while another one goes on.
  RunResult RunBeside(const std::string& macro) {
    Process runner({ReportRunnerFile(), "--output-folder", output.string(), "--no-picture",
                    (folder / (macro + ".fods")).string()},
                   {}, folder / "beside.txt");
    RunResult run;
    run.exit_status = runner.Wait(std::chrono::seconds(20));
    run.errors = Contents(folder / "beside.txt");
    return run;
  }

  /// A run of the sample that ends, if nothing ended it before, as soon as LibreOffice is started. A program
  /// that starts the runner may come before it.
  RunResult RunWithBrokenLibreOffice(std::vector<std::string> command = {}) {
    WriteFile(folder / "soffice", "#!/bin/sh\necho broken >&2\nexit 7\n");
    std::filesystem::permissions(folder / "soffice", std::filesystem::perms::all);
    // Copies and stand-ins, for a user who may not look into the project's folder.
    std::filesystem::create_directory(folder / "build");
    for (const std::filesystem::path& module :
         {CalcComponentFile(), std::filesystem::path(HostModuleFile())}) {
      WriteFile(folder / "build" / module.filename(), "");
    }
    const std::filesystem::path runner_copy = folder / "report-runner", workbook = folder / "balance.fods";
    const auto anew = std::filesystem::copy_options::overwrite_existing;
    std::filesystem::copy_file(ReportRunnerFile(), runner_copy, anew);
    std::filesystem::copy_file(Sample(), workbook, anew);
    command.insert(command.end(), {runner_copy.string(), "--build-folder", (folder / "build").string(),
                                   "--output-folder", output.string(), workbook.string()});
    Process runner(command, {{"PATH", folder.string() + ":/usr/bin:/bin"}}, folder / "errors.txt");
    RunResult run;
    run.exit_status = runner.Wait(std::chrono::seconds(20));
    run.errors = Contents(folder / "errors.txt");
    return run;
  }

  /// The cells of the saved workbook's first sheet as LibreOffice reads them anew.
  std::string CellsOf(const std::filesystem::path& workbook) {
    Process convert(
        {"soffice", "--headless", "--norestore",
         "-env:UserInstallation=file://" + (folder / "convert").string(), "--convert-to",
         "csv:Text - txt - csv (StarCalc):59,34,76", "--outdir", folder.string(), workbook.string()},
        {}, folder / "convert.txt");
    EXPECT_EQ(convert.Wait(std::chrono::seconds(60)), 0) << Contents(folder / "convert.txt");
    return Contents(folder / workbook.filename().replace_extension(".csv"));
  }
};

TEST_F(ReportRunner, LeavesACompoundDocumentWithTheCompanysAttributesAPdfAndAPicture) {
  const RunResult run = RunWorkbook(Sample(), Answered());
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Contents(output / kArchived), StartsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
  EXPECT_THAT(Contents(output / "balance.pdf"), StartsWith("%PDF-"));
  EXPECT_THAT(Contents(output / "balance.png"), StartsWith("\x89PNG"));
  const std::string cells = CellsOf(output / kArchived);
  for (const char* expected :
       {"2025-01-01 – 2025-12-31", "Įmonės kodas;;398417265", "PVM mokėtojo kodas;;LT100099172410",
        "UAB „Medvilnės namai“", "Audėjų g. 14-3, LT-44177 Kaunas", "Telefonas;;+370 37 000 112",
        "Faksas;;+370 37 000 113", "Įmonės vadovas;;;;Rūta Žiedaitė",
        "Vyriausiasis buhalteris;;;;Šarūnas Įkalnis"}) {
    EXPECT_THAT(cells, HasSubstr(expected));
  }
}

TEST_F(ReportRunner, WorksOnAnotherBook) {
  const RunResult run = RunWorkbook(Sample(), Answered({"--book", "BALTIJA", "--no-picture"}));
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  const std::string cells = CellsOf(output / "drives/C/Ataskaitos/Archyvas/2025/Balansas_2025.xls");
  for (const char* expected :
       {"399503183", "AB „Baltijos žvejų krantinė“", "Krantinės g. 7, LT-91246 Klaipėda"}) {
    EXPECT_THAT(cells, HasSubstr(expected));
  }
  EXPECT_FALSE(std::filesystem::exists(output / "balance.pdf"));
}

TEST_F(ReportRunner, PrintsEachStep) {
  const RunResult run = RunWorkbook(Sample(), Answered({"--no-picture"}));
  for (const char* step :
       {"Opening ", "Running Ataskaita.Main", "gExcelObject.InitConnectEX -> 1", "CRepPeriod.Edit -> True",
        "CReports.Init", "CReports.FillAttr", "Balansas_2025.xls"}) {
    EXPECT_THAT(run.output, HasSubstr(step));
  }
}

TEST_F(ReportRunner, PrintsWhatItDoesAroundTheLogOfTheMacro) {
  const RunResult run = RunWorkbook(Sample(), Answered({"--log", "balance.log"}));
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  std::size_t at = 0;
  for (const char* step :
       {"  Starting LibreOffice\n", "  Opening ", "  Running Ataskaita.Main\n", "Baigta: ", "  Storing "}) {
    at = run.output.find(step, at);
    ASSERT_NE(at, std::string::npos) << step << "in its place of\n" << run.output;
  }
}

TEST_F(ReportRunner, LeavesNoReportWhenItsDialogIsNotAnsweredAndFails) {
  const RunResult run = RunWorkbook(Sample(), {"--no-picture"});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_THAT(run.errors, HasSubstr("The report failed: There are no answers for the form frmReportPeriod"));
  EXPECT_THAT(run.output, HasSubstr("CRepPeriod.Edit -> False"));
  EXPECT_THAT(run.messages, HasSubstr("There are no answers for the form frmReportPeriod"));
}

TEST_F(ReportRunner, StopsAMacroThatDoesNotEnd) {
  const RunResult run = RunMacro("endless", {"--timeout", "4"});
  EXPECT_EQ(run.exit_status, 8);
  EXPECT_THAT(run.errors, HasSubstr("did not finish within 4 seconds and was stopped"));
}

TEST_F(ReportRunner, HidesCellsThatNobodySees) {
  EXPECT_THAT(RunMacro("window").lines,
              testing::ElementsAre("visible: True, its cells False", "as large as ever: True", testing::_,
                                   testing::_));
}

TEST_F(ReportRunner, TheReportStateHoldsInAWindowThatTheMacroHides) {
  EXPECT_THAT(RunMacro("window").lines,
              testing::ElementsAre(testing::_, testing::_, "hidden by the macro: False, zoom 100",
                                   "as before: zoom 80"));
}

TEST_F(ReportRunner, NamesAMacroThatIsNotThere) {
  const std::pair<const char*, const char*> missing[] = {
      {"Nera.Ataskaita.Main", "the workbook has no library Nera"},
      {"Nera.Main", "the workbook has no module Nera"},
      {"Ataskaita.Nera", "the workbook has no macro Ataskaita.Nera"},
      {"Nera", "the macro is not named as Module.Procedure"}};
  for (const auto& [macro, text] : missing) {
    const RunResult run = RunWorkbook(Sample(), {"--no-picture", "--macro", macro});
    EXPECT_EQ(run.exit_status, 4);
    EXPECT_THAT(run.errors, EndsWith(std::string(text) + "\n"));
    ExpectNoWordOfUno(run);
  }
}

TEST_F(ReportRunner, TellsInPlainWordsThatAWorkbookCannotBeOpened) {
  WriteFile(folder / "broken.fods", "no workbook");
  WriteFile(folder / "broken.ods", "PK\x03\x04 no workbook");
  for (const char* name : {"broken.fods", "broken.ods"}) {
    const RunResult run = RunWorkbook(folder / name, {"--no-picture"});
    EXPECT_EQ(run.exit_status, 4) << name;
    EXPECT_THAT(run.errors, HasSubstr("The report failed: "));
    ExpectNoWordOfUno(run);
  }
}

TEST_F(ReportRunner, FailsWhenTheExpectedFileIsNotLeftAndDeletesNothing) {
  std::filesystem::create_directories((output / kArchived).parent_path());
  WriteFile(output / kArchived, "of an earlier run");
  const RunResult run = RunWorkbook(Sample(), {"--no-picture", "--book", "NERA", "--expect", kArchived});
  EXPECT_EQ(run.exit_status, 1);
  EXPECT_THAT(run.errors, HasSubstr("„NERA“")) << "the book is unknown";
  EXPECT_EQ(Contents(output / kArchived), "of an earlier run");
  EXPECT_THAT(run.messages, HasSubstr("„NERA“")) << "the macro told why";
}

TEST_F(ReportRunner, RefusesAnOutputFolderThatHoldsTheWorkbookItself) {
  std::filesystem::create_directories(output);
  std::filesystem::copy_file(Sample(), output / "balance.fods");
  const RunResult run = RunWorkbook(output / "balance.fods", {"--no-picture"});
  EXPECT_EQ(run.exit_status, 7);
  EXPECT_THAT(run.errors, HasSubstr("stands in the output folder"));
}

TEST_F(ReportRunner, WorksWithLithuanianPathsInTheCLocale) {
  output = folder / "ataskaitos ąčę";
  const RunResult run =
      RunWorkbook(Sample(), Answered({"--no-picture", "--expect", kArchived}), {{"LC_ALL", "C"}});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
}

TEST_F(ReportRunner, TakesLibreOfficeWithItWhenItIsInterrupted) {
  const std::filesystem::path pid = folder / "pid";
  WriteFile(folder / "soffice", "#!/bin/sh\necho $$ > '" + pid.string() + "'\nsleep 60\n");
  std::filesystem::permissions(folder / "soffice", std::filesystem::perms::owner_all);
  Process runner({"sh", "-c",
                  "'" + ReportRunnerFile() + "' --output-folder '" + output.string() + "' '" +
                      Sample().string() + "' & runner=$!; while [ ! -s '" + pid.string() +
                      "' ]; do sleep 0.05; done; kill -TERM $runner; wait $runner; exit $?"},
                 {{"PATH", folder.string() + ":/usr/bin:/bin"}}, folder / "errors.txt");
  EXPECT_EQ(runner.Wait(std::chrono::seconds(20)), 130);
  EXPECT_THAT(Contents(folder / "errors.txt"), HasSubstr("Interrupted"));
  const pid_t office = std::stoi(Contents(pid));
  EXPECT_NE(kill(office, 0), 0) << "LibreOffice goes on";
}

// Whoever starts LibreOffice's own program has it end where its scripts would start it once more.
TEST_F(ReportRunner, StartsLibreOfficeOnce) {
  namespace fs = std::filesystem;
  const fs::path office = fs::canonical(FindProgram("soffice").value()).parent_path();
  for (const char* name : {"services", "versionrc"}) fs::create_symlink(office / name, folder / name);
  WriteFile(folder / "soffice", "#!/bin/sh\nexec '" + (office / "soffice.bin").string() + "' \"$@\"\n");
  fs::permissions(folder / "soffice", fs::perms::owner_all);
  StartWorkbook(Sample(), Answered({"--no-picture"}),
                {{"PATH", folder.string() + ":" + std::getenv("PATH")}});
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
}

TEST_F(ReportRunner, SaysWhenLibreOfficeIsMissing) {
  Process runner({ReportRunnerFile(), Sample().string()}, {{"PATH", folder.string()}}, folder / "errors.txt");
  EXPECT_EQ(runner.Wait(std::chrono::seconds(20)), 3);
  EXPECT_THAT(Contents(folder / "errors.txt"), HasSubstr("LibreOffice is missing"));
}

TEST_F(ReportRunner, SaysWhenLibreOfficeEndsBeforeTheReportRan) {
  const RunResult run = RunWithBrokenLibreOffice();
  EXPECT_EQ(run.exit_status, 3);
  EXPECT_THAT(run.errors, HasSubstr("exit status 7"));
  EXPECT_THAT(run.errors, HasSubstr("broken"));
}

TEST_F(ReportRunner, RefusesAWrongCommandLine) {
  const auto status = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), ReportRunnerFile());
    // Without LibreOffice on the path, what is not refused ends with 3.
    Process runner(arguments, {{"PATH", folder.string()}}, folder / "errors.txt");
    return runner.Wait(std::chrono::seconds(20));
  };
  const std::string sample = Sample().string();
  const std::string nowhere = (folder / "nowhere").string();
  EXPECT_EQ(status({sample}), 3);
  EXPECT_EQ(status({}), 2);
  EXPECT_EQ(status({"run", sample}), 3);
  EXPECT_EQ(status({"run"}), 2);
  EXPECT_EQ(status({"--version"}), 0);
  EXPECT_EQ(status({"run", "--help"}), 0);
  EXPECT_EQ(status({"--no-such-option", sample}), 2);
  EXPECT_EQ(status({"--period", "2025-13", sample}), 2);
  EXPECT_EQ(status({"--period", "2025", "--form-answers", sample, sample}), 2);
  EXPECT_EQ(status({"--result", nowhere + "/result.json", sample}), 2);
  EXPECT_EQ(status({sample, sample}), 2);
  for (const char* seconds : {"soon", "1x", "0", "-1", "", " 1", "1.5", "99999999999"}) {
    EXPECT_EQ(status({"--timeout", seconds, sample}), 2) << seconds;
  }
  EXPECT_EQ(status({"--timeout", "1", sample}), 3);
  for (const char* option : {"--log", "--expect"}) {
    const std::string outside = (folder / "kept.txt").string();
    WriteFile(outside, "not ours");
    for (const std::string& path : {outside, std::string("../kept.txt"), std::string("drives/../../kept.txt"),
                                    std::string("."), std::string("drives/")}) {
      EXPECT_EQ(status({option, path, "--output-folder", output.string(), sample}), 2) << option << path;
      EXPECT_THAT(Contents(folder / "errors.txt"),
                  HasSubstr("takes the path of a file in the output folder"));
    }
    EXPECT_TRUE(std::filesystem::exists(outside));
    EXPECT_EQ(status({option, "drives/../kept.txt", "--output-folder", output.string(), sample}), 3);
  }
  EXPECT_EQ(status({nowhere}), 2);
  EXPECT_THAT(Contents(folder / "errors.txt"), HasSubstr("there is no \"" + nowhere));
  for (const char* option : {"--answers", "--form-answers", "--build-folder", "--host-resources"}) {
    EXPECT_EQ(status({option, nowhere, sample}), 2) << option;
  }
  EXPECT_EQ(status({folder.string()}), 2) << "a folder as the workbook";
  EXPECT_THAT(Contents(folder / "errors.txt"), HasSubstr("is no file"));
  for (const char* option : {"--answers", "--form-answers"}) {
    EXPECT_EQ(status({option, folder.string(), sample}), 2) << option;
  }
  for (const std::string& path : {sample, sample + "/below", std::string()}) {
    for (const char* option : {"--host-resources", "--output-folder"}) {
      EXPECT_EQ(status({option, path, sample}), 2) << option << path;
    }
    EXPECT_THAT(Contents(folder / "errors.txt"), HasSubstr("is no folder"));
  }
  EXPECT_EQ(status({"--output-folder", (folder / "new" / "below").string(), sample}), 3);
}

TEST_F(ReportRunner, MakesANewReportThatRunsAsItIsAndIsArchivedUnderItsName) {
  const auto make_new = [&](const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {ReportRunnerFile(), "new"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Process(command, {}, folder / "errors.txt").Wait(std::chrono::seconds(20));
  };
  const std::string blank = (SourceFolder() / "samples/sablonas.fods").string();
  const std::string report = (folder / "Bandomasis šių metų balansas").string();
  ASSERT_EQ(make_new({report, blank}), 0) << Contents(folder / "errors.txt");

  const RunResult run = RunWorkbook(
      report + ".fods", {"--form-answers", (SourceFolder() / "samples/sablonas.answers").string()});
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Contents(output / "drives/C/Ataskaitos/Archyvas/2025/BandomasisSiuMetuBalansas_2025.xls"),
              StartsWith("\xD0\xCF\x11\xE0"));
  // The title, and the turnover of the sample company's year.
  EXPECT_THAT(PdfText(output / "printed-1.pdf"), AllOf(HasSubstr("Bandomasis šių metų balansas"),
                                                       HasSubstr("3 962 038,14"), Not(HasSubstr("ablonas"))));

  // What is there already is never replaced.
  const std::string before = Contents(report + ".fods") + "<!-- the author's -->";
  WriteFile(report + ".fods", before);
  EXPECT_EQ(make_new({report + ".fods", blank}), 2);
  EXPECT_THAT(Contents(folder / "errors.txt"), HasSubstr("already"));
  EXPECT_EQ(Contents(report + ".fods"), before);
  EXPECT_EQ(make_new({(folder / "other").string(), (folder / "nowhere").string()}), 2);
  EXPECT_FALSE(std::filesystem::exists(folder / "other.fods"));
  EXPECT_EQ(make_new({(folder / "no such folder/other").string(), blank}), 2);
  // Without a name for it, the template is the project's, wherever one stands.
  {
    const CurrentFolder current(folder);
    EXPECT_EQ(make_new({"third"}), 0) << Contents(folder / "errors.txt");
  }
  EXPECT_EQ(Contents(folder / "third.fods").find("ablonas"), std::string::npos);
  EXPECT_EQ(make_new({}), 2);
  EXPECT_EQ(make_new({"--help"}), 0);
}

TEST_F(ReportRunner, TheTemplatesPeriodIsThatOfItsKindBeforeAnybodyChoseOne) {
  WriteFile(folder / "ok.answers", "[frmReportPeriod]\nbtOk\n");
  const RunResult run = RunWorkbook(SourceFolder() / "samples/sablonas.fods",
                                    {"--form-answers", (folder / "ok.answers").string()});
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(PdfText(output / "printed-1.pdf"), HasSubstr("2024-09-01 – 2024-09-30"));
}

TEST_F(ReportRunner, RunsAutoCloseInTheEndAlsoOfTheLibraryStandard) {
  for (const std::string library : {"Ataskaitos", "Standard"}) {
    const std::filesystem::path workbook =
        WriteWorkbook("auto_close", library, "<table:table table:name=\"Lapas\"/>");
    const auto run_it = [&](const std::map<std::string, std::string>& environment = {}) {
      std::filesystem::remove(folder / "macro.log");
      return RunWorkbook(workbook, {"--no-picture", "--macro", library + ".Ataskaita.Main"}, environment);
    };
    const RunResult run = run_it();
    EXPECT_EQ(run.exit_status, 0) << library << run.errors;
    EXPECT_THAT(run.lines, testing::ElementsAre("main", "closed"));

    const RunResult failed = run_it({{"QVA_TEST_FAIL", "1"}});
    EXPECT_EQ(failed.exit_status, 1);
    EXPECT_THAT(failed.errors, HasSubstr("1234 (Auto_Close) neužverta"));
  }
}

TEST_F(ReportRunner, PutsNothingOfItsOwnIntoAFileThatTheMacroSaves) {
  const RunResult run = RunMacro("saves_itself");
  EXPECT_THAT(run.errors, HasSubstr("1234 (makrokomanda) after the save")) << "errors still arrive";
  EXPECT_THAT(Contents(folder / "macro.log.fods"),
              AllOf(HasSubstr("Sub Main"), Not(HasSubstr("QVA_VarnholtOwn"))));
}

TEST_F(ReportRunner, ListsItsOwnFilesAloneAndExpectsOneOfThem) {
  std::filesystem::create_directories(output);
  WriteFile(output / "kept.txt", "of an earlier run");
  const RunResult run = RunMacro("leaves_a_file", {"--expect", "kept.txt"});
  EXPECT_EQ(run.exit_status, 6);
  EXPECT_THAT(run.errors, HasSubstr("the one that is there is of an earlier run"));
  EXPECT_EQ(Contents(output / "kept.txt"), "of an earlier run");
  const RunResult again = RunMacro("leaves_a_file", {"--expect", "drives/C/new.txt"});
  EXPECT_EQ(again.exit_status, 0) << again.errors;
  EXPECT_THAT(again.output, AllOf(HasSubstr("drives/C/new.txt"), Not(HasSubstr("kept.txt"))));
}

TEST_F(ReportRunner, AMisspeltAnswerStopsTheRunWithItsLine) {
  WriteFile(folder / "answers.txt", "# of a question\nTiap\n");
  const RunResult run = RunMacro("messages", {"--answers", (folder / "answers.txt").string()});
  EXPECT_EQ(run.exit_status, 5);
  EXPECT_THAT(run.errors, HasSubstr("\"Tiap\" in line 2 of " + (folder / "answers.txt").string()));
  EXPECT_THAT(run.lines, testing::IsEmpty()) << "the macro went on";
}

TEST_F(ReportRunner, AnAnswersFileThatIsALineShortStopsTheRunAtTheQuestion) {
  WriteFile(folder / "answers.txt", "# the question is forgotten\n");
  const RunResult run = RunMacro("messages", {"--answers", (folder / "answers.txt").string()});
  EXPECT_EQ(run.exit_status, 5);
  EXPECT_THAT(run.errors, HasSubstr("no answer is left in " + (folder / "answers.txt").string() +
                                    " for the box „Ar tęsti ąčę?“"));
  EXPECT_THAT(run.lines, testing::IsEmpty()) << "the macro went on";
}

TEST_F(ReportRunner, TheNextRunHasTheFolderAfterATimeLimitAnInterruptionAndAKill) {
  const auto start = [&] { StartMacro("endless", {"--timeout", "40"}, {}); };
  const auto runs = [&] {
    start();
    WaitForOutput("Running ");
  };
  EXPECT_EQ(RunMacro("endless", {"--timeout", "6"}).exit_status, 8);
  EXPECT_FALSE(std::filesystem::exists(output / ".~lock.endless.fods#"));
  runs();
  const RunResult second = RunBeside("endless");
  EXPECT_EQ(second.exit_status, 7);
  EXPECT_THAT(second.errors, HasSubstr("Another run is working in the output folder"));
  kill(RunnerPid(), SIGINT);
  EXPECT_EQ(Finish().exit_status, 130);
  runs();
  kill(RunnerPid(), SIGKILL);
  EXPECT_EQ(Finish().exit_status, 137);
  EXPECT_TRUE(std::filesystem::exists(output / ".~lock.endless.fods#"));
  runs();
  kill(RunnerPid(), SIGTERM);
  EXPECT_EQ(Finish().exit_status, 130);
}

TEST_F(ReportRunner, TellsThatLibreOfficeDiedAndTheNextRunHasTheFolder) {
  StartMacro("endless", {"--timeout", "40"}, {});
  WaitForOutput("Running ");
  kill(OfficePid(), SIGKILL);
  const RunResult dead = Finish();
  EXPECT_EQ(dead.exit_status, 9);
  EXPECT_THAT(dead.errors, HasSubstr("LibreOffice died while it ran the report"));
  EXPECT_THAT(RunMacro("endless", {"--timeout", "6"}).errors, HasSubstr("did not finish within 6 seconds"));
}

TEST_F(ReportRunner, WritesWhatBecameOfARun) {
  const std::filesystem::path result = folder / "result.json", users = folder / "users.sqlite";
  StartWorkbook(SourceFolder() / "samples/sablonas.fods",
                {"--period", "2025-Q3", "--no-picture", "--result", result.string(), "--keep-database"},
                {{"QVA_HOST_DATABASE", users.string()}});
  const RunResult run = Finish();
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  const Json json = Json::parse(Contents(result));
  EXPECT_EQ(json["status"], "ok");
  EXPECT_EQ(json["period"], Json::parse(R"({"from": "2025-07-01", "to": "2025-09-30"})"));
  EXPECT_EQ(json["messages"][0]["form"], "frmReportPeriod");
  EXPECT_EQ(json["messages"][0]["answers"].back(), "btOk");
  std::map<std::string, std::string> sums;
  for (const Json& file : json["files"]) sums[file["name"]] = file["sha256"];
  for (const char* file : {"sablonas.fods", "printed-1.pdf", "host.sqlite"}) {
    EXPECT_EQ(sums[file], Sha256OfFile(output / file)) << file;
  }
  double seconds = 0;
  std::string steps;
  for (const Json& step : json["steps"]) {
    seconds += step["seconds"].get<double>();
    steps += step["step"].get<std::string>().substr(0, 7) + "|";
  }
  EXPECT_EQ(steps, "Startin|Opening|Running|Closing|");
  EXPECT_NEAR(seconds, json["seconds"].get<double>(), 0.5);
  EXPECT_THAT(Contents(output / "host.sqlite"), StartsWith("SQLite format 3"));
  EXPECT_FALSE(std::filesystem::exists(users)) << "each run has a database of its own";
}

TEST_F(ReportRunner, WritesTheErrorOfAMacroInTheLibraryStandardWithItsLine) {
  const std::filesystem::path result = folder / "result.json";
  const RunResult run =
      RunWorkbook(WriteWorkbook("unhandled_inside", "Standard", "<table:table table:name=\"Lapas\"/>"),
                  {"--no-picture", "--result", result.string()});
  EXPECT_EQ(run.exit_status, 1);
  const Json json = Json::parse(Contents(result));
  EXPECT_EQ(json["status"], "failed");
  EXPECT_EQ(json["error"], Json::parse(R"({"number": -2147221503, "source": "makrokomanda",
      "text": "Neapdorota klaida", "line": 9})"));
  EXPECT_EQ(json["text"],
            "The report failed: error in the macro: -2147221503 (makrokomanda) Neapdorota klaida");
}

TEST_F(ReportRunner, ChecksWhatReportsNeed) {
  std::filesystem::create_directory(folder / "resources");
  const std::vector<std::string> check = {"check", "--output-folder", output.string()};
  StartRunner(check, {});
  const RunResult whole = Finish();
  EXPECT_EQ(whole.exit_status, 0) << whole.output;
  EXPECT_THAT(whole.output, AllOf(HasSubstr("ok       a macro that uses the library runs in LibreOffice\n"),
                                  Not(HasSubstr("MISSING"))));
  EXPECT_FALSE(std::filesystem::exists(output)) << "it leaves nothing";

  std::vector<std::string> without = check;
  without.insert(without.end(), {"--host-resources", (folder / "resources").string()});
  StartRunner(without, {{"PATH", folder.string()}, {"TMPDIR", "/proc"}});
  const RunResult broken = Finish();
  EXPECT_EQ(broken.exit_status, 3);
  for (const char* missing :
       {"MISSING  LibreOffice: there is no soffice on the search path", "MISSING  the host's ",
        "MISSING  temporary folder /proc: nothing can be written", "without  pictures (pdftoppm): "}) {
    EXPECT_THAT(broken.output, HasSubstr(missing));
  }
}

TEST_F(ReportRunner, RefusesAWorkbookThatSomebodyHasOpen) {
  std::filesystem::create_directories(output);
  WriteFile(output / ".~lock.balance.fods#",
            ",jonas,pc,22.11.2026 03:18,file:///home/jonas/.config/libreoffice/4;");
  const RunResult run = RunWorkbook(Sample(), {"--no-picture"});
  EXPECT_EQ(run.exit_status, 7);
  EXPECT_THAT(run.errors, HasSubstr("is open in another program"));
  EXPECT_FALSE(std::filesystem::exists(output / "balance.fods"));
}

TEST_F(ReportRunner, RemovesLocksOfRunsWithAnotherTemporaryFolderOnThisMachineAlone) {
  std::filesystem::create_directories(output);
  const std::filesystem::path lock = output / ".~lock.balance.fods#";
  const std::string profile =
      "22.11.2026 03:18,file:///kitur/la%C4%8Diai%20ir%20kt/qva-report-a1B2c3/profile;";
  const auto errors = [&](const std::string& host) {
    WriteFile(lock, ",jonas," + host + "," + profile);
    return RunWithBrokenLibreOffice().errors;
  };
  char host[256] = {};
  gethostname(host, sizeof host - 1);
  EXPECT_THAT(errors(host), Not(HasSubstr("is open in another program")));
  EXPECT_FALSE(std::filesystem::exists(lock));
  EXPECT_THAT(errors(std::string(host) + ".local"), Not(HasSubstr("is open in another program")))
      << "a name with its domain";
  EXPECT_THAT(errors("kitas-" + std::string(host)), HasSubstr("is open in another program"));
  EXPECT_TRUE(std::filesystem::exists(lock));
}

TEST_F(ReportRunner, KeepsTheLockOfARunThatGoesOnWithAnotherTemporaryFolder) {
  std::filesystem::create_directories(output);
  const std::filesystem::path running = folder / "la\xC4\x8Diai ir kt" / "qva-report-a1B2c3";
  std::filesystem::create_directories(running);
  const int held = open(running.c_str(), O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  char host[256] = {};
  gethostname(host, sizeof host - 1);
  WriteFile(output / ".~lock.balance.fods#", ",jonas," + std::string(host) + ",22.11.2026 03:18,file://" +
                                                 folder.string() +
                                                 "/la%C4%8Diai%20ir%20kt/qva-report-a1B2c3/profile;");
  EXPECT_THAT(RunWithBrokenLibreOffice().errors, HasSubstr("is open in another program"));
  close(held);
  EXPECT_THAT(RunWithBrokenLibreOffice().errors, Not(HasSubstr("is open in another program")));
}

// A folder that a user other than root may not look into.
TEST_F(ReportRunner, PassesOverFoldersThatItCannotRead) {
  std::filesystem::create_directories(output / "closed" / "within");
  std::filesystem::permissions(output / "closed", std::filesystem::perms::none);
  std::filesystem::permissions(folder, std::filesystem::perms::all);
  std::filesystem::permissions(output, std::filesystem::perms::all);
  const RunResult run = RunWithBrokenLibreOffice(
      geteuid() == 0 ? std::vector<std::string>{"setpriv", "--reuid=65534", "--clear-groups"}
                     : std::vector<std::string>());
  std::filesystem::permissions(output / "closed", std::filesystem::perms::owner_all);
  EXPECT_EQ(run.exit_status, 3);
  EXPECT_THAT(run.errors, HasSubstr("exit status 7")) << "LibreOffice was not even started";
}

}  // namespace
}  // namespace qva
