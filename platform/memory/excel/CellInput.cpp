#include "platform/memory/excel/CellInput.h"

#include <charconv>

#include "platform/automation.h"
#include "platform/clock.h"
#include "platform/date.h"
#include "platform/excel_constants.h"
#include "platform/memory/excel/Formula.h"
#include "platform/memory/excel/Refusals.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::size_t kLongestText = 32767;
constexpr double kEndOfDates = 2958466;  // the day after 31 December 9999

struct ErrorName {
  XlCVError code;
  std::u16string_view text;
};
constexpr ErrorName kErrorNames[] = {
    {xlErrNull, u"#NULL!"}, {xlErrDiv0, u"#DIV/0!"}, {xlErrValue, u"#VALUE!"}, {xlErrRef, u"#REF!"},
    {xlErrName, u"#NAME?"}, {xlErrNum, u"#NUM!"},    {xlErrNA, u"#N/A"}};

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

/// A whole number of up to four digits, taken off the text.
std::optional<int> TakeNumber(std::u16string_view& text) {
  std::size_t i = 0;
  int number = 0;
  while (i < text.size() && i < 4 && IsDigit(text[i])) number = number * 10 + (text[i++] - u'0');
  if (i == 0) return std::nullopt;
  text.remove_prefix(i);
  return number;
}

std::optional<Date> DayOf(int year, int month, int day) {
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const Date date = DateFromParts(year, month, day);
  if (PartsOf(date).day != day) return std::nullopt;  // 30 February and its like are no dates
  return date;
}

/// "2024-06-12", "2024/6/12", "6/12/2024" or "6-12-2024"; "6/12" and "6-12" are days of this year.
std::optional<Date> ParseExcelDate(std::u16string_view text) {
  const bool year_first = text.find_first_not_of(u"0123456789") == 4;
  int parts[3] = {};
  char16_t separator = 0;
  for (int i = 0; i < 3; ++i) {
    if (i > 0) {
      if (text.empty() || (text[0] != u'-' && text[0] != u'/')) return std::nullopt;
      if (i == 2 && text[0] != separator) return std::nullopt;
      separator = text[0];
      text.remove_prefix(1);
    }
    const auto part = TakeNumber(text);
    if (!part) return std::nullopt;
    parts[i] = *part;
    if (i == 1 && text.empty() && !year_first)
      return DayOf(PartsOf(GetServices().clock->Now()).year, parts[0], parts[1]);
  }
  if (!text.empty()) return std::nullopt;
  const int year = year_first ? parts[0] : parts[2];
  const int month = year_first ? parts[1] : parts[0];
  const int day = year_first ? parts[2] : parts[1];
  return DayOf(year, month, day);
}

/// "12:30" or "12:30:15": the fraction of the day.
std::optional<double> ParseExcelTime(std::u16string_view text) {
  int parts[3] = {};
  for (int i = 0; i < 3; ++i) {
    if (i == 2 && text.empty()) break;
    if (i > 0) {
      if (!text.starts_with(u':')) return std::nullopt;
      text.remove_prefix(1);
    }
    const auto part = TakeNumber(text);
    if (!part || *part > (i == 0 ? 23 : 59)) return std::nullopt;
    parts[i] = *part;
  }
  if (!text.empty()) return std::nullopt;
  return (parts[0] * 3600 + parts[1] * 60 + parts[2]) / 86400.0;
}

Value ReadText(const std::u16string& text) {
  if (const auto number = ParseExcelNumber(text)) return *number;
  if (EqualIgnoringCase(text, u"TRUE")) return true;
  if (EqualIgnoringCase(text, u"FALSE")) return false;
  const auto error = ParseErrorPrefix(text);
  if (error && EqualIgnoringCase(text, ErrorText(*error))) return *error;
  if (const auto date = ParseExcelDate(text)) return *date;
  if (const auto time = ParseExcelTime(text)) return *time;
  return text;
}

bool IsNumberOrBoolean(const Value& value) {
  switch (value.type()) {
    case Value::Type::Boolean:
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
    case Value::Type::Double:
    case Value::Type::Currency:
    case Value::Type::Date:
      return true;
    default:
      return false;
  }
}

}  // namespace

