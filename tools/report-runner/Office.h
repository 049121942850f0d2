// LibreOffice with our component and a profile of its own: for one job, or warm for one job after the other.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/filesystem/file_descriptor.h"
#include "tools/report-runner/OutputFolder.h"
#include "tools/report-runner/Process.h"

namespace qva {

/// A job as LibreOffice takes it: environment variables (server/calc/ReportJob.h, docs/installation.md).
using Variables = std::map<std::string, std::string>;

/// The component's file in the build folder.
inline constexpr char kComponentFile[] = "libqva_calc.so";

struct OfficeOptions {
  std::filesystem::path build_folder;    ///< of kComponentFile and of the embedded host's module
  std::filesystem::path host_resources;  ///< the embedded host's (host/HostOptions.h)
  bool show = false;                     ///< on the user's screen
};

/// A job that LibreOffice runs. Nothing of it goes on when its object is gone.
class RunningJob {
 public:
  RunningJob() = default;
  virtual ~RunningJob() = default;
  RunningJob(const RunningJob&) = delete;
  RunningJob& operator=(const RunningJob&) = delete;

  virtual bool IsRunning() = 0;
  virtual void Stop() = 0;
  /// After the end, as Process::ExitStatus.
  virtual int ExitStatus() const = 0;
  /// The process of the job; nothing while there is none.
  virtual std::optional<pid_t> Pid() const = 0;
  /// What LibreOffice wrote to its error output.
  virtual std::string Errors() const = 0;
};

using StartJob = std::function<std::unique_ptr<RunningJob>(const Variables& job)>;

/// Why LibreOffice cannot be started, or an empty text.
std::string WhyNoOffice(const OfficeOptions& options);

/// Starts a LibreOffice for each job, which ends with it.
StartJob OwnOffices(const OfficeOptions& options);

/// A LibreOffice that has started, loaded Calc, Basic and the PDF export by a first workbook, and then waits
/// for jobs. Each job runs in a copy of its process (fork), made as the job comes and gone with it, so that
/// no job sees anything of another one. One job at a time.
class WarmOffice {
 public:
  /// Starts it, and does not wait. Raises std::runtime_error when its folder cannot be made.
  explicit WarmOffice(const OfficeOptions& options);

  /// The job runs as soon as LibreOffice is ready. The object must be gone before the next one is started.
  std::unique_ptr<RunningJob> Start(const Variables& job);

  int started_jobs() const { return started_jobs_; }
  /// Whether it can take another job: it lives, and no job changed its profile, as one does that stores a
  /// macro among the user's own.
  bool IsGoodForMore();
  /// The embedded host's database as it is at first, which no job has seen; there is none before it is ready.
  std::filesystem::path Database() const;
  /// Bytes of memory that it has; 0 before it is ready.
  std::uintmax_t Memory() const;

 private:
  class Job;

  /// Takes what LibreOffice has said since the last call.
  void Listen();

  ProfileFolder folder_;
  OutputFolder profile_;
  FileDescriptor requests_;
  FileDescriptor replies_;
  std::unique_ptr<Process> process_;  // goes before its profile and its pipes
  std::string heard_;
  std::optional<pid_t> office_;    ///< from the time when it is ready
  std::optional<pid_t> job_;       ///< that runs
  std::optional<int> job_status_;  ///< of the one that ended
  int started_jobs_ = 0;
};

/// Bytes of memory that a process has; 0 when there is none.
std::uintmax_t MemoryOf(pid_t process);

}  // namespace qva
