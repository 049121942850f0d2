// Calendar arithmetic on automation dates, and dates as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/locale.h"
#include "platform/value.h"

namespace qva {

struct DateParts {
  int year = 0;   ///< 100 to 9999
  int month = 0;  ///< 1 to 12
  int day = 0;    ///< 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
};

/// The date of year, month and day with month and day overflow carried: day 0 is the last day of the month
/// before, month 13 the January after. Two-digit years: 0–29 are 2000–2029, 30–99 are 1930–1999.
/// Raises 5 (Invalid procedure call) when the result lies outside the years 100 to 9999.
Date DateFromParts(int year, int month, int day);

/// Year to second, rounded to the nearest second that there is.
DateParts PartsOf(Date date);

/// The date so many months later, or earlier; a day that the month lacks becomes its last one.
Date AddMonths(Date date, int months);

/// The first and the last day of the date's month.
Date FirstOfMonth(Date date);
Date LastOfMonth(Date date);

/// The date with its literal separators between day, month and year parts: a short date pattern may use
/// different ones ("d. MMMM/yyyy"); what stands between the first two parts, and between the last two.
struct DateSeparators {
  std::u16string first;
  std::u16string second;
};
DateSeparators SeparatorsOf(std::u16string_view short_date_pattern);

/// The date by a pattern of y, m, d and "/" as Basic's Format reads it: "yyyy", "mm", "dd" with leading zeros
/// ("m" and "d" without); "/" is the regional separator, the first and second one in turn where they differ.
/// Other characters stand for themselves.
std::u16string FormatDate(Date date, std::u16string_view pattern, const Locale& locale);

/// The date by a pattern of numbers in Windows' notation ("yyyy-MM-dd HH:mm:ss"), for everybody the same. All
/// other characters stand for themselves, and so does what single quotes enclose; two of these are one.
std::u16string FormatByWindowsPattern(Date date, std::u16string_view pattern);

/// The date by the user's short date, which may hold names of months (MMM, MMMM) and weekdays (ddd, dddd).
std::u16string ShortDateText(Date date, const Locale& locale);

/// The time of day by the user's long time, which may name the half of the day (t for its first letter, tt).
std::u16string LongTimeText(Date date, const Locale& locale);

/// A date, a time, or both, by the user's regional settings: a date as ShortDateText writes it, or of numbers
/// alone, whose parts may be parted by ".", "-", "/", blanks or
/// the regional separator; four leading digits are a year, otherwise the order of the short date pattern
/// decides. Nothing when the text is no date.
std::optional<Date> ParseDate(std::u16string_view text, const Locale& locale);

}  // namespace qva
