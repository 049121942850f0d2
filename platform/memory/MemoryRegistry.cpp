#include "platform/memory/MemoryRegistry.h"

#include <algorithm>

#include "platform/lithuanian/code_page.h"
#include "platform/text.h"

namespace qva {
namespace {

/// Takes the first component off a path of "\"-separated ones, in the case that keys are stored by; empty
/// where there is a backslash too many.
std::u16string TakeComponent(std::u16string_view& path) {
  const std::size_t end = std::min(path.find(u'\\'), path.size());
  std::u16string name = ToLower(path.substr(0, end));
  path.remove_prefix(std::min(end + 1, path.size()));
  return name;
}

}  // namespace

MemoryRegistry::MemoryRegistry() : current_user_(std::make_unique<Node>()) {
}

MemoryRegistry::~MemoryRegistry() = default;

std::optional<MemoryRegistry::Handle> MemoryRegistry::Resolve(RegistryKey key) const {
  if (key == HKEY_CURRENT_USER_VALUE) return Handle{current_user_.get(), ~std::uint32_t{0}};
  const auto found = handles_.find(key);
  if (found == handles_.end()) return std::nullopt;
  return found->second;
}

RegistryKey MemoryRegistry::NewHandle(Node* node, std::uint32_t access) {
  handles_[++last_handle_] = {node, access};
  return last_handle_;
}

MemoryRegistry::Node* MemoryRegistry::Find(Node* node, std::u16string_view path) {
  while (!path.empty()) {
    const std::u16string name = TakeComponent(path);
    if (name.empty()) continue;
    const auto found = node->children.find(name);
    if (found == node->children.end()) return nullptr;
    node = found->second.get();
  }
  return node;
}

MemoryRegistry::Node* MemoryRegistry::FindOrCreate(Node* node, std::u16string_view path) {
  while (!path.empty()) {
    const std::u16string name = TakeComponent(path);
    if (name.empty()) continue;
    std::unique_ptr<Node>& child = node->children[name];
    if (!child) child = std::make_unique<Node>();
    node = child.get();
  }
  return node;
}

void MemoryRegistry::Store(Node& node, std::u16string_view name, std::uint32_t type, std::string bytes) {
  if (IsRegistryText(type)) {
    std::u16string text = FromUtf16Bytes(bytes);
    if (!text.empty() && text.back() != u'\0') text += u'\0';
    bytes = ToUtf16Bytes(text);
  }
  node.values[ToLower(name)] = {type, std::move(bytes)};
}

std::string MemoryRegistry::StoredBytes(std::uint32_t type, std::span<const char> data) {
  const std::string_view bytes(data.data(), data.size());
  return IsRegistryText(type) ? ToUtf16Bytes(FromCodePage1257(bytes)) : std::string(bytes);
}

std::int32_t MemoryRegistry::OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                                     RegistryKey& key) {
  const auto handle = Resolve(parent);
  if (!handle) return kRegistryInvalidHandle;
  Node* node = Find(handle->node, path);
  if (!node) return kRegistryFileNotFound;
  key = NewHandle(node, access);
  return kRegistrySuccess;
}

std::int32_t MemoryRegistry::CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                                       const RegistrySecurity&, RegistryKey& key) {
  const auto handle = Resolve(parent);
  if (!handle) return kRegistryInvalidHandle;
  key = NewHandle(FindOrCreate(handle->node, path), access);
  return kRegistrySuccess;
}

std::int32_t MemoryRegistry::FindWritable(RegistryKey key, Node*& node) const {
  const auto handle = Resolve(key);
  if (!handle) return kRegistryInvalidHandle;
  if (!(handle->access & kKeySetValue)) return kRegistryAccessDenied;
  node = handle->node;
  return kRegistrySuccess;
}

const RegistryValue* MemoryRegistry::FindValue(RegistryKey key, std::u16string_view name,
                                               std::int32_t& status) const {
  const auto handle = Resolve(key);
  if (!handle) {
    status = kRegistryInvalidHandle;
  } else if (!(handle->access & kKeyQueryValue)) {
    status = kRegistryAccessDenied;
  } else if (const auto found = handle->node->values.find(ToLower(name));
             found != handle->node->values.end()) {
    return &found->second;
  } else {
    status = kRegistryFileNotFound;
  }
  return nullptr;
}

std::int32_t MemoryRegistry::QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                                        std::span<char> data, std::uint32_t& size) {
  std::int32_t status = kRegistrySuccess;
  const RegistryValue* value = FindValue(key, name, status);
  if (!value) return status;
  const std::string bytes =
      IsRegistryText(value->type) ? ToCodePage1257(FromUtf16Bytes(value->bytes)) : value->bytes;
  type = value->type;
  size = static_cast<std::uint32_t>(bytes.size());
  if (data.empty()) return kRegistrySuccess;
  if (data.size() < bytes.size()) return kRegistryMoreData;
  std::copy(bytes.begin(), bytes.end(), data.begin());
  return kRegistrySuccess;
}

std::int32_t MemoryRegistry::QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) {
  std::int32_t status = kRegistrySuccess;
  if (const RegistryValue* found = FindValue(key, name, status)) value = *found;
  return status;
}

std::int32_t MemoryRegistry::SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                                      std::span<const char> data) {
  Node* node = nullptr;
  const std::int32_t status = FindWritable(key, node);
  if (node) Store(*node, name, type, StoredBytes(type, data));
  return status;
}

std::int32_t MemoryRegistry::SetStored(RegistryKey key, std::u16string_view name,
                                       const RegistryValue& value) {
  Node* node = nullptr;
  const std::int32_t status = FindWritable(key, node);
  if (node) Store(*node, name, value.type, value.bytes);
  return status;
}

std::int32_t MemoryRegistry::DeleteValue(RegistryKey key, std::u16string_view name) {
  const auto handle = Resolve(key);
  if (!handle) return kRegistryInvalidHandle;
  if (!(handle->access & kKeySetValue)) return kRegistryAccessDenied;
  return handle->node->values.erase(ToLower(name)) == 1 ? kRegistrySuccess : kRegistryFileNotFound;
}

std::int32_t MemoryRegistry::CloseKey(RegistryKey key) {
  if (key == HKEY_CURRENT_USER_VALUE) return kRegistrySuccess;
  return handles_.erase(key) == 1 ? kRegistrySuccess : kRegistryInvalidHandle;
}

void MemoryRegistry::SetText(std::u16string_view path, std::u16string_view name, std::string_view text,
                             std::uint32_t type) {
  SetBytes(path, name, {type, StoredBytes(type, std::string(text) + '\0')});
}

void MemoryRegistry::SetBytes(std::u16string_view path, std::u16string_view name,
                              const RegistryValue& value) {
  FindOrCreate(current_user_.get(), path)->values[ToLower(name)] = value;
}

std::optional<std::string> MemoryRegistry::Text(std::u16string_view path, std::u16string_view name) const {
  const Node* node = Find(current_user_.get(), path);
  if (!node) return std::nullopt;
  const auto found = node->values.find(ToLower(name));
  if (found == node->values.end() || !IsRegistryText(found->second.type)) return std::nullopt;
  std::string text = ToCodePage1257(FromUtf16Bytes(found->second.bytes));
  if (text.ends_with('\0')) text.pop_back();
  return text;
}

bool MemoryRegistry::HasKey(std::u16string_view path) const {
  return Find(current_user_.get(), path) != nullptr;
}

}  // namespace qva
