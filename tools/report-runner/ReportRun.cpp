#include "tools/report-runner/ReportRun.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <thread>

#include "host/HostOptions.h"
#include "platform/error.h"
#include "platform/filesystem/native_file.h"
#include "platform/host.h"
#include "platform/posix/RegistryText.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "platform/variables.h"
#include "server/calc/job_protocol.h"
#include "server/call_log.h"
#include "tools/report-runner/OutputFolder.h"
#include "tools/report-runner/PeriodAnswers.h"
#include "tools/report-runner/Process.h"
#include "tools/report-runner/Sha256.h"
#include "tools/report-runner/TextFiles.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMegabyte = std::uintmax_t{1024} * 1024;
constexpr std::string_view kPrinted = "printed";

/// Removes what an earlier run printed.
void RemovePrinted(const fs::path& folder) {
  for (int n = 1; fs::remove(folder / (std::string(kPrinted) + "-" + std::to_string(n) + ".pdf")); ++n) {
  }
}

/// The registry of the run: the host settings that name the book and the folder of the installation.
std::string RegistryWithBook(std::string_view book) {
  RegistryText registry;
  const auto set = [&](std::u16string_view section, std::u16string_view setting, std::u16string_view value) {
    registry.Set(u"HKEY_CURRENT_USER\\" + SettingsKeyPath(host::kSettingsApplication, section), setting,
                 {.type = kRegSz, .text = std::u16string(value) + u'\0', .bytes = {}});
  };
  set(host::kFormsSection, host::kBookSetting, FromUtf8(book));
  set(host::kGeneralSection, u"AppPath", u"C:\\Quillon");
  return registry.Utf8();
}

/// The drives that macros save to: in the output folder, unless the user's environment has others. Of an
/// archive, the library makes no more than a year's folder.
void MakeDrives(const ReportRunOptions& options, const fs::path& output, Variables& job) {
  if (!EnvironmentVariable(variables::kDrives).empty() && !options.own_drives) return;
  for (const std::string_view folder : embedded::kSampleFolders)
    fs::create_directories(output / "drives" / folder);
  job[variables::kDrives] = (output / "drives").string();
}

void PrintStep(std::string_view step, std::ostream& out) {
  out << "  " << step << std::endl;
}

/// What a line of the log of calls says without time, process, duration and arguments.
std::string StepOfCall(const std::string& line) {
  std::vector<std::string> columns(1);
  for (const char c : line) c == '\t' ? void(columns.emplace_back()) : columns.back().push_back(c);
  if (columns.size() != static_cast<std::size_t>(CallLogColumn::Outcome) + 1) return line;
  const auto column = [&](CallLogColumn which) { return columns[static_cast<std::size_t>(which)]; };
  const std::string outcome = column(CallLogColumn::Outcome);
  return column(CallLogColumn::Member) + (outcome.empty() ? "" : " " + outcome);
}

/// The lines that a growing file gains.
class Follower {
 public:
  explicit Follower(fs::path path) : path_(std::move(path)) {}

  /// What came since the last call.
  std::vector<std::string> NewLines() {
    std::vector<std::string> lines;
    // A log that was full has another name by now.
    std::error_code missing;
    const std::uintmax_t size = fs::file_size(path_, missing);
    if (!missing && size < read_) {
      Read(fs::path(path_) += ".1", lines);
      read_ = 0;
    }
    Read(path_, lines);
    return lines;
  }

 private:
  void Read(const fs::path& path, std::vector<std::string>& lines) {
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(read_));
    std::string line;
    while (std::getline(file, line) && !file.eof()) {
      read_ += line.size() + 1;
      lines.push_back(line);
    }
  }

  fs::path path_;
  std::size_t read_ = 0;
};

using Milliseconds = std::int64_t;  // since 1970

Milliseconds NowInMilliseconds() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

/// Prints what the files of a run gain, in the order in which things happen, and keeps when its steps began.
class Narrator {
 public:
  /// `job` is the file of the job's own steps, `report` that of the macro's - or the log of calls -,
  /// `messages` that of the messages.
  Narrator(const fs::path& job, const fs::path& report, bool is_call_log, const fs::path& messages,
           std::ostream& out)
      : job_(job), report_(report), is_call_log_(is_call_log), messages_(messages), out_(out) {}

  void Begin(const std::string& step) { Begin(step, NowInMilliseconds()); }

