// Text files and the platform's file operations.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace qva {

/// How a file channel is opened.
enum class ChannelMode {
  Input,   ///< read from the beginning; the file must be there
  Output,  ///< written anew; created, or emptied
  Append   ///< written at its end; created when missing
};

/// How a text stream is opened: the numbers of Scripting.FileSystemObject.
enum class StreamMode : std::int32_t { ForReading = 1, ForAppending = 8 };

/// The file numbers of sequential channels run from 1 to this one; a platform has as many.
inline constexpr std::int16_t kLastFileNumber = 255;

/// An open sequential channel: lines in the ANSI code page, each ended by CR LF. Its owner closes it by
/// dropping it, which gives its number back and does not fail: whatever was printed is in the file already.
class TextChannel {
 public:
  virtual ~TextChannel() = default;

  /// Adds one line; a character that the code page lacks becomes "?". Raises 54 (Bad file mode) on a channel
  /// for input, 61 (Disk full) or 57 (Device I/O error) when it cannot be written; nothing of the line is
  /// left in the file then.
  virtual void PrintLine(std::u16string_view text) = 0;
  /// Whether all has been read; always true on a channel for output or appending. Raises 57.
  virtual bool AtEnd() = 0;
  /// The next line without its end, which is CR LF or CR alone; the last line needs none. Raises 62 (Input
  /// past end of file), 54 on a channel for output or appending, 57.
  virtual std::u16string ReadLine() = 0;
};

/// An open text stream as Scripting.FileSystemObject gives it. Its owner closes it by dropping it, which does
/// not fail: whatever was written is in the file already.
class TextStream {
 public:
  virtual ~TextStream() = default;

  /// Adds one line and CR LF, in the stream's encoding. Raises 54 (Bad file mode) on a stream for reading,
  /// and what else the platform's stream raises: mostly 61 (Disk full), and 5 (Invalid procedure call) for a
  /// character that an ANSI stream's code page lacks. Nothing of the line is left in the file then.
  virtual void WriteLine(std::u16string_view text) = 0;
};

/// Paths are Windows': "C:\folder\file", "\\server\share\file", or relative to the current folder. "/" counts
/// as "\". Names ignore letter case. A file or folder is meant by its path alone: "*" and "?" stand for
/// nothing but in Find.
///
/// All operations raise AutomationError with the platform's trappable numbers: 53 (File not found), 76 (Path
/// not found) for a missing folder or drive and for the empty path, 52 (Bad file name or number) for a name
/// that cannot be, 55 (File already open), 70 (Permission denied) for a file that somebody else has open, 75
/// (Path/File access error) for a folder in place of a file and for whatever else access is refused to, 61
/// (Disk full), 67 (Too many files) when the process may open no more, 57 (Device I/O error). An operation
/// that raises leaves everything as it was, unless it says otherwise. Channels and streams are the caller's;
/// they must not outlive the service.
class Files {
 public:
  virtual ~Files() = default;

  /// The lowest number that no open channel has; 0 when all are taken. Does not raise.
  virtual std::int16_t FreeNumber() const = 0;

  /// Opens a channel under a free number; never null. Raises 52 for a number out of range and 55 for one that
  /// is taken. While a file is open for output or appending, opening it in any mode raises 55, and so does
  /// opening it for these while it is open for input. A file that a stream has open raises 70.
  virtual std::unique_ptr<TextChannel> OpenChannel(std::int16_t number, std::u16string_view path,
                                                   ChannelMode mode) = 0;

  /// Creates or empties a file and opens it for writing in UTF-16 with its mark (FF FE). Null when the
  /// platform gives no stream without calling it an error. Raises 70 for a file that a channel or another
  /// stream has open. Where the mark cannot be written the file is left empty.
  virtual std::unique_ptr<TextStream> CreateTextStream(std::u16string_view path) = 0;
  /// Opens a file, created when missing, as an ANSI text stream, whatever its content is. The result as
  /// above. Raises 70 for a file that a channel or another stream has open, unless both only read.
  virtual std::unique_ptr<TextStream> OpenTextStream(std::u16string_view path, StreamMode mode) = 0;

  /// The folder that relative paths start from. Without "\" at its end but for a drive's root, "C:\". Raises
  /// 76 where the system has none any more, and so does then whatever is given a relative path.
  virtual std::u16string CurrentFolder() const = 0;

  /// Deletes a file. Raises 55 for one that a channel has open, 70 for one that a stream has.
  virtual void Delete(std::u16string_view path) = 0;
  /// Gives a file another path on the same drive. Raises 58 (File already exists) when there is a file or
  /// folder of that path, 74 for another drive, 55 for a file that a channel has open, 70 for one that a
  /// stream has.
  virtual void Rename(std::u16string_view from, std::u16string_view to) = 0;
  /// Copies a file with its time of last change, over an existing one. Raises 70 when a channel or stream
  /// has either open, and for a file onto itself. The target holds its old content or the whole new one at
  /// any time.
  virtual void Copy(std::u16string_view from, std::u16string_view to) = 0;
  /// Creates a folder; the path may end in "\". Raises 76 when the folder above is missing, 75 when a folder
  /// or file of that path is there.
  virtual void CreateFolder(std::u16string_view path) = 0;

  /// Whether there is a folder of that path, which may end in "\". Does not raise.
  virtual bool FolderExists(std::u16string_view path) const = 0;
  /// The names of the files of a folder, not of those below it, that fit a name with "*" and "?" (FitsPattern
  /// in platform/text.h). In no certain order; nothing when there is no such folder. Does not raise.
  virtual std::vector<std::u16string> Find(std::u16string_view folder, std::u16string_view name) const = 0;

  /// When a file or folder was changed last, in local time to the second. Raises 53 when neither is there.
  virtual Date LastModified(std::u16string_view path) const = 0;
  /// A file's length in bytes. Raises 53 when it is not there, 75 for a folder.
  virtual double Length(std::u16string_view path) const = 0;
};

}  // namespace qva
