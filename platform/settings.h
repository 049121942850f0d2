// The per-user application settings store, kept in the registry.
#pragma once

#include <string>
#include <string_view>

#include "platform/locale.h"
#include "platform/registry.h"

namespace qva {

/// The key below HKEY_CURRENT_USER that holds the settings of an application's section.
std::u16string SettingsKeyPath(std::u16string_view application, std::u16string_view section);

/// Reads the setting `key` of an application's section as text: the value of type REG_SZ under
/// SettingsKeyPath.
/// Result: `default_value` when the key or value is missing, unreadable or no text. Does not raise.
std::u16string GetSetting(Registry& registry, const Locale& locale, std::u16string_view application,
                          std::u16string_view section, std::u16string_view key,
                          std::u16string_view default_value);

/// Writes the setting where GetSetting finds it, in the user's code page. Result: whether it is written. Does
/// not raise.
bool SaveSetting(Registry& registry, const Locale& locale, std::u16string_view application,
                 std::u16string_view section, std::u16string_view key, std::u16string_view value);

}  // namespace qva