  void GoOn() {
    // The job is asked first: whatever the macro wrote before a step of the job is there by then.
    const std::vector<std::string> steps = job_.NewLines();
    auto step = steps.begin();
    for (; step != steps.end() && steps_before_macro_ > 0; ++step, --steps_before_macro_) Tell(*step);
    for (const std::string& line : report_.NewLines())
      PrintStep(is_call_log_ ? StepOfCall(line) : line, out_);
    for (const std::string& line : messages_.NewLines()) PrintStep(line, out_);
    for (; step != steps.end(); ++step) Tell(*step);
  }

  /// Whether the job has begun.
  bool HasBegun() const { return steps_before_macro_ < kJobStepsBeforeMacro; }

  /// The steps, the last one until now.
  std::vector<ReportResult::Step> Steps() const {
    std::vector<ReportResult::Step> steps;
    for (std::size_t n = 0; n < begun_.size(); ++n) {
      const Milliseconds end = n + 1 < begun_.size() ? begun_[n + 1].second : NowInMilliseconds();
      steps.push_back({begun_[n].first, static_cast<double>(end - begun_[n].second) / 1000});
    }
    return steps;
  }

 private:
  void Begin(const std::string& step, Milliseconds when) {
    PrintStep(step, out_);
    begun_.emplace_back(step, when);
  }

  /// A line of the job: when the step began, a tab, and the step.
  void Tell(const std::string& line) {
    const std::size_t tab = line.find('\t');
    Begin(line.substr(tab + 1), std::stoll(line.substr(0, tab)));
  }

  Follower job_;
  Follower report_;
  bool is_call_log_;
  Follower messages_;
  std::ostream& out_;
  int steps_before_macro_ = kJobStepsBeforeMacro;
  std::vector<std::pair<std::string, Milliseconds>> begun_;
};

/// PNG of the PDF's first page, for whoever wants to look at the result quickly.
void MakePicture(const fs::path& pdf, const fs::path& errors, std::ostream& err) {
  fs::path base = pdf;
  base.replace_extension();
  Process process({"pdftoppm", "-png", "-r", "110", "-singlefile", pdf.string(), base.string()}, {}, errors);
  if (process.Wait(std::chrono::seconds(60)) != 0) err << "No PNG was made: pdftoppm is missing or failed\n";
}

/// Runs a step when it goes.
class AtEnd {
 public:
  explicit AtEnd(std::function<void()> step) : step_(std::move(step)) {}
  ~AtEnd() { IgnoreFailures(step_); }
  AtEnd(const AtEnd&) = delete;
  AtEnd& operator=(const AtEnd&) = delete;

 private:
  std::function<void()> step_;
};

/// The file by which LibreOffice keeps others from a document.
fs::path LockOf(const fs::path& document) {
  return document.parent_path() / (".~lock." + document.filename().string() + "#");
}

/// Where an earlier run was cut off, locks of its LibreOffice are left at what it had open.
void RemoveLocks(const fs::path& output) {
  RemoveDeadLocks(output);
  if (const fs::path own = EnvironmentVariable(variables::kDrives); !own.empty()) RemoveDeadLocks(own);
}

/// The files of a run, by name.
std::vector<ReportResult::File> FilesOf(const OutputFolder& output, const fs::path& path) {
  std::vector<ReportResult::File> files;
  for (const auto& [name, size] : output.NewFiles()) files.push_back({name, size, Sha256OfFile(path / name)});
  return files;
}

/// What the job wrote when all was over (server/calc/ReportJob.h); false where it did not come to that.
bool ReadOutcome(const fs::path& file, ReportResult& result) {
  const nlohmann::json json = nlohmann::json::parse(ReadText(file), nullptr, false);
  if (!json.is_object()) return false;
  result.status = StatusNamed(json.value(kResultStatus, "")).value_or(ReportStatus::Failed);
  if (result.status != ReportStatus::Ok) result.text = "The report failed: " + json.value(kResultText, "");
  if (const auto error = json.find(kResultError); error != json.end()) {
    result.error = {error->value(kErrorNumber, 0), error->value(kErrorSource, ""),
                    error->value(kErrorText, ""), error->value(kErrorLine, 0)};
  }
  if (const auto period = json.find(kResultPeriod); period != json.end()) {
    result.period = {period->value(kPeriodFrom, ""), period->value(kPeriodTo, "")};
  }
  return true;
}

/// What a run leaves in its output folder, the macro's own files apart.
struct OutputFiles {
  explicit OutputFiles(const ReportRunOptions& options)
      : folder(fs::absolute(options.output_folder).lexically_normal()),
        workbook(folder / options.workbook.filename()),
        pdf(fs::path(workbook).replace_extension(".pdf")),
        messages(folder / "messages.txt"),
        log(options.log.empty() ? fs::path() : folder / options.log) {}

