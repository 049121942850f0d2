// The user's regional settings and the ANSI code page.
#pragma once

#include <string>
#include <string_view>

#include "platform/value.h"

namespace qva {

/// What the parts of dates and times are called.
enum class DateName {
  Month,        ///< "lapkritis"; number 0 is January
  MonthOfDate,  ///< a month's name beside a day of it: "lapkričio"
  ShortMonth,   ///< "lapkr."
  Weekday,      ///< "penktadienis"; number 0 is Monday
  ShortWeekday,
  HalfOfDay,  ///< "PM": 0 before noon, 1 from noon on; empty in some regions that count 24 hours
};

class Locale {
 public:
  virtual ~Locale() = default;

  // Nothing here raises. The settings are read anew on each call: the user may change them at any time.

  /// The pattern of a short date in Windows' notation, such as "yyyy-MM-dd".
  virtual std::u16string ShortDatePattern() const = 0;
  /// The pattern of a long time in Windows' notation, such as "HH:mm:ss".
  virtual std::u16string LongTimePattern() const = 0;
  /// The name of a month, a weekday or a half of the day, in the user's language. `number` is one that
  /// DateName knows.
  virtual std::u16string NameOf(DateName name, int number) const = 0;
  /// The decimal separator of numbers, such as ",".
  virtual std::u16string DecimalSeparator() const = 0;

  /// Text to the ANSI code page; a character that it lacks becomes "?".
  virtual std::string ToAnsi(std::u16string_view text) const = 0;
  /// Bytes of the ANSI code page to text; a byte that it lacks becomes a character all the same.
  virtual std::u16string FromAnsi(std::string_view bytes) const = 0;
};

}  // namespace qva
