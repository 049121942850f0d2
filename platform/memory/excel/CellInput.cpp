#include "platform/memory/excel/CellInput.h"

#include <cmath>

#include "platform/automation.h"
#include "platform/excel_constants.h"
#include "platform/memory/excel/Formula.h"
#include "platform/memory/excel/Refusals.h"
#include "platform/memory/excel/TypedText.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::size_t kLongestText = 32767;

struct ErrorName {
  XlCVError code;
  std::u16string_view text;
};
constexpr ErrorName kErrorNames[] = {
    {xlErrNull, u"#NULL!"}, {xlErrDiv0, u"#DIV/0!"}, {xlErrValue, u"#VALUE!"}, {xlErrRef, u"#REF!"},
    {xlErrName, u"#NAME?"}, {xlErrNum, u"#NUM!"},    {xlErrNA, u"#N/A"}};

CellEntry ReadText(const std::u16string& text) {
  if (auto typed = ReadTypedText(text)) return {typed->number, u"", std::move(typed->format)};
  if (EqualIgnoringCase(text, u"TRUE")) return {true};
  if (EqualIgnoringCase(text, u"FALSE")) return {false};
  const auto error = ParseErrorPrefix(text);
  if (error && EqualIgnoringCase(text, ErrorText(*error))) return {*error};
  return {text};
}

/// A day, a time of day, or both.
CellEntry ReadDateValue(Date date) {
  const double day = date.serial;
  if (!(day >= 0 && day < kEndOfDates)) throw Refusal();
  const bool has_time = day != std::floor(day);
  return {day, u"", day < 1 && has_time ? u"h:mm:ss AM/PM" : has_time ? u"m/d/yyyy h:mm" : u"m/d/yyyy"};
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
  if (as_text && IsNumberOrBoolean(value)) return {ConstantText(value)};
  switch (value.type()) {
    case Value::Type::Empty:
    case Value::Type::Null:
    case Value::Type::Missing:
      return {};
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
      return {value.ToDouble()};
    case Value::Type::Object: {
      const Value plain = Get(value.ToObject(), u"");
      if (plain.Is(Value::Type::Object)) throw AutomationError(kTypeMismatch);
      return ReadEntry(plain, as_text);
    }
    case Value::Type::Array:
      throw Refusal();
    case Value::Type::Date:
      return ReadDateValue(value.As<Date>());
    case Value::Type::Currency:
      return {value.ToDouble(), u"", u"$#,##0.00"};
    case Value::Type::Text: {
      const auto& text = value.As<std::u16string>();
      if (text.size() > kLongestText) throw Refusal();
      if (text.empty()) return {};
      if (as_text) return {text};
      if (text[0] == u'\'') return {text.substr(1)};
      if (text[0] != u'=' || text.size() == 1) return ReadText(text);
      CheckFormula(text);
      return {Value(), text};
    }
    case Value::Type::Error:
    case Value::Type::Boolean:
    case Value::Type::Double:
      break;
  }
  return {value};
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
