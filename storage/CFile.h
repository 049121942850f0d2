// A text file of the library's own: lines, a log, backups. No public class.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/files.h"

namespace qva {

/// One text file, given by a folder and a name. It is written and read through a sequential channel (ANSI
/// code page) or, when IsUnicode is set, written through a text stream (UTF-16). The instance owns whichever
/// is open and closes it when it goes.
///
/// Errors of the platform's file operations (platform/files.h) reach the caller unless a member says
/// otherwise.
class CFile {
 public:
  CFile() = default;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  bool IsUnicode() const { return is_unicode_; }
  void SetIsUnicode(bool is_unicode) { is_unicode_ = is_unicode; }

  /// May hold a relative path.
  const std::u16string& FileName() const { return file_name_; }
  void SetFileName(std::u16string name) { file_name_ = std::move(name); }

  /// The folder; the current one when none was set.
  std::u16string Path() const;
  void SetPath(std::u16string path) { path_ = std::move(path); }

  /// The folder that the host stores under a path key; empty for the empty key and for one without a folder.
  /// Raises what the host's data access raises.
  static std::u16string PathByPathKey(std::u16string_view key);

  /// Folder and name. The folder stays in Path with the separator at its end, also when it was the current
  /// one.
  std::u16string CrFullName();
  /// Sets Path by a path key and FileName; result as for CrFullName.
  std::u16string CrFullName2(std::u16string_view key, std::u16string name);
  /// FileName without folders: what stands after its last "\" or, if it has none, its last "/".
  std::u16string GetShortFileName() const;

  /// Creates or empties the file and opens it for writing. Through a channel: true, false when no file number
  /// is free. In Unicode mode the result is inverted, which its callers rely on: false when the file was
  /// created, true when the platform gave no stream.
  bool CrFile();

  /// Opens `name` for reading or appending; the empty name becomes the full name, in the caller's variable
  /// too. True. In Unicode mode `name` is not used: the full name is opened, created when missing, as ANSI
  /// text, and the result is inverted as for CrFile.
  bool OpenFile(std::u16string& name);
  bool OpenFileForAppend(std::u16string& name);

  /// Writes a marker or an entry with the current date and time; result as for WriteStr.
  bool StartLog();
  bool EndLog();
  bool WriteStrLog(std::u16string_view text);

  /// Gives the file the name with ".bak" added, in place of an earlier one of that name, and stays with it:
  /// FileName gets ".bak", too. Closes the channel first. Unlike the full name, Path and FileName are put
  /// together without a separator here. False when FileName is empty.
  bool SaveFileAsBackup();

  /// Writes one line. What is not open is created first, and thereby emptied: a file that is to grow must
  /// have been opened for appending. True; false when no channel could be had. Raises 52 after CloseFile and
  /// after a failure to open the file, and 91 in Unicode mode when there is no stream.
  bool WriteStr(std::u16string_view text);

  /// Reads one line; false at the end of the file and when no channel was opened. Raises 52 after CloseFile.
  /// In Unicode mode nothing is ever read: false with an open stream, 91 without one.
  bool ReadStr(std::u16string& line);

  /// Whether a channel was opened; CloseFile does not change that, and a stream does not count.
  bool FileIsOpen() const { return file_number_ != 0; }
  /// Closes the channel. The file number stays.
  void CloseFile() { channel_.reset(); }

  /// A file's time of last change and its length in bytes; 0 after any error.
  static Date FileDateTimeAttr(std::u16string_view path);
  static double FileLenAttr(std::u16string_view path);

  /// Copies a file over another one whose time or length is not the given one. Errors end it silently; so a
  /// target that is missing stays so.
  static void CopyFile(std::u16string_view source, Date source_time, std::int32_t source_length,
                       std::u16string_view target);

  /// Moves a file into a folder, which is created when missing; the empty one is "BACKUP" beside the file.
  /// False for the empty path and when there is no such folder. A file whose copy cannot be made, or which
  /// cannot be deleted then, stays; the error reaches the caller.
  static bool MoveFileToBackup(std::u16string_view file, std::u16string folder);

  /// FileName with each of \ / : * ? " < > | replaced.
  std::u16string GetValidFileName(std::u16string_view replacement) const;

 private:
  bool OpenStream(StreamMode mode);
  bool OpenChannel(std::u16string& name, ChannelMode mode);
  bool WriteMarker(std::u16string_view what);
  /// The open channel. Raises 52 when the file number is of one that is closed.
  TextChannel& Channel() const;

  std::int16_t file_number_ = 0;
  std::unique_ptr<TextChannel> channel_;
  std::unique_ptr<TextStream> stream_;
  bool is_unicode_ = false;
  std::u16string file_name_;
  std::u16string path_;
};

}  // namespace qva
