#include "platform/settings.h"

namespace qva {

std::u16string SettingsKeyPath(std::u16string_view application, std::u16string_view section) {
  return u"Software\\VB and VBA Program Settings\\" + std::u16string(application) + u"\\" +
         std::u16string(section);
}

std::u16string GetSetting(Registry& registry, const Locale& locale, std::u16string_view application,
                          std::u16string_view section, std::u16string_view key,
                          std::u16string_view default_value) {
  std::u16string result(default_value);
  OpenedKey opened(registry);
  if (opened.Open(HKEY_CURRENT_USER_VALUE, SettingsKeyPath(application, section), kKeyQueryValue) !=
      kRegistrySuccess) {
    return result;
  }

  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (registry.QueryValue(opened.get(), key, type, {}, size) == kRegistrySuccess && type == kRegSz) {
    std::string data(size, '\0');
    if (registry.QueryValue(opened.get(), key, type, data, size) == kRegistrySuccess && type == kRegSz) {
      result = locale.FromAnsi(data.substr(0, data.find('\0')));
    }
  }
  return result;
}

bool SaveSetting(Registry& registry, const Locale& locale, std::u16string_view application,
                 std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  OpenedKey opened(registry);
  return opened.Create(HKEY_CURRENT_USER_VALUE, SettingsKeyPath(application, section), kKeySetValue, {}) ==
             kRegistrySuccess &&
         registry.SetValue(opened.get(), key, kRegSz, locale.ToAnsi(value)) == kRegistrySuccess;
}

}  // namespace qva
