#include "host/SqlText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

#include "host/HostError.h"
#include "platform/date.h"
#include "platform/text.h"

namespace qva::embedded {
namespace {

AutomationError Wrong(std::u16string_view member, std::u16string_view cause) {
  return HostError(Failure::WrongParameters, kCommonLibrary,
                   std::u16string(member) + u" " + std::u16string(cause));
}

bool IsName(std::u16string_view text) {
  const auto is_allowed = [](char16_t c) { return IsBasicLetter(c) || IsDigit(c) || c == u'_'; };
  return !text.empty() && !IsDigit(text.front()) && std::all_of(text.begin(), text.end(), is_allowed);
}

std::u16string Quoted(std::u16string_view text) {
  return u"'" + ReplaceAll(text, u"'", u"''") + u"'";
}

/// The shortest text that gives the same number back.
std::u16string DoubleText(double number) {
  char text[32];
  const auto end = std::to_chars(std::begin(text), std::end(text), number).ptr;
  return FromUtf8({text, static_cast<std::size_t>(end - text)});
}

/// All digits of an amount, without the sign that tells its type.
std::u16string CurrencyText(const Value& amount) {
  std::u16string text = DescribeValue(amount);
  text.pop_back();
  return text;
}

std::u16string DateText(Date date) {
  const DateParts parts = PartsOf(date);
  if (parts.hour == 0 && parts.minute == 0 && parts.second == 0) return DayText(date);
  return FormatByWindowsPattern(date, u"yyyy-MM-dd HH:mm:ss");
}

}  // namespace

void CheckName(std::u16string_view name, std::u16string_view member) {
  if (!IsName(name)) throw Wrong(member, u"needs a name, which \"" + std::u16string(name) + u"\" is not");
}

void CheckField(std::u16string_view field, std::u16string_view member) {
  const std::size_t point = field.find(u'.');
  const bool is_field = point == std::u16string_view::npos
                            ? IsName(field)
                            : IsName(field.substr(0, point)) && IsName(field.substr(point + 1));
  if (!is_field) throw Wrong(member, u"needs a field, which \"" + std::u16string(field) + u"\" is not");
}

void CheckPart(std::u16string_view text, std::u16string_view member) {
  if (Trim(text).empty()) throw Wrong(member, u"needs a condition");
}

std::u16string SqlLiteral(const Value& value, std::u16string_view member) {
  switch (value.type()) {
    case Value::Type::Text: {
      const auto& text = value.As<std::u16string>();
      if (text.find(u'\0') != std::u16string::npos) {
        throw Wrong(member, u"needs a value without null characters");
      }
      return Quoted(text);
    }
    case Value::Type::Boolean:
      return value.As<bool>() ? u"1" : u"0";
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
      return NumberText(value.ToInt32());
    case Value::Type::Currency:
      return CurrencyText(value);
    case Value::Type::Double:
      if (!std::isfinite(value.ToDouble())) break;
      return DoubleText(value.ToDouble());
    case Value::Type::Date:
      return Quoted(DateText(value.ToDate()));
    default:
      break;
  }
  throw Wrong(member, u"needs a text, number, Boolean or date, which " + DescribeValue(value) + u" is not");
}

std::u16string DayText(Date date) {
  return FormatByWindowsPattern(date, u"yyyy-MM-dd");
}

}  // namespace qva::embedded