  fs::path folder;
  fs::path workbook;
  fs::path pdf;
  fs::path messages;
  fs::path log;  ///< none when empty
};

/// What the job takes and what it tells, in a folder that goes with the run.
struct JobFiles {
  explicit JobFiles(const fs::path& folder)
      : registry(folder / "registry.reg"),
        database(folder / embedded::kDatabaseFile),
        period_answers(folder / "period.answers"),
        calls(folder / "calls.txt"),
        steps(folder / "job.txt"),
        outcome(folder / "outcome.json"),
        errors(folder / "job-errors.txt"),
        picture_errors(folder / "picture.txt") {}

  fs::path registry;
  fs::path database;
  fs::path period_answers;
  fs::path calls;
  fs::path steps;
  fs::path outcome;
  fs::path errors;
  fs::path picture_errors;
};

/// Why a run cannot have its output folder, or its copy of the workbook there; empty when it can.
std::string WhyInUse(const ReportRunOptions& options, const OutputFolder& folder, const OutputFiles& output) {
  if (!folder.IsOurs()) return "Another run is working in the output folder " + output.folder.string();
  if (fs::exists(output.workbook) && fs::equivalent(output.workbook, options.workbook)) {
    return "The workbook stands in the output folder " + output.folder.string() + ", where its copy would go";
  }
  RemoveLocks(output.folder);
  if (const fs::path lock = LockOf(output.workbook); fs::exists(lock)) {
    return output.workbook.string() +
           " is open in another program: close it there. Where none has it, delete " + lock.string();
  }
  return {};
}

/// The workbook comes in, logs and prints of the earlier run go.
void PrepareOutput(const ReportRunOptions& options, const OutputFiles& output) {
  fs::copy_file(options.workbook, output.workbook, fs::copy_options::overwrite_existing);
  fs::remove(output.messages);
  if (!output.log.empty()) fs::remove(output.log);
  RemovePrinted(output.folder);
}

/// Registry, host's database, drives and answers, as the variables by which the job finds them.
Variables PrepareJob(const ReportRunOptions& options, const OutputFiles& output, const JobFiles& files) {
  WriteText(files.registry, RegistryWithBook(options.book));
  // Where there is none, the host makes it.
  if (std::error_code missing; !options.database.empty())
    fs::copy_file(options.database, files.database, missing);

  Variables job = {
      {variables::kJobWorkbook, output.workbook.string()},
      {variables::kJobMacro, options.macro},
      {variables::kJobPdf, options.picture ? output.pdf.string() : ""},
      {variables::kJobPrinted, (output.folder / kPrinted).string()},
      {variables::kJobResult, files.outcome.string()},
      {variables::kJobSteps, files.steps.string()},
      {variables::kJobErrors, files.errors.string()},
      {variables::kCallLog, files.calls.string()},
      {variables::kRegistry, files.registry.string()},
      {variables::kHostDatabase, files.database.string()},
      {variables::kHostResources, fs::absolute(options.office.host_resources).string()},
  };
  // A log means that nobody sits at the screen; without one message boxes are shown there.
  if (!options.office.show || !options.answers.empty())
    job[variables::kMessageLog] = output.messages.string();
  MakeDrives(options, output.folder, job);
  if (!options.answers.empty()) job[variables::kAnswers] = fs::absolute(options.answers).string();
  if (!options.period.empty()) {
    WriteText(files.period_answers, PeriodAnswers(options.period).value());
    job[variables::kFormAnswers] = files.period_answers.string();
  } else if (!options.form_answers.empty()) {
    job[variables::kFormAnswers] = fs::absolute(options.form_answers).string();
  }
  return job;
}

/// Waits for the job's end, and stops it where it is to go no further.
void Await(const ReportRunOptions& options, RunningJob& job, Narrator& narrator, ReportResult& result) {
  const auto deadline = std::chrono::steady_clock::now() + options.timeout;
  const auto stop = [&](ReportStatus status, const std::string& why) {
    result.status = status;
    result.text = why;
    job.Stop();
  };
  while (job.IsRunning()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    narrator.GoOn();
    if (options.interrupted()) {
      stop(ReportStatus::Interrupted, "Interrupted; LibreOffice was stopped");
    } else if (std::chrono::steady_clock::now() >= deadline) {
      stop(ReportStatus::TimeLimit, "LibreOffice did not finish within " +
                                        std::to_string(options.timeout.count()) + " seconds and was stopped");
    } else if (options.memory_limit != 0 && job.Pid() && MemoryOf(*job.Pid()) > options.memory_limit) {
      stop(ReportStatus::MemoryLimit, "LibreOffice took more than " +
                                          std::to_string(options.memory_limit / kMegabyte) +
                                          " MB of memory and was stopped");
    }
  }
  job.Stop();
  narrator.GoOn();
}

