#include "platform/value.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>
#include <optional>

#include "platform/automation.h"
#include "platform/date.h"
#include "platform/error.h"
#include "platform/number.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr double kFirstDate = -657434;   // 1 January 100
constexpr double kEndOfDates = 2958466;  // the day after 31 December 9999

const Locale& UserLocale() {
  return *GetServices().locale;
}

/// Half to even, which is what automation rounds by; independent of the floating-point environment.
double RoundHalfToEven(double x) {
  const double below = std::floor(x);
  const double rest = x - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <class Integer>
Integer ToInteger(double x) {
  const double rounded = RoundHalfToEven(x);
  if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
    throw AutomationError(kOverflow);
  }
  return static_cast<Integer>(rounded);
}

/// Whole part and fraction are scaled apart: together they may need more digits than a double has.
Currency ScaledCurrency(double amount) {
  constexpr double kGreatestWhole = 922337203685477;
  constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  const double whole = std::trunc(amount);
  if (!(whole >= -kGreatestWhole && whole <= kGreatestWhole)) throw AutomationError(kOverflow);
  const auto scaled_whole = static_cast<std::int64_t>(whole) * 10000;
  const auto scaled_rest = static_cast<std::int64_t>(RoundHalfToEven((amount - whole) * 10000));
  if (scaled_rest > 0 ? scaled_whole > kGreatest - scaled_rest : scaled_whole < kLeast - scaled_rest) {
    throw AutomationError(kOverflow);
  }
  return {scaled_whole + scaled_rest};
}

/// A number as it was written.
struct WrittenNumber {
  bool is_negative = false;
  std::string decimal;  ///< digits with perhaps a point among them and "e" with an exponent behind them
};

/// Reads a number written by the regional settings, or in &H hexadecimal notation; nothing when it is none.
std::optional<WrittenNumber> ParseNumber(std::u16string_view text, std::u16string_view decimal_separator) {
  text = Trim(text);
  if (text.starts_with(u"&H") || text.starts_with(u"&h")) {
    const std::string digits = ToUtf8(text.substr(2));
    if (digits.empty() || digits.size() > 8 ||
        digits.find_first_not_of("0123456789abcdefABCDEF") != digits.npos) {
      return std::nullopt;
    }
    const auto bits = std::stoul(digits, nullptr, 16);
    const std::int64_t number =
        digits.size() <= 4 ? static_cast<std::int16_t>(bits) : static_cast<std::int32_t>(bits);
    return WrittenNumber{number < 0, std::to_string(std::abs(number))};
  }
  std::string plain;
  bool has_digit = false;
  bool has_separator = false;
  std::size_t i = 0;
  bool is_negative = false;
  if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) is_negative = text[i++] == u'-';
  for (; i < text.size(); ++i) {
    if (IsDigit(text[i])) {
      plain += static_cast<char>(text[i]);
      has_digit = true;
    } else if (!has_separator && text.substr(i).starts_with(decimal_separator)) {
      plain += '.';
      has_separator = true;
      i += decimal_separator.size() - 1;
    } else {
      break;
    }
  }
  if (!has_digit) return std::nullopt;
  if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
    plain += 'e';
    ++i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) plain += static_cast<char>(text[i++]);
    const std::size_t first_digit = i;
    while (i < text.size() && IsDigit(text[i])) plain += static_cast<char>(text[i++]);
    if (i == first_digit) return std::nullopt;
  }
  if (i != text.size()) return std::nullopt;
  return WrittenNumber{is_negative, std::move(plain)};
}

WrittenNumber NumberIn(std::u16string_view text) {
  auto number = ParseNumber(text, UserLocale().DecimalSeparator());
  if (!number) throw AutomationError(kTypeMismatch);
  return *std::move(number);
}

double NumberOfText(std::u16string_view text) {
  const WrittenNumber written = NumberIn(text);
  const double number = LeadingDecimal(written.decimal);
  if (std::isinf(number)) throw AutomationError(kOverflow);
  return written.is_negative ? -number : number;
}

