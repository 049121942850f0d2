// Files that live as long as their object: folders, contents and times of change.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/filesystem/sequential_channel.h"
#include "platform/filesystem/windows_path.h"
#include "platform/locale.h"

namespace qva {

/// Keeps every promise of Files. At first there are the drive C: and nothing on it. Channels and streams must
/// not outlive the object.
class MemoryFiles : public Files {
 public:
  MemoryFiles(const Locale& locale, const Clock& clock);

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

  // The contents, for preparing a test and looking at what it left.

  /// Stores a file, with the folders above it; without a time it is changed now.
  void SetFile(std::u16string_view path, std::string content, std::optional<Date> modified = {});
  /// Stores a folder, with those above it; also a drive ("D:\") or a share.
  void SetFolder(std::u16string_view path);
  /// Takes away an empty folder.
  void RemoveFolder(std::u16string_view path);
  /// A file's bytes; nothing when there is no such file.
  std::optional<std::string> Content(std::u16string_view path) const;
  /// Makes an existing folder the one that relative paths start from.
  void SetCurrentFolder(std::u16string_view path);

 private:
  struct Node {
    std::u16string path;  ///< in the spelling of its creation
    bool is_folder = false;
    std::string content;
    Date modified;
  };
  class OpenNode;

  static std::u16string KeyOf(const WindowsPath& path);
  WindowsPath Parse(std::u16string_view path) const;
  Node* Find(const WindowsPath& path) const;
  void RequireParent(const WindowsPath& path) const;
  /// The file of a path. Raises 53, 75 and 76.
  Node& FileAt(const WindowsPath& path) const;
  /// The file of a path, created when missing. Raises 75 and 76.
  Node& FileForWriting(const WindowsPath& path);
  void RequireNoFolder(const WindowsPath& path) const;

  const Locale& locale_;
  const Clock& clock_;
  WindowsPath current_{.root = u"C:"};
  std::map<std::u16string, std::shared_ptr<Node>> nodes_;  // by path in lower case
  OpenFiles open_;
};

}  // namespace qva
