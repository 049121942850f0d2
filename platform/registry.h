// The registry: the six operations that the library uses, with the contracts of advapi32's ANSI forms, and
// two for values as they are stored.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace qva {

/// Handles of the predefined keys.
inline constexpr std::uint32_t HKEY_CURRENT_USER_VALUE = 0x80000001;

/// Value types.
enum RegistryType : std::uint32_t {
  kRegSz = 1,        ///< REG_SZ: text with its terminating zero
  kRegExpandSz = 2,  ///< REG_EXPAND_SZ: text with unexpanded references to environment variables
  kRegBinary = 3,    ///< REG_BINARY
  kRegDword = 4,     ///< REG_DWORD
  kRegMultiSz = 7,   ///< REG_MULTI_SZ: texts, each with its terminating zero, and one more zero
};

/// True for the types whose data are text, which the ANSI operations convert.
inline bool IsRegistryText(std::uint32_t type) {
  return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

/// Results of the operations: Windows' own codes.
enum RegistryStatus : std::int32_t {
  kRegistrySuccess = 0,        ///< ERROR_SUCCESS
  kRegistryFileNotFound = 2,   ///< ERROR_FILE_NOT_FOUND: no such key or value
  kRegistryAccessDenied = 5,   ///< ERROR_ACCESS_DENIED
  kRegistryInvalidHandle = 6,  ///< ERROR_INVALID_HANDLE
  kRegistryMoreData = 234,     ///< ERROR_MORE_DATA: the buffer is too small
  kRegistryWriteFault = 29,    ///< ERROR_WRITE_FAULT: the store could not be written
};

/// Access rights of an opened key, to be added together (winnt.h).
enum RegistryAccess : std::uint32_t {
  kKeyQueryValue = 0x0001,
  kKeySetValue = 0x0002,
  kKeyCreateSubKey = 0x0004,
  kKeyEnumerateSubKeys = 0x0008,
  kKeyNotify = 0x0010,
  kKeyCreateLink = 0x0020,
};

/// SECURITY_ATTRIBUTES as handed to CreateKey; there is never a descriptor.
struct RegistrySecurity {
  std::uint32_t length = 0;
  bool inherit_handle = false;
};

/// A value as it is stored: texts are UTF-16, whatever the code page lacks included, with their terminating
/// zero but for the empty one, which may have none.
struct RegistryValue {
  std::uint32_t type = kRegSz;
  std::string bytes;
  friend bool operator==(const RegistryValue&, const RegistryValue&) = default;
};

/// An open key. 0 is none; HKEY_CURRENT_USER_VALUE is always open.
using RegistryKey = std::uint64_t;

class Registry {
 public:
  virtual ~Registry() = default;

  // None of the operations raises. All return a Windows code (RegistryStatus names those that we meet); with
  // any other than kRegistrySuccess what they would give is untouched, unless they say otherwise. Key paths
  // and value names ignore letter case; data are bytes as they stand in the ANSI code page, but for
  // QueryStored and SetStored.

  /// Opens an existing key (RegOpenKeyExA), `parent` itself by the empty path. On success `key` is the
  /// caller's to close. The rights of `access` are those to values: whoever has a key may open and create
  /// others below it.
  virtual std::int32_t OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                               RegistryKey& key) = 0;

  /// Opens a key, creating it and its missing parents first (RegCreateKeyExA). Ownership as for OpenKey.
  virtual std::int32_t CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                                 const RegistrySecurity& security, RegistryKey& key) = 0;

  /// Reads a value (RegQueryValueExA). `type` receives its type, `size` the number of its bytes, a text's
  /// terminating zero included. With an empty buffer only these are told, and so they are with
  /// kRegistryMoreData, when `data` is too small, which leaves it alone.
  virtual std::int32_t QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                                  std::span<char> data, std::uint32_t& size) = 0;

  /// Writes a value (RegSetValueExA). A text may come without its terminating zero, which the store adds but
  /// to an empty one.
  virtual std::int32_t SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                                std::span<const char> data) = 0;

  /// Reads a value of any length, nothing of it converted (RegQueryValueExW).
  virtual std::int32_t QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) = 0;

  /// Writes such a value (RegSetValueExW), as SetValue does.
  virtual std::int32_t SetStored(RegistryKey key, std::u16string_view name, const RegistryValue& value) = 0;

  /// Deletes a value (RegDeleteValueA).
  virtual std::int32_t DeleteValue(RegistryKey key, std::u16string_view name) = 0;

  /// Closes a key (RegCloseKey), which must not be used again. Closing a predefined key is allowed and does
  /// nothing.
  virtual std::int32_t CloseKey(RegistryKey key) = 0;
};

/// Owns a key that it opens, if it does, until its end.
class OpenedKey {
 public:
  /// The registry must outlive it.
  explicit OpenedKey(Registry& registry) : registry_(registry) {}
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;
  ~OpenedKey() { Close(); }

  // One of these, once. Results: the registry's.
  std::int32_t Open(RegistryKey parent, std::u16string_view path, std::uint32_t access) {
    return registry_.OpenKey(parent, path, access, key_);
  }
  std::int32_t Create(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                      const RegistrySecurity& security) {
    return registry_.CreateKey(parent, path, access, security, key_);
  }

  RegistryKey get() const { return key_; }
  /// Closes it, where there is one to close. Result: the registry's.
  std::int32_t Close() { return key_ == 0 ? kRegistrySuccess : registry_.CloseKey(std::exchange(key_, 0)); }
  /// Leaves it open.
  void Release() { key_ = 0; }

 private:
  Registry& registry_;
  RegistryKey key_ = 0;
};

}  // namespace qva
