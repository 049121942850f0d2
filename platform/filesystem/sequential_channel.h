// Sequential channels over the bytes of a file, and which files are open. What the adapters of Files have in
// common.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/locale.h"

namespace qva {

/// The bytes of an open file. Its owner closes it by dropping it.
class ByteFile {
 public:
  virtual ~ByteFile() = default;

  /// Reads on. Result: the number of bytes that were put into the buffer, 0 at the end. Raises 57.
  virtual std::size_t Read(std::span<char> buffer) = 0;
  /// Adds bytes at the end of the file: all of them or, raising 61 or 57, none.
  virtual void Append(std::string_view bytes) = 0;
};

/// The files that channels and streams have open. They are told apart by their whole paths in any letter
/// case.
class OpenFiles {
 public:
  /// See Files::FreeNumber.
  std::int16_t FreeNumber() const;

  // To be asked before a file is touched. Each raises what Files says of it.

  /// For opening a channel.
  void RequireChannel(std::int16_t number, std::u16string_view file, ChannelMode mode) const;
  /// For opening a stream.
  void RequireStream(std::u16string_view file, bool is_for_reading) const;
  /// For deleting and renaming.
  void RequireClosed(std::u16string_view file) const;
  /// For copying.
  void RequireCopyable(std::u16string_view file) const;

  /// A channel over a file that was opened for this mode. The file counts as open until the channel is
  /// dropped. The locale must outlive it.
  std::unique_ptr<TextChannel> OpenChannel(std::int16_t number, std::u16string_view file, ChannelMode mode,
                                           std::unique_ptr<ByteFile> bytes, const Locale& locale);
  /// The bytes of a file that was opened for a stream. The file counts as open until they are dropped.
  std::unique_ptr<ByteFile> OpenStream(std::u16string_view file, bool is_for_reading,
                                       std::unique_ptr<ByteFile> bytes);
  /// For a stream whose bytes are not ours: its file counts as open until the result is dropped.
  std::shared_ptr<const void> MarkStream(std::u16string_view file, bool is_for_reading);

 private:
  struct Entry {
    std::int16_t number = 0;  ///< of a channel; 0 is a stream
    std::u16string file;
    bool is_for_reading = false;
  };
  class MarkedFile;

  std::shared_ptr<const void> Mark(Entry entry);

  /// Shared with the open files, which may outlive this.
  std::shared_ptr<std::list<Entry>> open_ = std::make_shared<std::list<Entry>>();
};

}  // namespace qva
