// A registry that lives as long as its object: a tree of keys below HKEY_CURRENT_USER.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/registry.h"

namespace qva {

class MemoryRegistry : public Registry {
 public:
  MemoryRegistry();
  ~MemoryRegistry() override;

  // Opened keys are checked as Windows checks them: reading a value needs kKeyQueryValue, writing and
  // deleting one kKeySetValue; anything else gives kRegistryAccessDenied. A closed or invented handle gives
  // kRegistryInvalidHandle.
  std::int32_t OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                       RegistryKey& key) override;
  std::int32_t CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                         const RegistrySecurity& security, RegistryKey& key) override;
  std::int32_t QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                          std::span<char> data, std::uint32_t& size) override;
  std::int32_t SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        std::span<const char> data) override;
  std::int32_t QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) override;
  std::int32_t SetStored(RegistryKey key, std::u16string_view name, const RegistryValue& value) override;
  std::int32_t DeleteValue(RegistryKey key, std::u16string_view name) override;
  std::int32_t CloseKey(RegistryKey key) override;

  /// Handles that were opened and not closed yet.
  std::size_t OpenHandles() const { return handles_.size(); }

  // The contents by path below HKEY_CURRENT_USER, for preparing a test and looking at what it left. No handle
  // is opened.

  /// Stores a text (in the ANSI code page, without terminating zero), creating the key.
  void SetText(std::u16string_view path, std::u16string_view name, std::string_view text,
               std::uint32_t type = kRegSz);
  /// Stores a value as it is, a text without its terminating zero included, which programs may leave there by
  /// other ways than this interface.
  void SetBytes(std::u16string_view path, std::u16string_view name, const RegistryValue& value);
  /// A value's text without its terminating zero; nothing when there is no such key, value or text.
  std::optional<std::string> Text(std::u16string_view path, std::u16string_view name) const;
  bool HasKey(std::u16string_view path) const;

 private:
  struct Node {
    std::map<std::u16string, std::unique_ptr<Node>> children;  // by lower-case name
    std::map<std::u16string, RegistryValue> values;            // by lower-case name
  };
  struct Handle {
    Node* node = nullptr;
    std::uint32_t access = 0;
  };

  std::optional<Handle> Resolve(RegistryKey key) const;
  RegistryKey NewHandle(Node* node, std::uint32_t access);
  static Node* Find(Node* node, std::u16string_view path);
  static Node* FindOrCreate(Node* node, std::u16string_view path);
  /// Stores a value; a text gets its terminating zero.
  static void Store(Node& node, std::u16string_view name, std::uint32_t type, std::string bytes);
  /// What SetValue's bytes are as they are stored.
  static std::string StoredBytes(std::uint32_t type, std::span<const char> data);
  /// An open key's node, for a value that is to be written.
  std::int32_t FindWritable(RegistryKey key, Node*& node) const;
  /// The value that an operation on an open key is about; nothing, and the operation's answer in `status`,
  /// when there is none to be read.
  const RegistryValue* FindValue(RegistryKey key, std::u16string_view name, std::int32_t& status) const;

  std::unique_ptr<Node> current_user_;
  std::map<RegistryKey, Handle> handles_;
  RegistryKey last_handle_ = 0;
};

}  // namespace qva
