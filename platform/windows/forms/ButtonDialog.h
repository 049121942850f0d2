// A message box whose buttons have captions of the caller's choice.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Shows a text above a row of buttons, modally over `owner` (which may be null), until one is pressed. The
/// first button is the default one. There must be a caption. Result: the number of the pressed button, the
/// first being 1, and the last one for closing the box; 0 when the box could not be shown.
std::int32_t ShowButtonDialog(HWND owner, std::u16string_view text, std::u16string_view title,
                              std::span<const std::u16string> captions);

}  // namespace qva::windows
