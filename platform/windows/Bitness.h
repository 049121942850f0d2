// The bitness of this module's process, and the other one.
#pragma once

#include <string_view>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

inline constexpr bool kIs64Bit = sizeof(void*) == 8;

// For people to read.
inline constexpr std::u16string_view kBitness = kIs64Bit ? u"64-bit" : u"32-bit";
inline constexpr std::u16string_view kOtherBitness = kIs64Bit ? u"32-bit" : u"64-bit";

// As registrations name them.
inline constexpr const wchar_t* kBitnessKey = kIs64Bit ? L"win64" : L"win32";
inline constexpr const wchar_t* kOtherBitnessKey = kIs64Bit ? L"win32" : L"win64";

/// The right to see the registry as programs of the other bitness do.
inline constexpr REGSAM kOtherView = kIs64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

}  // namespace qva::windows
