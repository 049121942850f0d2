#include "tools/report-runner/Batch.h"

#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>
#include <system_error>
#include <thread>
#include <vector>

#include "tools/report-runner/Jobs.h"
#include "tools/report-runner/OutputFolder.h"
#include "tools/report-runner/ReportRun.h"
#include "tools/report-runner/Summary.h"
#include "tools/report-runner/TextFiles.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using SteadyClock = std::chrono::steady_clock;

constexpr char kResult[] = "result.json";

double SecondsSince(SteadyClock::time_point begin) {
  return std::chrono::duration<double>(SteadyClock::now() - begin).count();
}

/// Where a job writes until it has ended.
fs::path UnfinishedOf(const Job& job) {
  return job.output.string() + ".part";
}

/// What an earlier batch left of the job, where that is done.
JobOutcome EarlierOutcome(const Job& job) {
  const Json json = Json::parse(ReadText(job.output / kResult), nullptr, false);
  if (!json.is_object() || json.value("job", Json()) != ToJson(job)) return {};
  if (json.value("status", "") != NameOf(ReportStatus::Ok)) return {};
  return {JobOutcome::Kind::Earlier, ReportStatus::Ok, "", json.value("seconds", 0.0),
          json.value("tries", 0)};
}

/// Whether a failure may be LibreOffice's, so that another try is worth its while.
bool MayPass(ReportStatus status) {
  return status == ReportStatus::Died || status == ReportStatus::TimeLimit ||
         status == ReportStatus::MemoryLimit || status == ReportStatus::NoLibreOffice;
}

/// Does one job after the other, in a LibreOffice that it starts when it needs one.
class Worker {
 public:
  explicit Worker(const BatchOptions& options) : options_(options) {}

  /// Not begun where it was interrupted.
  JobOutcome Do(const Job& job) {
    const fs::path folder = UnfinishedOf(job);
    ReportResult result;
    int tries = 0;
    do {
      fs::remove_all(folder);
      result = Try(job, folder);
      ++tries;
    } while (MayPass(result.status) && tries < kTries && !options_.interrupted());
    if (result.status == ReportStatus::Interrupted || options_.interrupted()) {
      fs::remove_all(folder);
      return {};
    }
    RemoveDeadLocks(folder);
    fs::create_directories(folder);  // a run that did not begin left none
    Json json = ToJson(result);
    json["tries"] = tries;
    json["job"] = ToJson(job);
    WriteText(folder / kResult, JsonText(json));
    fs::remove_all(job.output);
    fs::rename(folder, job.output);
    return {JobOutcome::Kind::Ended, result.status, result.text, result.seconds, tries};
  }

 private:
  static constexpr int kTries = 2;

  ReportResult Try(const Job& job, const fs::path& folder) {
    if (!office_) office_ = std::make_unique<WarmOffice>(options_.office);
    ReportRunOptions run;
    run.workbook = job.workbook;
    if (!job.macro.empty()) run.macro = job.macro;
    if (!job.book.empty()) run.book = job.book;
    run.output_folder = folder;
    run.office = options_.office;
    run.answers = job.answers;
    run.form_answers = job.form_answers;
    run.period = job.period;
    run.timeout = options_.timeout;
    run.memory_limit = options_.memory_limit;
    run.picture = options_.picture;
    run.own_drives = true;
    run.database = office_->Database();
    run.expect = job.expect;
    run.log = job.log;
    run.interrupted = options_.interrupted;
    std::ostringstream steps, warnings;  // the result has them
    ReportResult result = RunReport(
        run, [this](const Variables& variables) { return office_->Start(variables); }, steps, warnings);
    if (MayPass(result.status) || !office_->IsGoodForMore() ||
        office_->started_jobs() >= options_.jobs_per_worker || office_->Memory() > options_.memory_limit) {
      office_.reset();
    }
    return result;
  }

  const BatchOptions& options_;
  std::unique_ptr<WarmOffice> office_;
};

/// The jobs that are to be done, and those that have ended.
class ProgressLine {
 public:
  ProgressLine(const std::vector<Job>& jobs, Outcomes& outcomes, std::ostream& err)
      : jobs_(jobs), outcomes_(outcomes), err_(err) {
    for (const JobOutcome& outcome : outcomes) all_ += outcome.kind == JobOutcome::Kind::NotBegun;
  }

  /// The next job that nobody has; that of the end when there is none.
  std::size_t Next() {
    const std::lock_guard lock(mutex_);
    while (next_ < jobs_.size() && outcomes_[next_].kind == JobOutcome::Kind::Earlier) ++next_;
    return next_ < jobs_.size() ? next_++ : next_;
  }