/// Runs the job to its end, and tells how it ended.
ReportResult RunJob(const ReportRunOptions& options, const StartJob& start, const Variables& variables,
                    const JobFiles& files, Narrator& narrator) {
  narrator.Begin("Starting LibreOffice");
  ReportResult result;
  const std::unique_ptr<RunningJob> job = start(variables);
  Await(options, *job, narrator, result);
  if (result.status == ReportStatus::Ok && !ReadOutcome(files.outcome, result)) {
    result.status = narrator.HasBegun() ? ReportStatus::Died : ReportStatus::NoLibreOffice;
    result.text = std::string(narrator.HasBegun() ? TextOf(ReportStatus::Died)
                                                  : "LibreOffice ended without running the report") +
                  " (exit status " + std::to_string(job->ExitStatus()) + ")\n" + job->Errors();
  }
  return result;
}

/// A run without the file that its macro must leave has failed.
void RequireExpectedFile(const ReportRunOptions& options, const OutputFolder& folder,
                         const OutputFiles& output, ReportResult& result) {
  if (options.expect.empty() || folder.IsNew(options.expect)) return;
  result.status = ReportStatus::FileMissing;
  result.text =
      "The report failed: its macro did not leave " + options.expect +
      (fs::exists(output.folder / options.expect) ? "; the one that is there is of an earlier run" : "");
}

void KeepDatabase(const JobFiles& files, const OutputFiles& output) {
  std::error_code missing;
  fs::copy_file(files.database, output.folder / embedded::kDatabaseFile, fs::copy_options::overwrite_existing,
                missing);
}

void PrintFiles(const OutputFiles& output, const ReportResult& result, std::ostream& out) {
  out << "Results in " << output.folder.string() << ':' << std::endl;
  for (const ReportResult::File& file : result.files) {
    out << "  " << file.name << " (" << file.bytes << " bytes)" << std::endl;
  }
}

ReportResult Failure(ReportStatus status, std::string why) {
  ReportResult result;
  result.status = status;
  result.text = std::move(why);
  return result;
}

ReportResult Run(const ReportRunOptions& options, const StartJob& start, std::ostream& out,
                 std::ostream& err) {
  if (std::string why = WhyNoOffice(options.office); !why.empty()) {
    return Failure(ReportStatus::NoLibreOffice, std::move(why));
  }
  const OutputFiles output(options);
  OutputFolder output_folder(output.folder);
  if (std::string why = WhyInUse(options, output_folder, output); !why.empty()) {
    return Failure(ReportStatus::FolderInUse, std::move(why));
  }
  output_folder.Remember();
  PrepareOutput(options, output);

  // When LibreOffice's profile is gone again, so that its locks count as dead.
  const AtEnd remove_locks([&] { RemoveLocks(output.folder); });
  const ProfileFolder job_folder;
  const JobFiles files(job_folder.path());
  const Variables job = PrepareJob(options, output, files);

  out << "Report " << options.workbook.filename().string() << ", book " << options.book << std::endl;
  const bool has_own_log = !output.log.empty();
  Narrator narrator(files.steps, has_own_log ? output.log : files.calls, !has_own_log, output.messages, out);
  ReportResult result = RunJob(options, start, job, files, narrator);
  if (result.status == ReportStatus::Ok) RequireExpectedFile(options, output_folder, output, result);
  if (result.status == ReportStatus::Ok && options.picture) {
    narrator.Begin("Making the picture");
    MakePicture(output.pdf, files.picture_errors, err);
  }
  if (options.keep_database) KeepDatabase(files, output);
  result.steps = narrator.Steps();
  result.messages = ReadText(output.messages);
  result.files = FilesOf(output_folder, output.folder);
  if (result.status == ReportStatus::Ok) PrintFiles(output, result, out);
  return result;
}

}  // namespace

ReportResult RunReport(const ReportRunOptions& options, const StartJob& start, std::ostream& out,
                       std::ostream& err) {
  const auto begun = std::chrono::steady_clock::now();
  ReportResult result = Run(options, start, out, err);
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
  return result;
}

}  // namespace qva