CellEntry ReadEntry(const Value& value, bool as_text) {
  if (as_text && IsNumberOrBoolean(value)) return {ConstantText(value), u""};
  switch (value.type()) {
    case Value::Type::Empty:
    case Value::Type::Null:
    case Value::Type::Missing:
      return {};
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
      return {value.ToDouble(), u""};
    case Value::Type::Object: {
      const Value plain = Get(value.ToObject(), u"");
      if (plain.Is(Value::Type::Object)) throw AutomationError(kTypeMismatch);
      return ReadEntry(plain, as_text);
    }
    case Value::Type::Array:
      throw Refusal();
    case Value::Type::Date:
      if (!(value.As<Date>().serial >= 0 && value.As<Date>().serial < kEndOfDates)) throw Refusal();
      return {value, u""};
    case Value::Type::Text: {
      const auto& text = value.As<std::u16string>();
      if (text.size() > kLongestText) throw Refusal();
      if (text.empty()) return {};
      if (as_text) return {text, u""};
      if (text[0] == u'\'') return {text.substr(1), u""};
      if (text[0] != u'=' || text.size() == 1) return {ReadText(text), u""};
      CheckFormula(text);
      return {Value(), text};
    }
    case Value::Type::Error:
    case Value::Type::Boolean:
    case Value::Type::Double:
    case Value::Type::Currency:
      break;
  }
  return {value, u""};
}

std::u16string ConstantText(const Value& value) {
  switch (value.type()) {
    case Value::Type::Boolean:
      return value.As<bool>() ? u"TRUE" : u"FALSE";
    case Value::Type::Error:
      return ErrorText(value.As<ErrorValue>());
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
    case Value::Type::Currency:
    case Value::Type::Date:
    case Value::Type::Double:
      return DescribeValue(value.ToDouble());
    case Value::Type::Text:
      return value.As<std::u16string>();
    default:
      return {};
  }
}

std::u16string DisplayText(const Value& value) {
  const bool is_regional =
      value.Is(Value::Type::Double) || value.Is(Value::Type::Currency) || value.Is(Value::Type::Date);
  return is_regional ? value.ToText() : ConstantText(value);
}

std::optional<double> ParseExcelNumber(std::u16string_view text) {
  text = Trim(text);
  bool is_negative = false;
  if (!text.empty() && (text[0] == u'+' || text[0] == u'-')) {
    is_negative = text[0] == u'-';
    text.remove_prefix(1);
  }
  double scale = is_negative ? -1 : 1;
  if (text.ends_with(u'%')) {
    scale /= 100;
    text.remove_suffix(1);
  }
  // A comma stands before each group of three digits of the whole part, or nowhere.
  std::string plain;
  const std::size_t whole_end = std::min(text.find_first_of(u".eE"), text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u',' && i > 0 && i < whole_end && (whole_end - i) % 4 == 0) continue;
    const bool after_e = i > 0 && (text[i - 1] == u'e' || text[i - 1] == u'E');
    const bool belongs = IsDigit(text[i]) || text[i] == u'.' || text[i] == u'e' || text[i] == u'E' ||
                         (after_e && (text[i] == u'-' || text[i] == u'+'));
    if (!belongs) return std::nullopt;
    if (text[i] == u'+') continue;  // of an exponent; the parser below knows no plus sign
    plain += static_cast<char>(text[i]);
  }
  double number = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (error != std::errc() || end != plain.data() + plain.size()) return std::nullopt;
  return number * scale;
}

std::u16string ErrorText(ErrorValue error) {
  for (const ErrorName& name : kErrorNames) {
    if (name.code == error.code) return std::u16string(name.text);
  }
  return u"#VALUE!";
}

std::optional<ErrorValue> ParseErrorPrefix(std::u16string_view text) {
  for (const ErrorName& name : kErrorNames) {
    if (EqualIgnoringCase(text.substr(0, name.text.size()), name.text)) return ErrorValue{name.code};
  }
  return std::nullopt;
}

}  // namespace qva::memory
