// Batches of reports in LibreOffices that stay warm.
#include <signal.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <set>
#include <thread>

#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"
#include "tools/report-runner/Office.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class Batch : public CalcTest {
 protected:
  /// A jobs file of one workbook, which holds these macros; each job is an entry macro.
  void WriteJobs(const std::string& macros, const std::vector<std::string>& jobs) {
    const fs::path workbook = WriteWorkbook(macros, "VBAProject", "<table:table table:name=\"Lapas\"/>");
    std::string lines = "workbook,macro,output\n";
    for (std::size_t n = 0; n < jobs.size(); ++n) {
      lines += workbook.string() + ",Ataskaita." + jobs[n] + ",done/" + std::to_string(n + 1) + "\n";
    }
    WriteFile(folder / "jobs.csv", lines);
  }

  void Start(std::vector<std::string> options, std::map<std::string, std::string> environment = {}) {
    options.insert(options.begin(), {"batch", (folder / "jobs.csv").string(), "--no-picture"});
    fs::create_directory(folder / "tmp");
    environment["TMPDIR"] = folder / "tmp";
    StartRunner(options, std::move(environment));
  }
  RunResult Run(std::vector<std::string> options = {}) {
    Start(std::move(options));
    return Finish();
  }

  /// "status tries" of each job.
  std::vector<std::string> Statuses() {
    std::vector<std::string> statuses;
    const Json summary = Json::parse(Contents(folder / "jobs.summary/summary.json"));
    for (const Json& job : summary["jobs"]) {
      statuses.push_back(job["status"].is_null() ? "-"
                                                 : job["status"].get<std::string>() + " " +
                                                       std::to_string(job["tries"].get<int>()));
    }
    return statuses;
  }
  Json ResultOf(int job) {
    return Json::parse(Contents(folder / "done" / std::to_string(job) / "result.json"), nullptr, false);
  }
  /// Returns once nothing of a process goes on; one that nobody waited for has no memory any more.
  static void WaitUntilGone(pid_t process) {
    for (int i = 0; i < 100 && MemoryOf(process) != 0; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    EXPECT_EQ(MemoryOf(process), 0U) << "LibreOffice goes on";
  }
  void WaitForLines(std::size_t count) {
    for (int i = 0; i < 600 && Lines().size() < count; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }
  /// The names in the folder of all outputs.
  std::set<std::string> Outputs() {
    std::set<std::string> names;
    if (!fs::exists(folder / "done")) return names;
    for (const auto& entry : fs::directory_iterator(folder / "done")) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
};

/// Those with a library of the tests' own, which is built with sanitizers, before all others.
class BatchPreloaded : public Batch {};

TEST_F(Batch, AJobFindsNothingOfTheJobsBeforeIt) {
  WriteJobs("traces", {"Main", "Main", "LeaveInProfile", "Main"});
  const RunResult run = Run();
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  std::vector<std::string> seen, profiles;
  for (const std::string& line : run.lines) (line.starts_with("in ") ? profiles : seen).push_back(line);
  ASSERT_THAT(seen, SizeIs(8));
  for (std::size_t n = 0; n < seen.size(); n += 2) {
    EXPECT_EQ(seen[n], "before:") << n;
    EXPECT_EQ(seen[n + 1], "after: registry file global library name document") << "or the test sees nothing";
  }
  // The first three had one LibreOffice, whose profile is changed then.
  ASSERT_THAT(profiles, SizeIs(8));
  EXPECT_EQ(profiles[0], profiles[5]);
  EXPECT_NE(profiles[5], profiles[6]);
}

// The currencies of all countries, which a text that may be an amount is held against, are much to read.
TEST_F(Batch, AWorkerHasReadTheCurrenciesBeforeItsJobsDo) {
  WriteJobs("batch_jobs", {"Hangs"});
  Start({});
  WaitForLine("hangs");
  EXPECT_THAT(Contents(fs::path("/proc") / std::to_string(OfficePid()) / "maps"), HasSubstr("localedata_es"));
  kill(RunnerPid(), SIGTERM);
  EXPECT_EQ(Finish().exit_status, 130);
}

TEST_F(Batch, WhatHangsOrDiesCostsItsOwnJobAndTheNextStartDoesWhatIsMissing) {
  WriteJobs("batch_jobs", {"Main", "Hangs", "Dies", "DiesOnce", "Fails", "Nera"});
  const RunResult run = Run({"--timeout", "15"});
  EXPECT_EQ(run.exit_status, 11);
  EXPECT_THAT(Statuses(), ElementsAre("ok 1", "time-limit 2", "died 2", "ok 2", "failed 1", "no-macro 1"));
  EXPECT_THAT(run.errors, AllOf(HasSubstr("6 of 6 done, 4 failed, "), HasSubstr("2 done in "),
                                HasSubstr("  line 3  time-limit       " + (folder / "done/2").string() +
                                          "  LibreOffice did not finish within 15 seconds")));
  EXPECT_THAT(Outputs(), ElementsAre("1", "2", "3", "4", "5", "6"));
  EXPECT_TRUE(fs::exists(folder / "done/4/drives/C/done.txt"));
  EXPECT_EQ(ResultOf(5)["error"]["line"], 11);
  EXPECT_EQ(ResultOf(5)["status"], "failed");
  EXPECT_FALSE(fs::exists(folder / "done/2/.~lock.batch_jobs.fods#"));
  EXPECT_TRUE(fs::is_empty(folder / "tmp")) << "temporary files are left";

  const std::string first = Contents(folder / "done/1/result.json");
  fs::remove(folder / "macro.log");
  WriteJobs("batch_jobs", {"Main", "Main", "Main", "DiesOnce", "Main", "Main"});
  const RunResult again = Run({"--jobs-per-worker", "2"});
  EXPECT_EQ(again.exit_status, 0) << again.errors;
  EXPECT_THAT(again.errors,
              AllOf(HasSubstr("4 of 4 done, "), HasSubstr("4 done in "), HasSubstr("2 done before")));
  EXPECT_THAT(again.lines, AllOf(SizeIs(4), Each(StartsWith("done in "))));
  EXPECT_EQ(std::set<std::string>(again.lines.begin(), again.lines.end()).size(), 2U) << "two jobs a worker";
  EXPECT_EQ(Contents(folder / "done/1/result.json"), first);
  EXPECT_THAT(Statuses(), ElementsAre("ok 1", "ok 1", "ok 1", "ok 2", "ok 1", "ok 1"));
  EXPECT_THAT(Contents(folder / "jobs.summary/summary.csv"), HasSubstr("/done/2,ok,0,"));
}

TEST_F(Batch, AWorkerThatIsKilledCostsOneTry) {
  WriteJobs("batch_jobs", {"Waits", "Main"});
  Start({});
  WaitForLine("waits");
  const pid_t office = OfficePid();
  kill(office, SIGKILL);
  WaitUntilGone(office);
  WaitForLines(2);  // of the second try
  WriteFile(folder / "macro.log.go", "");
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(Statuses(), ElementsAre("ok 2", "ok 1"));
  EXPECT_THAT(run.lines, AllOf(SizeIs(4), Not(testing::Contains("hangs"))));
}

TEST_F(Batch, AMacroThatQuitsCostsItsOwnJob) {
  WriteJobs("batch_jobs", {"Main", "QuitsExcel", "Main", "EndsLibreOffice", "Main"});
  const RunResult run = Run({"--timeout", "20"});
  EXPECT_EQ(run.exit_status, 11);
  EXPECT_THAT(Statuses(), ElementsAre("ok 1", "failed 1", "ok 1", "failed 1", "ok 1"));
  EXPECT_THAT(ResultOf(2).value("text", ""), HasSubstr("ended by an End statement or by quitting Excel"));
  ASSERT_THAT(run.lines, SizeIs(5));
  EXPECT_EQ(run.lines[0], run.lines[2]) << "another LibreOffice";
}

TEST_F(Batch, WorkersWorkAtOnceAndAnInterruptionLeavesNothingHalfDone) {
  WriteJobs("batch_jobs", {"Main", "Waits", "Hangs", "Main"});
  Start({"--workers", "2"});
  WaitForLine("waits");
  WaitForLine("hangs");
  const pid_t office = OfficePid();
  const auto begin = std::chrono::steady_clock::now();
  kill(RunnerPid(), SIGINT);
  const RunResult run = Finish();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  EXPECT_EQ(run.exit_status, 130);
  WaitUntilGone(office);
  EXPECT_THAT(Statuses(), ElementsAre("ok 1", "-", "-", "-"));
  EXPECT_THAT(Outputs(), ElementsAre("1"));
  EXPECT_THAT(run.errors, HasSubstr("1 done in "));
  EXPECT_THAT(run.errors, HasSubstr("3 not begun"));
}

TEST_F(Batch, AJobThatTakesTooMuchMemoryIsStopped) {
  WriteJobs("batch_jobs", {"Waits"});
  const RunResult run = Run({"--memory-limit", "1"});
  EXPECT_EQ(run.exit_status, 11);
  EXPECT_THAT(Statuses(), ElementsAre("memory-limit 2"));
  EXPECT_THAT(run.errors, HasSubstr("LibreOffice took more than 1 MB of memory and was stopped"));
}

TEST_F(BatchPreloaded, AWorkerThatHasTooMuchMemoryGivesWayToAFreshOne) {
  for (const char* limit : {"1000", "3000"}) {
    WriteJobs("batch_jobs", {"Main", "Main", "Main"});
    Start({"--memory-limit", limit}, {{"LD_PRELOAD", WorkerMemoryLibrary()}});
    const RunResult run = Finish();
    EXPECT_THAT(Statuses(), Each("ok 1")) << run.errors;
    const std::size_t workers = std::set<std::string>(run.lines.begin(), run.lines.end()).size();
    EXPECT_EQ(workers, std::string_view(limit) == "1000" ? 3U : 1U) << limit;
    fs::remove_all(folder / "done");
    fs::remove(folder / "macro.log");
  }
}

TEST_F(BatchPreloaded, FewerThreadsThanWorkersTakeLonger) {
  WriteJobs("batch_jobs", {"Main", "Main"});
  const auto with_threads = [&](const std::string& threads) {
    Start({"--workers", "3"}, {{"LD_PRELOAD", FewThreadsLibrary()}, {"QVA_TEST_THREADS", threads}});
    return Finish();
  };
  const RunResult none = with_threads("0");
  EXPECT_EQ(none.exit_status, 2);
  EXPECT_THAT(none.errors, HasSubstr("Resource temporarily unavailable"));
  EXPECT_THAT(Outputs(), testing::IsEmpty());
  const RunResult one = with_threads("1");
  EXPECT_EQ(one.exit_status, 0) << one.errors;
  EXPECT_THAT(Statuses(), ElementsAre("ok 1", "ok 1"));
}

TEST_F(Batch, AJobWhoseOutputCannotBeWrittenFailsAlone) {
  WriteJobs("batch_jobs", {"Main", "Main"});
  const fs::path jobs = folder / "jobs.csv";
  WriteFile(jobs, Contents(jobs) + (folder / "batch_jobs.fods").string() + ",Ataskaita.Main,jobs.csv/3\n");
  const RunResult run = Run();
  EXPECT_EQ(run.exit_status, 11);
  EXPECT_THAT(Statuses(), ElementsAre("ok 1", "ok 1", "failed 1"));
  EXPECT_THAT(run.errors, HasSubstr("jobs.csv/3"));
}

TEST_F(Batch, PeriodsAndBooksAreTheJobsOwn) {
  std::string jobs = "workbook;book;period;output\n";
  for (const char* job :
       {"BALTIJA;2025-Q4;1", ";2025-H2;2", "NERA;2024-02;3", ";2024-02;4", ";2024-01/2024-04;5"}) {
    jobs += (SourceFolder() / "samples/sablonas.fods").string() + ";" + job + "\n";
  }
  WriteFile(folder / "jobs.csv", jobs);
  const RunResult run = Run();
  EXPECT_EQ(run.exit_status, 11) << run.errors;
  EXPECT_THAT(Statuses(), ElementsAre("ok 1", "ok 1", "failed 1", "ok 1", "ok 1"));
  std::vector<std::string> periods;
  for (const char* job : {"1", "2", "4", "5"}) {
    const Json period = Json::parse(Contents(folder / job / "result.json"), nullptr, false)["period"];
    periods.push_back(period.value("from", "") + " " + period.value("to", ""));
  }
  EXPECT_THAT(periods, ElementsAre("2025-10-01 2025-12-31", "2025-07-01 2025-12-31", "2024-02-01 2024-02-29",
                                   "2024-01-01 2024-04-30"));
  EXPECT_THAT(PdfText(folder / "1/printed-1.pdf"), HasSubstr("Baltijos žvejų krantinė"));
  EXPECT_THAT(PdfText(folder / "2/printed-1.pdf"), HasSubstr("Medvilnės namai"));
  EXPECT_THAT(Contents(folder / "jobs.summary/summary.csv"), HasSubstr("„NERA“"));
}

TEST_F(Batch, RefusesAWrongJobsFileAndFoldersThatAreNoJobs) {
  WriteJobs("batch_jobs", {"Main", "Main"});
  fs::create_directories(folder / "done/2");
  WriteFile(folder / "done/2/kept.txt", "not ours");
  const RunResult taken = Run();
  EXPECT_EQ(taken.exit_status, 2);
  EXPECT_THAT(taken.errors, HasSubstr("jobs.csv, line 3: " + (folder / "done/2").string() +
                                      " is there already, and is no job's output"));
  EXPECT_TRUE(fs::exists(folder / "done/2/kept.txt"));
  WriteFile(folder / "jobs.csv", "workbook,output\nnowhere.fods,1\n");
  const RunResult wrong = Run();
  EXPECT_EQ(wrong.exit_status, 2);
  EXPECT_THAT(wrong.errors, HasSubstr("jobs.csv, line 2: there is no file"));
  WriteFile(folder / "jobs.csv", "workbook,output\n");
  EXPECT_EQ(Run().exit_status, 2);
  EXPECT_EQ(Run({"--workers", "0"}).exit_status, 2);
  EXPECT_FALSE(fs::exists(folder / "jobs.summary"));
}

}  // namespace
}  // namespace qva