/// By the digits themselves: an amount may have 19, a double keeps 15. What goes beyond the fourth decimal is
/// rounded half to even.
Currency CurrencyOfText(std::u16string_view text) {
  const WrittenNumber written = NumberIn(text);
  const std::string mantissa = written.decimal.substr(0, written.decimal.find('e'));
  std::string digits = mantissa;
  long long whole = static_cast<long long>(mantissa.size());  // digits in front of the point
  if (const std::size_t point = mantissa.find('.'); point != mantissa.npos) {
    digits.erase(point, 1);
    whole = static_cast<long long>(point);
  }
  if (mantissa.size() < written.decimal.size()) {
    // Cut where no text is long enough to make up for it.
    constexpr long kGreatestExponent = 2'000'000'000;
    const long exponent = std::strtol(written.decimal.c_str() + mantissa.size() + 1, nullptr, 10);
    whole += std::clamp(exponent, -kGreatestExponent, kGreatestExponent);
  }
  const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
  digits.erase(0, zeros);
  if (digits.empty()) return {};
  const long long kept = whole - static_cast<long long>(zeros) + 4;
  if (kept < 0) return {};
  if (kept > 19) throw AutomationError(kOverflow);

  std::string rest = digits.substr(std::min(digits.size(), static_cast<std::size_t>(kept)));
  rest.erase(rest.find_last_not_of('0') + 1);
  digits.resize(static_cast<std::size_t>(kept), '0');
  std::uint64_t scaled = digits.empty() ? 0 : std::stoull(digits);
  const std::string_view half = "5";
  if (rest > half || (rest == half && scaled % 2 == 1)) ++scaled;
  constexpr auto kGreatest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (scaled > kGreatest + (written.is_negative ? 1 : 0)) throw AutomationError(kOverflow);
  return {static_cast<std::int64_t>(written.is_negative ? 0 - scaled : scaled)};
}

/// Up to 15 significant digits; scientific from 1E+15 on and where a fraction would need more digits.
/// What is no number is written as Windows' runtime writes it.
std::u16string DoubleText(double x, std::u16string_view decimal_separator) {
  if (std::isnan(x)) return u"-1.#IND";
  if (std::isinf(x)) return x > 0 ? u"1.#INF" : u"-1.#INF";
  // Not std::to_chars, whose tables are a fifth of a statically linked library. The decimal point, whatever
  // the C library's locale makes of it, is dropped below.
  char buffer[64];
  const int length = std::snprintf(buffer, sizeof buffer, "%.14e", x);
  const std::string scientific(buffer, static_cast<std::size_t>(length));
  const std::size_t e = scientific.find('e');
  const int exponent = std::stoi(scientific.substr(e + 1));
  std::string digits = scientific.substr(0, e);
  const bool negative = digits.starts_with('-');
  if (negative) digits.erase(0, 1);
  digits.erase(1, 1);  // the decimal point of d.ddd
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.empty()) return u"0";

  std::string out;
  const int count = static_cast<int>(digits.size());
  if (exponent >= 15 || exponent - count + 1 < -15) {
    out = digits.substr(0, 1);
    if (count > 1) out += "." + digits.substr(1);
    std::snprintf(buffer, sizeof buffer, "E%+03d", exponent);
    out += buffer;
  } else if (exponent < 0) {
    out = "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
  } else if (count <= exponent + 1) {
    out = digits;
    out.resize(static_cast<std::size_t>(exponent) + 1, '0');
  } else {
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    out = digits.substr(0, whole) + "." + digits.substr(whole);
  }
  std::u16string text = FromUtf8((negative ? "-" : "") + out);
  return ReplaceAll(text, u".", decimal_separator);
}

