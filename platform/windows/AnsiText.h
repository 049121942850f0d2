// Text in the ANSI code page of the system.
#pragma once

#include <string>
#include <string_view>

namespace qva::windows {

/// A character that the code page lacks becomes "?".
std::string ToAnsi(std::u16string_view text);
std::u16string FromAnsi(std::string_view bytes);

}  // namespace qva::windows