  void Ended(std::size_t job, JobOutcome outcome) {
    const std::lock_guard lock(mutex_);
    if (outcome.kind == JobOutcome::Kind::Ended) {
      ++ended_;
      failed_ += outcome.status != ReportStatus::Ok;
    }
    outcomes_[job] = std::move(outcome);
    Show();
  }

  /// On a terminal one line that changes, elsewhere a line for each job.
  void Show() {
    err_ << (is_terminal_ ? "\r\x1b[K" : "") << ProgressText(ended_, failed_, all_, SecondsSince(begin_))
         << (is_terminal_ ? "" : "\n") << std::flush;
  }

  void Close() {
    if (is_terminal_) err_ << "\r\x1b[K";
  }

 private:
  const std::vector<Job>& jobs_;
  Outcomes& outcomes_;
  std::ostream& err_;
  std::mutex mutex_;
  std::size_t next_ = 0, all_ = 0, ended_ = 0, failed_ = 0;
  bool is_terminal_ = isatty(STDERR_FILENO) != 0;
  SteadyClock::time_point begin_ = SteadyClock::now();
};

/// Works until no job is left, or the batch is interrupted.
void Work(const BatchOptions& options, const std::vector<Job>& jobs, ProgressLine& progress) {
  Worker worker(options);
  while (!options.interrupted()) {
    const std::size_t n = progress.Next();
    if (n == jobs.size()) return;
    JobOutcome outcome;
    try {
      outcome = worker.Do(jobs[n]);
    } catch (const std::exception& exception) {
      // Its result cannot be kept, where the disk is full, say.
      outcome = {JobOutcome::Kind::Ended, ReportStatus::Failed, exception.what(), 0, 1};
      std::error_code ignored;
      fs::remove_all(UnfinishedOf(jobs[n]), ignored);
    }
    progress.Ended(n, std::move(outcome));
  }
}

/// The jobs; what is wrong with them goes to `err`, and there are none then.
std::vector<Job> JobsOf(const BatchOptions& options, std::ostream& err) {
  std::vector<Job> jobs;
  try {
    jobs = ReadJobs(ReadText(options.jobs_file), fs::absolute(options.jobs_file).parent_path());
  } catch (const std::exception& exception) {
    std::istringstream problems(exception.what());
    for (std::string problem; std::getline(problems, problem);) {
      err << options.jobs_file.string() << ", " << problem << '\n';
    }
    return {};
  }
  if (jobs.empty()) err << options.jobs_file.string() << " has no jobs\n";
  bool are_free = true;
  for (const Job& job : jobs) {
    if (!fs::exists(job.output) || fs::exists(job.output / kResult)) continue;
    err << options.jobs_file.string() << ", line " << job.line << ": " << job.output.string()
        << " is there already, and is no job's output\n";
    are_free = false;
  }
  return are_free ? jobs : std::vector<Job>();
}

}  // namespace

ReportStatus RunBatch(const BatchOptions& options, std::ostream& err) {
  const std::vector<Job> jobs = JobsOf(options, err);
  if (jobs.empty()) return ReportStatus::WrongCommandLine;
  if (const std::string why = WhyNoOffice(options.office); !why.empty()) {
    err << why << '\n';
    return ReportStatus::NoLibreOffice;
  }
  const fs::path summary = options.summary_folder.empty()
                               ? fs::path(options.jobs_file).replace_extension(".summary")
                               : options.summary_folder;
  const OutputFolder summary_folder(summary);
  if (!summary_folder.IsOurs()) {
    err << "Another batch is working with the summary folder " << summary.string() << '\n';
    return ReportStatus::FolderInUse;
  }

  const auto begin = SteadyClock::now();
  Outcomes outcomes;
  for (const Job& job : jobs) outcomes.push_back(EarlierOutcome(job));
  ProgressLine progress(jobs, outcomes, err);
  std::vector<std::jthread> workers;
  workers.reserve(static_cast<std::size_t>(options.workers));
  try {
    for (int n = 0; n < options.workers; ++n) {
      workers.emplace_back([&] { Work(options, jobs, progress); });
    }
  } catch (const std::system_error&) {
    // Fewer workers take longer.
    if (workers.empty()) throw;
  }
  workers.clear();
  progress.Close();

  const double seconds = SecondsSince(begin);
  WriteWhole(summary / "summary.csv", SummaryCsv(jobs, outcomes));
  WriteWhole(summary / "summary.json", JsonText(SummaryJson(jobs, outcomes, seconds)));
  PrintSummary(jobs, outcomes, seconds, err);
  if (options.interrupted()) return ReportStatus::Interrupted;
  const bool all_done = std::ranges::all_of(
      outcomes, [](const JobOutcome& outcome) { return outcome.status == ReportStatus::Ok; });
  return all_done ? ReportStatus::Ok : ReportStatus::JobsFailed;
}

}  // namespace qva
