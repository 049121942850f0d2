#include "platform/settings.h"

namespace qva {

std::u16string GetSetting(Registry& registry, const Locale& locale, std::u16string_view application,
                          std::u16string_view section, std::u16string_view key,
                          std::u16string_view default_value) {
  const std::u16string path = u"Software\\VB and VBA Program Settings\\" + std::u16string(application) +
                              u"\\" + std::u16string(section);
  std::u16string result(default_value);
  RegistryKey handle = 0;
  if (registry.OpenKey(HKEY_CURRENT_USER_VALUE, path, kKeyQueryValue, handle) != kRegistrySuccess)
    return result;

  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (registry.QueryValue(handle, key, type, {}, size) == kRegistrySuccess && type == kRegSz) {
    std::string data(size, '\0');
    if (registry.QueryValue(handle, key, type, data, size) == kRegistrySuccess && type == kRegSz) {
      result = locale.FromAnsi(data.substr(0, data.find('\0')));
    }
  }
  registry.CloseKey(handle);
  return result;
}

}  // namespace qva