std::u16string CurrencyText(Currency amount, std::u16string_view decimal_separator) {
  const bool negative = amount.scaled < 0;
  const std::uint64_t scaled =
      negative ? 0 - static_cast<std::uint64_t>(amount.scaled) : static_cast<std::uint64_t>(amount.scaled);
  std::string out = (negative ? "-" : "") + std::to_string(scaled / 10000);
  std::string fraction = std::to_string(10000 + scaled % 10000).substr(1);
  fraction.erase(fraction.find_last_not_of('0') + 1);
  std::u16string text = FromUtf8(out);
  if (!fraction.empty()) text += std::u16string(decimal_separator) + FromUtf8(fraction);
  return text;
}

bool IsInRange(Date date) {
  // A time on the first day makes its serial smaller, not greater.
  return date.serial > kFirstDate - 1 && date.serial < kEndOfDates;
}

/// Whether a time of day is to be shown. One that rounds to midnight is none.
bool HasTime(const DateParts& parts) {
  return parts.hour != 0 || parts.minute != 0 || parts.second != 0;
}

std::u16string DateText(Date date, const Locale& locale) {
  const DateParts parts = PartsOf(date);
  const bool is_day_0 = parts.year == 1899 && parts.month == 12 && parts.day == 30;
  std::u16string text;
  if (!is_day_0 || !HasTime(parts)) text = ShortDateText(date, locale);
  if (HasTime(parts)) {
    if (!text.empty()) text += u" ";
    text += LongTimeText(date, locale);
  }
  return text;
}

/// The value of an object's default property, which stands for the object wherever a plain value is wanted.
Value DefaultOf(const ObjectPtr& object) {
  Value value = Get(object, u"");
  if (value.Is(Value::Type::Object)) throw AutomationError(kTypeMismatch);
  return value;
}

Date DateInRange(double serial) {
  if (!IsInRange({serial})) throw AutomationError(kOverflow);
  return {serial};
}

}  // namespace

Value Array::Of(std::vector<Value> elements, std::int32_t lower) {
  const auto count = static_cast<std::int32_t>(elements.size());
  return Array{{{lower, count}}, std::move(elements)};
}

Value Array::Block(std::int32_t rows, std::int32_t columns, std::vector<Value> elements) {
  return Array{{{1, rows}, {1, columns}}, std::move(elements)};
}

bool Value::IsNothing() const {
  return Is(Type::Object) && !As<ObjectPtr>();
}

bool Value::ToBoolean() const {
  switch (type()) {
    case Type::Boolean:
      return As<bool>();
    case Type::Text: {
      const auto& text = As<std::u16string>();
      if (EqualIgnoringCase(text, u"True") || EqualIgnoringCase(text, u"#TRUE#")) return true;
      if (EqualIgnoringCase(text, u"False") || EqualIgnoringCase(text, u"#FALSE#")) return false;
      return NumberOfText(text) != 0;
    }
    case Type::Object:
      return DefaultOf(ToObject()).ToBoolean();
    default:
      return ToDouble() != 0;
  }
}

std::uint8_t Value::ToByte() const {
  if (Is(Type::Boolean)) return As<bool>() ? 255 : 0;
  if (Is(Type::Object)) return DefaultOf(As<ObjectPtr>()).ToByte();
  return ToInteger<std::uint8_t>(ToDouble());
}

std::int16_t Value::ToInt16() const {
  return ToInteger<std::int16_t>(ToDouble());
}

std::int32_t Value::ToInt32() const {
  return ToInteger<std::int32_t>(ToDouble());
}

double Value::ToDouble() const {
  switch (type()) {
    case Type::Empty:
      return 0;
    case Type::Boolean:
      return As<bool>() ? -1 : 0;
    case Type::Byte:
      return As<std::uint8_t>();
    case Type::Int16:
      return As<std::int16_t>();
    case Type::Int32:
      return As<std::int32_t>();
    case Type::Double:
      return As<double>();
    case Type::Currency:
      return static_cast<double>(As<qva::Currency>().scaled) / 10000;
    case Type::Date:
      return As<qva::Date>().serial;
    case Type::Text:
      return NumberOfText(As<std::u16string>());
    case Type::Object:
      return DefaultOf(As<ObjectPtr>()).ToDouble();
    case Type::Null:
      throw AutomationError(kInvalidUseOfNull);
    case Type::Missing:
    case Type::Error:
    case Type::Array:
      break;
  }
  throw AutomationError(kTypeMismatch);
}

