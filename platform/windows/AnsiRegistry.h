// The Windows registry, by advapi32's ANSI forms; values as they are stored by the wide ones.
#pragma once

#include "platform/registry.h"

namespace qva::windows {

/// A RegistryKey is the HKEY itself.
class AnsiRegistry : public Registry {
 public:
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
};

}  // namespace qva::windows
