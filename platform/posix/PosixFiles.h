// Files on Linux: Windows' paths, drives and formats over folders of the system.
#pragma once

#include <filesystem>

#include "platform/files.h"
#include "platform/filesystem/sequential_channel.h"
#include "platform/filesystem/windows_path.h"
#include "platform/locale.h"

namespace qva {

/// The folder of the user's drives: the environment variable QVA_VARNHOLT_DRIVES, else "qva-varnholt/drives"
/// under $XDG_DATA_HOME or ~/.local/share. Empty when the user has no home folder; there are no drives then.
std::filesystem::path UserDrivesPath();

/// A drive is a folder, or a symbolic link to one, that is named after its letter: "C:\Ataskaitos\x.xls" is
/// <drives>/C/Ataskaitos/x.xls. Drive C is made when a path on it is first used; others are there when the
/// user makes them. "\\server\share" is <drives>/UNC/server/share, which the user makes, too.
///
/// A path that starts with a single "/" is one of the system itself ("/srv/archive\2024\x.xls"); so is the
/// current folder when it does not lie on such a drive.
///
/// A name that is not there as written stands for one that differs only in letter case; of several such, the
/// first in the order of their characters.
class PosixFiles : public Files {
 public:
  PosixFiles(std::filesystem::path drives, const Locale& locale);

  std::int16_t FreeNumber() const override;
  std::unique_ptr<TextChannel> OpenChannel(std::int16_t number, std::u16string_view path,
                                           ChannelMode mode) override;
  std::unique_ptr<TextStream> CreateTextStream(std::u16string_view path) override;
  std::unique_ptr<TextStream> OpenTextStream(std::u16string_view path, StreamMode mode) override;
  std::u16string CurrentFolder() const override;
  void Delete(std::u16string_view path) override;
  void Rename(std::u16string_view from, std::u16string_view to) override;
  void Copy(std::u16string_view from, std::u16string_view to) override;
  void CreateFolder(std::u16string_view path) override;
  bool FolderExists(std::u16string_view path) const override;
  std::vector<std::u16string> Find(std::u16string_view folder, std::u16string_view name) const override;
  Date LastModified(std::u16string_view path) const override;
  double Length(std::u16string_view path) const override;

  /// Where the system has a file or folder, whether it is there or not. Raises 52 and 76 as Files' operations
  /// do.
  std::filesystem::path SystemPath(std::u16string_view path) const;
  /// The other way round: the path on its drive of what the system has at a whole path; off the drives the
  /// system's path itself.
  std::u16string DrivePath(const std::filesystem::path& path) const;

 private:
  WindowsPath Current() const;
  WindowsPath OnDrive(const std::filesystem::path& path) const;
  WindowsPath Parse(std::u16string_view path) const;
  std::filesystem::path RootPath(const std::u16string& root) const;
  std::filesystem::path Locate(const WindowsPath& path) const;
  /// SystemPath of what is to be a file; a path that can only be a folder's raises 75 or 76.
  std::filesystem::path FilePath(std::u16string_view path) const;

  std::filesystem::path drives_;
  const Locale& locale_;
  OpenFiles open_;
};

}  // namespace qva
