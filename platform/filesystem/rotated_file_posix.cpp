#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "platform/filesystem/file_descriptor.h"
#include "platform/filesystem/rotated_file.h"

namespace qva {
namespace {

constexpr int kTries = 100;
constexpr useconds_t kPause = 2000;  // microseconds

FileDescriptor OpenToAppend(const NativePath& path) {
  // Without waiting: a pipe that nobody reads is no log.
  constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK;
  return FileDescriptor(::open(path.c_str(), kFlags, S_IRUSR | S_IWUSR));
}

bool TakeTurn(const FileDescriptor& file) {
  for (int i = 0; i < kTries; ++i) {
    if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0) return true;
    ::usleep(kPause);
  }
  return false;
}

bool IsStillNamed(const struct stat& file, const NativePath& path) {
  struct stat named {};
  return ::stat(path.c_str(), &named) == 0 && named.st_ino == file.st_ino && named.st_dev == file.st_dev;
}

}  // namespace

bool AppendRotated(const NativePath& path, const std::string& text, std::uint64_t limit) {
  const NativePath second_name = path + ".1";
  FileDescriptor file = OpenToAppend(path);
  // Another process may give the file its second name while this one waits for its turn.
  struct stat status {};
  while (file && TakeTurn(file) && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode)) {
    const bool is_named = IsStillNamed(status, path);
    const bool is_full =
        status.st_size > 0 && static_cast<std::uint64_t>(status.st_size) + text.size() > limit;
    if (is_named && (!is_full || std::rename(path.c_str(), second_name.c_str()) != 0)) break;
    file = {};  // its lock goes before the next one is opened
    file = OpenToAppend(path);
  }
  return file && ::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

std::uint32_t ProcessId() {
  return static_cast<std::uint32_t>(::getpid());
}

}  // namespace qva
