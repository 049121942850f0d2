// A child process that never outlives its object.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/filesystem/file_descriptor.h"

namespace qva {

/// The program of a name on the search path; nothing when there is none.
std::optional<std::filesystem::path> FindProgram(const std::string& name);

/// A program that was started with its own process group, standard input closed, its output going where
/// ours goes. The destructor stops it, with everything that it started; where we are killed, a guard
/// process does.
class Process {
 public:
  /// Starts `arguments[0]`, looked up on the search path, with variables added to our environment, and its
  /// error output going to the file `errors`. A program that cannot be started ends with status 127.
  Process(const std::vector<std::string>& arguments, const std::map<std::string, std::string>& environment,
          const std::filesystem::path& errors);
  ~Process() { Kill(); }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  bool IsRunning();
  /// Waits for the end, at most so long, and stops the process then. Result: its exit status.
  int Wait(std::chrono::milliseconds limit);
  void Kill();
  pid_t Pid() const { return pid_; }
  /// After the end: the exit status, 128 and the signal's number for a program that a signal ended.
  int ExitStatus() const { return exit_status_; }

 private:
  /// The guard waits for the end of a pipe that we alone hold open, which comes however we end.
  void StartGuard();
  void StopGuard();

  pid_t pid_ = -1;
  bool ended_ = false;
  int exit_status_ = 127;
  pid_t guard_ = -1;
  FileDescriptor our_end_;  ///< of the guard's pipe
};

}  // namespace qva
