// The user's regional settings and the ANSI code page.
#pragma once

#include <string>
#include <string_view>

#include "platform/value.h"

namespace qva {

class Locale {
 public:
  virtual ~Locale() = default;

  // Nothing here raises. The settings are read anew on each call: the user may change them at any time.

  /// The pattern of a short date in Windows' notation, such as "yyyy-MM-dd".
  virtual std::u16string ShortDatePattern() const = 0;
  /// The pattern of a long time in Windows' notation, such as "HH:mm:ss".
  virtual std::u16string LongTimePattern() const = 0;
  /// The decimal separator of numbers, such as ",".
  virtual std::u16string DecimalSeparator() const = 0;

  /// Text to the ANSI code page; a character that it lacks becomes "?".
  virtual std::string ToAnsi(std::u16string_view text) const = 0;
  /// Bytes of the ANSI code page to text.
  virtual std::u16string FromAnsi(std::string_view bytes) const = 0;
};

}  // namespace qva
