#include "platform/memory/MemoryFiles.h"

#include <algorithm>

#include "platform/filesystem/encoded_text_stream.h"
#include "platform/text.h"

namespace qva {
namespace {

WindowsPath ParentOf(WindowsPath path) {
  path.names.pop_back();
  return path;
}

}  // namespace

/// A file that a channel or stream has open.
class MemoryFiles::OpenNode : public ByteFile {
 public:
  OpenNode(const Clock& clock, std::shared_ptr<Node> node) : clock_(clock), node_(std::move(node)) {}

  std::size_t Read(std::span<char> buffer) override {
    const std::size_t count = std::min(buffer.size(), node_->content.size() - position_);
    std::copy_n(node_->content.data() + position_, count, buffer.data());
    position_ += count;
    return count;
  }

  void Append(std::string_view bytes) override {
    node_->content += bytes;
    node_->modified = clock_.Now();
  }

 private:
  const Clock& clock_;
  std::shared_ptr<Node> node_;
  std::size_t position_ = 0;
};

MemoryFiles::MemoryFiles(const Locale& locale, const Clock& clock) : locale_(locale), clock_(clock) {
  SetFolder(u"C:\\");
}

std::u16string MemoryFiles::KeyOf(const WindowsPath& path) {
  return ToLower(path.Text());
}

WindowsPath MemoryFiles::Parse(std::u16string_view path) const {
  return ParseWindowsPath(path, current_);
}

MemoryFiles::Node* MemoryFiles::Find(const WindowsPath& path) const {
  const auto found = nodes_.find(KeyOf(path));
  return found == nodes_.end() ? nullptr : found->second.get();
}

void MemoryFiles::RequireParent(const WindowsPath& path) const {
  if (path.names.empty()) throw AutomationError(kPathNotFound);
  const Node* parent = Find(ParentOf(path));
  if (!parent || !parent->is_folder) throw AutomationError(kPathNotFound);
}

void MemoryFiles::RequireNoFolder(const WindowsPath& path) const {
  const Node* node = Find(path);
  if (node && node->is_folder) throw AutomationError(kPathFileAccess);
  if (path.ends_in_separator) throw AutomationError(kPathNotFound);
}

MemoryFiles::Node& MemoryFiles::FileAt(const WindowsPath& path) const {
  RequireNoFolder(path);
  RequireParent(path);
  Node* node = Find(path);
  if (!node) throw AutomationError(kFileNotFound);
  return *node;
}

MemoryFiles::Node& MemoryFiles::FileForWriting(const WindowsPath& path) {
  RequireNoFolder(path);
  RequireParent(path);
  std::shared_ptr<Node>& node = nodes_[KeyOf(path)];
  if (!node) node = std::make_shared<Node>(Node{.path = path.Text(), .modified = clock_.Now()});
  return *node;
}

std::int16_t MemoryFiles::FreeNumber() const {
  return open_.FreeNumber();
}

std::unique_ptr<TextChannel> MemoryFiles::OpenChannel(std::int16_t number, std::u16string_view path,
                                                      ChannelMode mode) {
  const WindowsPath whole = Parse(path);
  open_.RequireChannel(number, KeyOf(whole), mode);
  Node& node = mode == ChannelMode::Input ? FileAt(whole) : FileForWriting(whole);
  if (mode == ChannelMode::Output) {
    node.content.clear();
    node.modified = clock_.Now();
  }
  return open_.OpenChannel(number, KeyOf(whole), mode,
                           std::make_unique<OpenNode>(clock_, nodes_[KeyOf(whole)]), locale_);
}

std::unique_ptr<TextStream> MemoryFiles::CreateTextStream(std::u16string_view path) {
  const WindowsPath whole = Parse(path);
  open_.RequireStream(KeyOf(whole), false);
  Node& node = FileForWriting(whole);
  node.content.clear();
  node.modified = clock_.Now();
  auto bytes =
      open_.OpenStream(KeyOf(whole), false, std::make_unique<OpenNode>(clock_, nodes_[KeyOf(whole)]));
  return WriteTextStream(std::move(bytes), StreamEncoding::Utf16, locale_);
}

std::unique_ptr<TextStream> MemoryFiles::OpenTextStream(std::u16string_view path, StreamMode mode) {
  const WindowsPath whole = Parse(path);
  const bool is_for_reading = mode == StreamMode::ForReading;
  open_.RequireStream(KeyOf(whole), is_for_reading);
  FileForWriting(whole);
  auto bytes = open_.OpenStream(KeyOf(whole), is_for_reading,
                                std::make_unique<OpenNode>(clock_, nodes_[KeyOf(whole)]));
  return is_for_reading ? ReadTextStream(std::move(bytes))
                        : WriteTextStream(std::move(bytes), StreamEncoding::Ansi, locale_);
}

std::u16string MemoryFiles::CurrentFolder() const {
  if (!Find(current_)) throw AutomationError(kPathNotFound);
  return current_.Text();
}

void MemoryFiles::Delete(std::u16string_view path) {
  const WindowsPath whole = Parse(path);
  FileAt(whole);
  open_.RequireClosed(KeyOf(whole));
  nodes_.erase(KeyOf(whole));
}

void MemoryFiles::Rename(std::u16string_view from, std::u16string_view to) {
  const WindowsPath old_path = Parse(from);
  const WindowsPath new_path = Parse(to);
  Node& node = FileAt(old_path);
  open_.RequireClosed(KeyOf(old_path));
  RequireParent(new_path);
  if (!EqualIgnoringCase(old_path.root, new_path.root)) throw AutomationError(kOtherDrive);
  const Node* target = Find(new_path);
  if (target && target != &node) throw AutomationError(kFileAlreadyExists);
  if (new_path.ends_in_separator) throw AutomationError(kPathNotFound);
  auto moving = nodes_.extract(KeyOf(old_path));
  moving.key() = KeyOf(new_path);
  moving.mapped()->path = new_path.Text();
  nodes_.insert(std::move(moving));
}

void MemoryFiles::Copy(std::u16string_view from, std::u16string_view to) {
  const WindowsPath source = Parse(from);
  const WindowsPath target = Parse(to);
  const Node& original = FileAt(source);
  open_.RequireCopyable(KeyOf(source));
  open_.RequireCopyable(KeyOf(target));
  if (KeyOf(source) == KeyOf(target)) throw AutomationError(kPermissionDenied);
  Node& copy = FileForWriting(target);
  copy.content = original.content;
  copy.modified = original.modified;
}

void MemoryFiles::CreateFolder(std::u16string_view path) {
  const WindowsPath whole = Parse(path);
  if (Find(whole)) throw AutomationError(kPathFileAccess);
  RequireParent(whole);
  nodes_[KeyOf(whole)] =
      std::make_shared<Node>(Node{.path = whole.Text(), .is_folder = true, .modified = clock_.Now()});
}

bool MemoryFiles::FolderExists(std::u16string_view path) const {
  const Node* node = nullptr;
  IgnoreErrors([&] { node = Find(Parse(path)); });
  return node && node->is_folder;
}

std::vector<std::u16string> MemoryFiles::Find(std::u16string_view folder, std::u16string_view name) const {
  std::vector<std::u16string> names;
  IgnoreErrors([&] {
    const WindowsPath parent = Parse(folder);
    for (const auto& [key, node] : nodes_) {
      if (node->is_folder) continue;
      WindowsPath path = Parse(node->path);
      if (KeyOf(ParentOf(path)) == KeyOf(parent) && FitsPattern(path.names.back(), name)) {
        names.push_back(std::move(path.names.back()));
      }
    }
  });
  return names;
}

Date MemoryFiles::LastModified(std::u16string_view path) const {
  const WindowsPath whole = Parse(path);
  if (const Node* node = Find(whole); node && node->is_folder) return node->modified;
  return FileAt(whole).modified;
}

double MemoryFiles::Length(std::u16string_view path) const {
  return static_cast<double>(FileAt(Parse(path)).content.size());
}

void MemoryFiles::SetFile(std::u16string_view path, std::string content, std::optional<Date> modified) {
  const WindowsPath whole = Parse(path);
  SetFolder(ParentOf(whole).Text());
  Node& node = FileForWriting(whole);
  node.content = std::move(content);
  node.modified = modified.value_or(clock_.Now());
}

void MemoryFiles::SetFolder(std::u16string_view path) {
  const WindowsPath whole = Parse(path);
  if (!whole.names.empty()) SetFolder(ParentOf(whole).Text());
  std::shared_ptr<Node>& node = nodes_[KeyOf(whole)];
  if (!node) {
    node = std::make_shared<Node>(Node{.path = whole.Text(), .is_folder = true, .modified = clock_.Now()});
  }
}

std::optional<std::string> MemoryFiles::Content(std::u16string_view path) const {
  const Node* node = Find(Parse(path));
  return node && !node->is_folder ? std::optional(node->content) : std::nullopt;
}

void MemoryFiles::RemoveFolder(std::u16string_view path) {
  nodes_.erase(KeyOf(Parse(path)));
}

void MemoryFiles::SetCurrentFolder(std::u16string_view path) {
  if (!FolderExists(path)) throw AutomationError(kPathNotFound);
  current_ = Parse(path);
}

}  // namespace qva
