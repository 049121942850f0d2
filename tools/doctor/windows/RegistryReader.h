// Reading the registry of Windows as other programs see it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace qva::doctor {

/// The predefined keys.
enum class Root : std::uint32_t {
  Classes = 0x80000000,  ///< what this process sees of both hives' classes
  User = HKEY_CURRENT_USER_VALUE,
  Machine = 0x80000002
};

/// As whom to read: as this process, or as programs of one bitness.
enum class View : std::uint32_t { Own = 0, x64 = 0x0100, x86 = 0x0200 };

/// A text, with references to the environment's variables resolved; nothing when there is none. The empty
/// name is the key's own value.
std::optional<std::u16string> ReadText(Root root, std::u16string_view path, std::u16string_view name,
                                       View view = View::Own);
/// A 32-bit number.
std::optional<std::uint32_t> ReadNumber(Root root, std::u16string_view path, std::u16string_view name,
                                        View view = View::Own);
bool HasKey(Root root, std::u16string_view path, View view = View::Own);

}  // namespace qva::doctor
