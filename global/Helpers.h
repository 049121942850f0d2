// Small functions that several classes share: message formatting and the user's date separator.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/automation.h"

namespace qva {

/// Replaces "%0", "%1", … in a message text by the elements of `parameters`, a one-dimensional array with any
/// bounds, from the highest index down, so that "%10" is replaced before "%1". A placeholder without an
/// element stays. An empty text is returned at once. Raises 9 (Subscript out of range) when `parameters` is
/// no one-dimensional array, and 13 or 94 for an element that cannot become text.
std::u16string FormatMessage(std::u16string_view text, const Value& parameters);

/// FormatMessage of host message `number` with one parameter, "%0".
std::u16string HostMessage(std::int32_t number, std::u16string_view parameter);

/// The separator that the user's regional settings put into a date in the order year, month, day: between
/// year and month (`first`), or between month and day. Where the short date pattern has two different ones,
/// they are taken in its own order, whichever parts they stand between there.
std::u16string GetDateSeparator(bool first);

/// What stands between the first `before` and the first `after` in `text`: a single character, or the first
/// and the last one of a longer stretch, which serves separators of two characters. Raises 5 (Invalid
/// procedure call) when the stretch would begin or end before the text.
std::u16string GetTextBetween(std::u16string_view text, std::u16string_view before,
                              std::u16string_view after);

/// Adds 1 or −1 to a 16-bit counter; raises 6 (Overflow) and leaves it alone at the end of its range.
void Count(std::int16_t& counter, int step);

}  // namespace qva
