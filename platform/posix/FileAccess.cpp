#include "platform/posix/FileAccess.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "platform/filesystem/temporary_name.h"

namespace qva {
namespace {

/// Gives a new file the permissions and the owner of the one that it is to replace, if there is one.
bool TakeOverAttributes(int descriptor, const std::filesystem::path& path) {
  struct stat old {};
  if (::stat(path.c_str(), &old) != 0) return errno == ENOENT;
  struct stat fresh {};
  if (::access(path.c_str(), W_OK) != 0 || ::fstat(descriptor, &fresh) != 0) return false;
  const bool same_owner = old.st_uid == fresh.st_uid && old.st_gid == fresh.st_gid;
  if (!same_owner && ::fchown(descriptor, old.st_uid, old.st_gid) != 0) return false;
  return ::fchmod(descriptor, old.st_mode & 07777) == 0;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::filesystem::path& target) : target_(target) {
  for (int i = 0; i < kTemporaryNameTries; ++i) {
    path_ = target_;
    path_.replace_filename(TemporaryName(target_.filename().string().size()));
    file_ = FileDescriptor(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (file_ || errno != EEXIST) break;
  }
  if (!file_) path_.clear();
}

TemporaryFile::~TemporaryFile() {
  if (!path_.empty()) ::unlink(path_.c_str());
}

bool TemporaryFile::Replace() {
  if (::fsync(file_.get()) != 0 || ::rename(path_.c_str(), target_.c_str()) != 0) return false;
  path_.clear();
  // The rename itself reaches the disk with its folder. Should that fail, the new content stands all the
  // same.
  const std::filesystem::path folder_path = target_.has_parent_path() ? target_.parent_path() : ".";
  const FileDescriptor folder(::open(folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) ::fsync(folder.get());
  return true;
}

bool WriteWhole(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

std::optional<std::string> ReadFileOrEmpty(const std::filesystem::path& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return errno == ENOENT ? std::optional(std::string()) : std::nullopt;
  std::string content;
  char buffer[4096];
  for (;;) {
    const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) return content;
    content.append(buffer, static_cast<std::size_t>(count));
  }
}

bool ReplaceWholeFile(const std::filesystem::path& path, std::string_view content) {
  std::error_code error;
  std::filesystem::path target = std::filesystem::canonical(path, error);
  if (error) target = path;

  TemporaryFile file(target);
  return file && WriteWhole(file.get(), content) && TakeOverAttributes(file.get(), target) && file.Replace();
}

FileDescriptor LockFile(const std::filesystem::path& path, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds kPause(10);
  FileDescriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!file) return {};
  const auto end = std::chrono::steady_clock::now() + patience;
  while (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return {};
    if (std::chrono::steady_clock::now() >= end) return {};
    std::this_thread::sleep_for(kPause);
  }
  return file;
}

}  // namespace qva
