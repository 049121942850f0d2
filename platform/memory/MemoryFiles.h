// Files that live as long as their object: folders, contents and times of change, and failures on demand.
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

  // Failures. A call that fails changes nothing.

  /// What can fail: the operations of the same names; Write and Read are those of an open channel or stream.
  enum class Operation {
    OpenChannel,
    CreateTextStream,
    OpenTextStream,
    Write,
    Read,
    Delete,
    Rename,
    Copy,
    CreateFolder,
    LastModified,
    Length
  };
  /// From now on the operation raises the error; Allow lets it work again.
  void Refuse(Operation operation, ErrorNumber error) { refusals_[operation] = error; }
  void Allow(Operation operation) { refusals_.erase(operation); }
  /// Lets the call number `call` from now on raise the error, the first being 1; 0 lets all calls through.
  void FailAt(long call, ErrorNumber error);
  /// Calls of operations that can fail since the start or the last FailAt.
  long calls() const { return calls_; }
  /// Whether CreateTextStream and OpenTextStream do what they do without giving a stream.
  void KeepStreams(bool keep) { keeps_streams_ = keep; }

  // The contents, for preparing a test and looking at what it left. No refusal applies and nothing is
  // counted.

  /// Stores a file, with the folders above it; without a time it is changed now.
  void SetFile(std::u16string_view path, std::string content, std::optional<Date> modified = {});
  /// Stores a folder, with those above it; also a drive ("D:\") or a share.
  void SetFolder(std::u16string_view path);
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
  void Start(Operation operation) const;

  const Locale& locale_;
  const Clock& clock_;
  WindowsPath current_{.root = u"C:"};
  std::map<std::u16string, std::shared_ptr<Node>> nodes_;  // by path in lower case
  OpenFiles open_;
  bool keeps_streams_ = false;
  std::map<Operation, ErrorNumber> refusals_;
  mutable long calls_ = 0;
  long failing_call_ = 0;
  ErrorNumber failure_ = kDeviceError;
};

}  // namespace qva
