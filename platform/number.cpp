#include "platform/number.h"

#include <clocale>
#include <cstdlib>
#include <string>

namespace qva {

double LeadingDecimal(std::string_view text) {
  // What is cut off keeps the C library from its other notations: hexadecimal, infinities.
  std::string number(text.substr(0, text.find_first_not_of("0123456789.eE+-")));
  // Not std::from_chars, whose tables alone are a twentieth of the statically linked library. The C library
  // wants the point of whatever locale the process around us has set.
  const std::size_t point = number.find('.');
  if (point != number.npos) number.replace(point, 1, std::localeconv()->decimal_point);
  return std::strtod(number.c_str(), nullptr);
}

}  // namespace qva
