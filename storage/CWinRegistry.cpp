#include "storage/CWinRegistry.h"

#include <array>
#include <string_view>

#include "platform/services.h"

namespace qva {
namespace {

/// Reading, writing, sub-keys, listing, notification and links: hexadecimal 3F.
constexpr std::uint32_t kAccess =
    kKeyQueryValue | kKeySetValue | kKeyCreateSubKey | kKeyEnumerateSubKeys | kKeyNotify | kKeyCreateLink;

/// The length field is the structure's size with a 16-bit flag at its end, not the system's own 12 or 24
/// bytes; the registry has always accepted it.
constexpr RegistrySecurity kSecurity = {.length = 10, .inherit_handle = true};

constexpr std::size_t kValueBufferSize = 255;

/// The end of a step with a key, which leaves it open when it failed.
bool Succeeds(std::int32_t status, OpenedKey& key) {
  if (status == kRegistrySuccess) return key.Close() == kRegistrySuccess;
  key.Release();
  return false;
}

}  // namespace

std::u16string CWinRegistry::GetRegSetting(RegistryKey hive, const std::u16string& key_path,
                                           const std::u16string& value_name, std::int32_t& value_type) const {
  Registry& registry = *GetServices().registry;
  OpenedKey key(registry);
  if (key.Open(hive, key_path, kAccess) != kRegistrySuccess) return {};

  std::array<char, kValueBufferSize> buffer;
  buffer.fill(' ');
  auto type = static_cast<std::uint32_t>(value_type);
  std::uint32_t size = kValueBufferSize;
  const std::int32_t status = registry.QueryValue(key.get(), value_name, type, buffer, size);
  value_type = static_cast<std::int32_t>(type);
  // A value without any bytes has not even a terminating zero to drop.
  if (status != kRegistrySuccess || size == 0) return {};
  return GetServices().locale->FromAnsi({buffer.data(), size - 1});
}

bool CWinRegistry::DeleteRegSetting(RegistryKey hive, const std::u16string& key_path,
                                    const std::u16string& value_name) const {
  Registry& registry = *GetServices().registry;
  OpenedKey key(registry);
  if (key.Open(hive, key_path, kAccess) != kRegistrySuccess) return false;
  return Succeeds(registry.DeleteValue(key.get(), value_name), key);
}

bool CWinRegistry::SaveRegSetting(RegistryKey hive, const std::u16string& key_path,
                                  const std::u16string& value_name, const std::u16string& value,
                                  std::int32_t value_type) const {
  Registry& registry = *GetServices().registry;
  const std::string bytes = GetServices().locale->ToAnsi(value);
  // As many bytes as the text has characters, which are as many in a code page of single bytes.
  const std::string_view data = std::string_view(bytes).substr(0, value.size());
  OpenedKey key(registry);
  if (key.Create(hive, key_path, kAccess, kSecurity) != kRegistrySuccess) return false;
  return Succeeds(registry.SetValue(key.get(), value_name, static_cast<std::uint32_t>(value_type), data),
                  key);
}

}  // namespace qva
