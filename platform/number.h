// Decimal numbers as text, written with a point whatever the user's settings are.
#pragma once

#include <string_view>

namespace qva {

/// The number at the beginning of a text: digits with perhaps a sign, a point and an exponent. 0 when there
/// is none, and when it is too small for a double; an infinity when it is too great.
double LeadingDecimal(std::string_view text);

}  // namespace qva
