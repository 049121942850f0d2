// Files on Windows.
#pragma once

#include "platform/files.h"
#include "platform/filesystem/sequential_channel.h"
#include "platform/locale.h"
#include "platform/object_factory.h"

namespace qva::windows {

/// Channels and file operations are Windows' own, with paths in Unicode; text streams are those of the
/// automation object Scripting.FileSystemObject, which raises 429 where it is not installed. While a channel
/// writes to a file others may read it, and nothing else. Paths may be as long as Windows takes them without
/// a prefix.
class WindowsFiles : public Files {
 public:
  /// Borrows both. Channels and streams must not outlive them.
  WindowsFiles(ObjectFactory& factory, const Locale& locale) : factory_(factory), locale_(locale) {}

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

 private:
  ObjectFactory& factory_;
  const Locale& locale_;
  OpenFiles open_;
};

}  // namespace qva::windows
