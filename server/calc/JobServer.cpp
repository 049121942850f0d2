#include "server/calc/JobServer.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

#include "platform/filesystem/file_descriptor.h"
#include "platform/module.h"
#include "platform/variables.h"
#include "server/calc/ComponentFolder.h"
#include "server/calc/job_protocol.h"

namespace qva::calc {
namespace {

/// LibreOffice's lock of its main thread, which is free as long as the object lives. The system writes the
/// number of the thread that has a lock of this kind into it, and in the copy of a process the thread has
/// another one: it could never have the lock again, nor give it back. LibreOffice has no interface of UNO's
/// for that, but has had these two functions of the class Application all along.
class WithoutLock {
 public:
  WithoutLock() : count_(Function<std::uint32_t()>("_ZN11Application17ReleaseSolarMutexEv")()) {}
  ~WithoutLock() { Function<void(std::uint32_t)>("_ZN11Application17AcquireSolarMutexEj")(count_); }
  WithoutLock(const WithoutLock&) = delete;
  WithoutLock& operator=(const WithoutLock&) = delete;

  static bool IsPossible() {
    return Function<void()>("_ZN11Application17ReleaseSolarMutexEv") &&
           Function<void()>("_ZN11Application17AcquireSolarMutexEj");
  }

 private:
  template <class Type>
  static Type* Function(const char* name) {
    return reinterpret_cast<Type*>(dlsym(RTLD_DEFAULT, name));
  }

  std::uint32_t count_;
};

/// A copy of this process; its number, and 0 in the copy.
pid_t CopyProcess() {
  const WithoutLock unlocked;
  return fork();
}

/// Loads the host's module and lets it do what it can do for all jobs.
void PrepareHost() {
  const std::filesystem::path path = ComponentFolder() / QVA_HOST_MODULE_NAME;
  void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!module) return;  // the jobs that need it tell why
  if (const auto prepare = reinterpret_cast<PrepareModule>(dlsym(module, kPrepareModuleName))) prepare();
}

/// A job's variables, as they came.
using Request = std::vector<std::string>;

class Requests {
 public:
  explicit Requests(FileDescriptor pipe) : pipe_(std::move(pipe)) {}

  /// The next one; nothing at the pipe's end.
  std::optional<Request> Next() {
    Request request;
    for (;;) {
      for (std::size_t end; (end = read_.find('\0')) != read_.npos; read_.erase(0, end + 1)) {
        if (end == 0) {
          read_.erase(0, 1);
          return request;
        }
        request.push_back(read_.substr(0, end));
      }
      std::array<char, 4096> bytes{};
      const ssize_t count = read(pipe_.get(), bytes.data(), bytes.size());
      if (count > 0) {
        read_.append(bytes.data(), static_cast<std::size_t>(count));
      } else if (count == 0 || errno != EINTR) {
        return std::nullopt;
      }
    }
  }

 private:
  FileDescriptor pipe_;
  std::string read_;
};

void Tell(const FileDescriptor& pipe, const char* what, int number) {
  const std::string reply = std::string(what) + ' ' + std::to_string(number) + '\n';
  // Where nobody listens any more, the requests end, too.
  [[maybe_unused]] const ssize_t written = write(pipe.get(), reply.data(), reply.size());
}

int WaitFor(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return EXIT_FAILURE;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// What the copy of the process does before its job.
void BecomeJob(const Request& request, pid_t server) {
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != server) std::_Exit(EXIT_FAILURE);  // it died before we said so
  for (const std::string& variable : request) {
    const std::size_t equals = variable.find('=');
    setenv(variable.substr(0, equals).c_str(), variable.c_str() + equals + 1, 1);
  }
  if (const char* path = std::getenv(variables::kJobErrors)) {
    const FileDescriptor errors(open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (errors) dup2(errors.get(), STDERR_FILENO);
  }
}

}  // namespace

bool ServeJobs(const std::string& requests, const std::string& replies) {
  Requests all(FileDescriptor(open(requests.c_str(), O_RDONLY | O_CLOEXEC)));
  const FileDescriptor out(open(replies.c_str(), O_WRONLY | O_CLOEXEC));
  const pid_t server = getpid();
  if (!WithoutLock::IsPossible()) return false;
  PrepareHost();
  Tell(out, kJobsReady, server);
  while (const std::optional<Request> request = all.Next()) {
    const pid_t job = CopyProcess();
    if (job == 0) {
      BecomeJob(*request, server);
      return true;
    }
    if (job < 0) {
      Tell(out, kJobEnded, EXIT_FAILURE);
      continue;
    }
    setpgid(job, job);
    Tell(out, kJobStarted, job);
    const int status = WaitFor(job);
    kill(-job, SIGKILL);
    Tell(out, kJobEnded, status);
  }
  return false;
}

}  // namespace qva::calc
