// Reading and replacing whole files, and keeping other processes away meanwhile.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/filesystem/file_descriptor.h"

namespace qva {

/// Reads a file that need not be there yet: a missing one is empty. Nothing when it cannot be read.
std::optional<std::string> ReadFileOrEmpty(const std::filesystem::path& path);

/// Writes all bytes to a descriptor; false when that fails part of the way.
bool WriteWhole(int descriptor, std::string_view bytes);

/// A new, empty file beside the one that it may replace, for its owner alone. Deleted unless it did.
class TemporaryFile {
 public:
  /// There is no file, with the reason in errno, when none can be created.
  explicit TemporaryFile(const std::filesystem::path& target);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  int get() const { return file_.get(); }
  explicit operator bool() const { return static_cast<bool>(file_); }

  /// Takes the target's place, on the disk too: what it holds first, then its name. False, with the reason in
  /// errno, leaves the target as it was.
  bool Replace();

 private:
  std::filesystem::path target_;
  std::filesystem::path path_;  ///< empty once it is gone
  FileDescriptor file_;
};

/// Replaces a file's content, or creates the file for its owner alone: readers see either the old content
/// or the new one, after a crash too. A symbolic link stays one; permissions and owner are kept.
/// False when that fails, the file is not writable for us or its owner cannot be kept; it is then unchanged.
bool ReplaceWholeFile(const std::filesystem::path& path, std::string_view content);

/// Takes the lock that the file `path` (created when missing, never deleted) stands for, among processes and
/// within this one, waiting up to `patience`. The lock is held until the descriptor goes; none when it could
/// not be had.
FileDescriptor LockFile(const std::filesystem::path& path, std::chrono::milliseconds patience);

}  // namespace qva
