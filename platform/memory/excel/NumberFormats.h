// What a number format makes of the number that a cell holds.
#pragma once

#include <string_view>

#include "platform/value.h"

namespace qva::memory {

inline constexpr std::u16string_view kGeneralFormat = u"General";
inline constexpr std::u16string_view kTextFormat = u"@";

/// The day after 31 December 9999: no cell shows it as a date.
inline constexpr double kEndOfDates = 2958466;

/// What Range.Value gives of a cell's number: a Date in a format with a day, month or year, a Currency of
/// four decimals in one with the sign of a currency, otherwise, and where it is too great for either, the
/// number. A time of day alone stays a number.
Value NumberInFormat(double number, std::u16string_view format);

}  // namespace qva::memory
