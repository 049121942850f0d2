// Message boxes in windows of LibreOffice.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qva::calc {

/// Shows a text with one button for each caption. Result: the number of the pressed button, the first being
/// 1; closing the box presses the last one. `is_stop` puts the sign of a serious error before the text.
/// Raises what LibreOffice raises when it cannot show the box.
std::int32_t ShowMessage(std::u16string_view text, std::u16string_view title,
                         std::span<const std::u16string> captions, bool is_stop);

}  // namespace qva::calc
