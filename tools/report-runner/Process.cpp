#include "tools/report-runner/Process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace qva {

std::optional<std::filesystem::path> FindProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::filesystem::path program = std::filesystem::path(folder) / name;
    if (access(program.c_str(), X_OK) == 0) return program;
  }
  return std::nullopt;
}

namespace {

/// As the system takes a list of texts.
std::vector<char*> PointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

/// Makes a file one of the three that a program starts with.
void Redirect(const FileDescriptor& file, int standard) {
  // Where that one was closed, the file may have its number already.
  if (dup2(file.get(), standard) == standard) fcntl(standard, F_SETFD, 0);
}

/// Our environment, with these variables.
std::vector<std::string> EnvironmentWith(std::map<std::string, std::string> variables) {
  for (char** own = environ; *own; ++own) {
    const std::string variable = *own;
    const std::size_t equals = variable.find('=');
    variables.emplace(variable.substr(0, equals), equals == variable.npos ? "" : variable.substr(equals + 1));
  }
  std::vector<std::string> environment;
  environment.reserve(variables.size());
  for (const auto& [name, value] : variables) environment.emplace_back(name).append("=").append(value);
  return environment;
}

}  // namespace

Process::Process(const std::vector<std::string>& arguments,
                 const std::map<std::string, std::string>& environment, const std::filesystem::path& errors) {
  // All before the process is copied: in the copy, what another thread was just at stays as it is.
  const std::vector<std::string> variables = EnvironmentWith(environment);
  const std::vector<char*> pointers = PointersTo(arguments), variable_pointers = PointersTo(variables);
  pid_ = fork();
  if (pid_ < 0) throw std::runtime_error("cannot start " + arguments[0]);
  if (pid_ == 0) {
    setpgid(0, 0);
    const FileDescriptor null(open("/dev/null", O_RDONLY | O_CLOEXEC));
    Redirect(null, STDIN_FILENO);
    const FileDescriptor error_file(open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    Redirect(error_file, STDERR_FILENO);
    execvpe(pointers[0], pointers.data(), variable_pointers.data());
    _exit(127);
  }
  setpgid(pid_, pid_);
  StartGuard();
}

void Process::StartGuard() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  const FileDescriptor guards_end(ends[0]);
  our_end_ = FileDescriptor(ends[1]);
  guard_ = fork();
  if (guard_ == 0) {
    setpgid(0, 0);  // what interrupts us leaves it alone
    our_end_ = {};
    char none;
    while (read(guards_end.get(), &none, 1) < 0 && errno == EINTR) continue;
    kill(-pid_, SIGKILL);
    _exit(0);
  }
}

void Process::StopGuard() {
  if (guard_ > 0) {
    kill(guard_, SIGKILL);
    waitpid(guard_, nullptr, 0);
    guard_ = -1;
  }
  our_end_ = {};
}

bool Process::IsRunning() {
  if (ended_) return false;
  int status = 0;
  if (waitpid(pid_, &status, WNOHANG) != pid_) return true;
  ended_ = true;
  exit_status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return false;
}

int Process::Wait(std::chrono::milliseconds limit) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (IsRunning() && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  Kill();
  return exit_status_;
}

void Process::Kill() {
  // Whatever the program started is in its group; nothing of it may go on.
  kill(-pid_, SIGKILL);
  StopGuard();
  if (ended_) return;
  int status = 0;
  waitpid(pid_, &status, 0);
  ended_ = true;
  exit_status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace qva
