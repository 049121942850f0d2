// The folder that a run leaves its results in.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "platform/filesystem/file_descriptor.h"

namespace qva {

/// Whether a path is that of a file in a folder that it is relative to.
bool IsInFolder(const std::filesystem::path& path);

/// Removes the lock files that dead LibreOffices of ours left anywhere below a folder. LibreOffice itself
/// would take such a file's document for one that somebody works on.
void RemoveDeadLocks(const std::filesystem::path& folder);

/// A private folder for the profile of a LibreOffice, which goes with its object. As long as we live it is
/// locked, so that what LibreOffice writes about its profile shows whether it is alive.
class ProfileFolder {
 public:
  /// Raises std::runtime_error when none can be made.
  ProfileFolder();
  ~ProfileFolder();
  ProfileFolder(const ProfileFolder&) = delete;
  ProfileFolder& operator=(const ProfileFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
  FileDescriptor lock_;
};

/// An output folder, this run's alone as long as the object lives.
class OutputFolder {
 public:
  /// Creates the folder where it is missing. Raises std::filesystem::filesystem_error when that fails.
  explicit OutputFolder(const std::filesystem::path& path);
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;

  /// False while another run has the folder.
  bool IsOurs() const { return is_ours_; }

  /// Takes down what the folder holds, so that the run's own files are told from it.
  void Remember();
  /// The files below the folder that came or changed since then, with their lengths, by name.
  std::map<std::string, std::uintmax_t> NewFiles() const;
  /// Whether the file of a path in the folder is one of them.
  bool IsNew(const std::filesystem::path& file) const;
  /// Whether files came, changed or went since then, but for one.
  bool IsChanged(const std::filesystem::path& except) const;

 private:
  /// What tells a file from one that took its place, or that was written anew.
  struct State {
    ino_t file;
    std::int64_t seconds;
    std::int64_t nanoseconds;
    friend bool operator==(const State&, const State&) = default;
  };
  static std::optional<State> StateOf(const std::filesystem::path& file);

  std::filesystem::path path_;
  FileDescriptor lock_;
  bool is_ours_ = true;
  std::map<std::filesystem::path, State> before_;
};

}  // namespace qva
