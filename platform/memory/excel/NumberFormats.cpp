#include "platform/memory/excel/NumberFormats.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace qva::memory {
namespace {

constexpr double kLargestAmount = 922337203685477;  // that a Currency holds
constexpr std::u16string_view kCurrencySigns = u"$€£";

/// The part of a format that is for positive numbers, without what it shows as it is.
struct Codes {
  std::u16string letters;  ///< in lower case
  bool has_currency_sign = false;
};

Codes CodesOf(std::u16string_view format) {
  Codes codes;
  for (std::size_t i = 0; i < format.size() && format[i] != u';'; ++i) {
    const char16_t c = format[i];
    if (c == u'\\' || c == u'_' || c == u'*') {
      ++i;
    } else if (c == u'"') {
      i = std::min(format.find(u'"', i + 1), format.size());
    } else if (c == u'[') {
      // "[Red]" is a colour, "[$€-427]" a currency, "[$-427]" a language alone.
      const std::u16string_view rest = format.substr(i + 1);
      if (rest.starts_with(u'$') && !rest.starts_with(u"$-")) codes.has_currency_sign = true;
      i = std::min(format.find(u']', i + 1), format.size());
    } else if (kCurrencySigns.find(c) != kCurrencySigns.npos) {
      codes.has_currency_sign = true;
    } else {
      codes.letters += c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c | 0x20) : c;
    }
  }
  return codes;
}

}  // namespace

Value NumberInFormat(double number, std::u16string_view format) {
  if (format == kGeneralFormat) return number;
  const Codes codes = CodesOf(format);
  const auto has = [&](char16_t letter) { return codes.letters.find(letter) != std::u16string::npos; };
  // Between hours and seconds "m" stands for minutes.
  const bool is_date = has(u'd') || has(u'y') || (has(u'm') && !has(u'h') && !has(u's'));
  if (is_date && number >= 0 && number < kEndOfDates) return Date{number};
  if (!is_date && codes.has_currency_sign && std::abs(number) < kLargestAmount) {
    return Value(number).ToCurrency();
  }
  return number;
}

}  // namespace qva::memory
