// The Lithuanian ANSI code page (Windows-1257), for platforms that do not bring one.
#pragma once

#include <string>
#include <string_view>

namespace qva {

/// A character that the code page lacks becomes "?".
std::string ToCodePage1257(std::u16string_view text);
/// A byte without a character becomes U+FFFD.
std::u16string FromCodePage1257(std::string_view bytes);

}  // namespace qva