Currency Value::ToCurrency() const {
  if (Is(Type::Currency)) return As<qva::Currency>();
  if (Is(Type::Object)) return DefaultOf(As<ObjectPtr>()).ToCurrency();
  if (Is(Type::Text)) return CurrencyOfText(As<std::u16string>());
  return ScaledCurrency(ToDouble());
}

Date Value::ToDate() const {
  switch (type()) {
    case Type::Date:
      return DateInRange(As<qva::Date>().serial);
    case Type::Text: {
      const auto& text = As<std::u16string>();
      if (const auto date = ParseDate(text, UserLocale())) return *date;
      return DateInRange(NumberOfText(text));
    }
    case Type::Object:
      return DefaultOf(As<ObjectPtr>()).ToDate();
    default:
      return DateInRange(ToDouble());
  }
}

std::u16string Value::ToText() const {
  switch (type()) {
    case Type::Empty:
      return {};
    case Type::Boolean:
      return As<bool>() ? u"True" : u"False";
    case Type::Byte:
    case Type::Int16:
    case Type::Int32:
      return NumberText(ToInt32());
    case Type::Double:
      return DoubleText(As<double>(), UserLocale().DecimalSeparator());
    case Type::Currency:
      return CurrencyText(As<qva::Currency>(), UserLocale().DecimalSeparator());
    case Type::Date:
      return DateText(ToDate(), UserLocale());
    case Type::Text:
      return As<std::u16string>();
    case Type::Object:
      return DefaultOf(As<ObjectPtr>()).ToText();
    case Type::Null:
      throw AutomationError(kInvalidUseOfNull);
    case Type::Missing:
    case Type::Error:
    case Type::Array:
      break;
  }
  throw AutomationError(kTypeMismatch);
}

const ObjectPtr& Value::ToObject() const {
  if (!Is(Type::Object)) throw AutomationError(kTypeMismatch);
  return As<ObjectPtr>();
}

const Array& Value::ToArray() const {
  if (!Is(Type::Array)) throw AutomationError(kTypeMismatch);
  return AsArray();
}

std::u16string DescribeValue(const Value& value) {
  switch (value.type()) {
    case Value::Type::Empty:
      return u"Empty";
    case Value::Type::Null:
      return u"Null";
    case Value::Type::Missing:
      return u"Missing";
    case Value::Type::Error:
      return u"Error " + NumberText(value.As<ErrorValue>().code);
    case Value::Type::Double:
      return DoubleText(value.As<double>(), u".");
    case Value::Type::Currency:
      return CurrencyText(value.As<Currency>(), u".") + u"@";
    case Value::Type::Date: {
      const Date date = value.As<Date>();
      if (!IsInRange(date)) return u"#" + DoubleText(date.serial, u".") + u"#";
      return u"#" +
             FormatByWindowsPattern(date, HasTime(PartsOf(date)) ? u"yyyy-MM-dd HH:mm:ss" : u"yyyy-MM-dd") +
             u"#";
    }
    case Value::Type::Text:
      return u"\"" + ReplaceAll(value.As<std::u16string>(), u"\"", u"\"\"") + u"\"";
    case Value::Type::Object:
      return value.IsNothing() ? u"Nothing" : u"<" + value.As<ObjectPtr>()->TypeName() + u">";
    case Value::Type::Array: {
      std::u16string text = u"Array(";
      for (const Value& element : value.AsArray().elements) {
        if (text.back() != u'(') text += u", ";
        text += DescribeValue(element);
      }
      return text + u")";
    }
    case Value::Type::Boolean:
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
      break;
  }
  return value.ToText();
}

}  // namespace qva
