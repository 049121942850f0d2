#include "tests/corpus/interpreter/Functions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "platform/date.h"
#include "platform/error.h"
#include "platform/text.h"

namespace qva::corpus {
namespace {

using Type = Value::Type;

bool IsWhole(const Value& value) {
  return value.Is(Type::Byte) || value.Is(Type::Int16) || value.Is(Type::Int32);
}
bool IsNumber(const Value& value) {
  return IsWhole(value) || value.Is(Type::Double);
}

[[noreturn]] void Refuse(const std::string& what) {
  throw std::invalid_argument(what);
}

const Value& At(const std::vector<Value>& arguments, std::size_t index) {
  if (index >= arguments.size()) Refuse("an argument is missing");
  return arguments[index];
}
std::u16string TextAt(const std::vector<Value>& arguments, std::size_t index) {
  return At(arguments, index).ToText();
}
std::int32_t NumberAt(const std::vector<Value>& arguments, std::size_t index) {
  return At(arguments, index).ToInt32();
}
std::size_t CountAt(const std::vector<Value>& arguments, std::size_t index) {
  const std::int32_t count = NumberAt(arguments, index);
  if (count < 0) Refuse("a negative count");
  return static_cast<std::size_t>(count);
}

Value Length(const std::vector<Value>& a) {
  return static_cast<std::int32_t>(TextAt(a, 0).size());
}
Value Left(const std::vector<Value>& a) {
  return TextAt(a, 0).substr(0, CountAt(a, 1));
}
Value Right(const std::vector<Value>& a) {
  const std::u16string text = TextAt(a, 0);
  return text.substr(text.size() - std::min(text.size(), CountAt(a, 1)));
}
/// The place of a text in another one from 1 on; 0 when it is not there.
Value InStr(const std::vector<Value>& a) {
  const std::size_t found = TextAt(a, 0).find(TextAt(a, 1));
  return static_cast<std::int32_t>(found == std::u16string::npos ? 0 : found + 1);
}
Value Replace(const std::vector<Value>& a) {
  return ReplaceAll(TextAt(a, 0), TextAt(a, 1), TextAt(a, 2));
}
Value Repeat(const std::vector<Value>& a) {
  return std::u16string(CountAt(a, 0), TextAt(a, 1).at(0));
}
Value MakeArray(const std::vector<Value>& a) {
  return Array::Of(a);
}
Value MakeDate(const std::vector<Value>& a) {
  return DateFromParts(NumberAt(a, 0), NumberAt(a, 1), NumberAt(a, 2));
}

/// Whole numbers give the wider of their types, as long as it holds the result.
Value WholeResult(const Value& left, const Value& right, long long result) {
  const bool is_short = !left.Is(Type::Int32) && !right.Is(Type::Int32);
  const auto fits = [&]<class T>(T) {
    return result >= std::numeric_limits<T>::min() && result <= std::numeric_limits<T>::max();
  };
  if (is_short && fits(std::int16_t())) return static_cast<std::int16_t>(result);
  if (!fits(std::int32_t())) Refuse("a number beyond 32 bits");
  return static_cast<std::int32_t>(result);
}

Value Calculate(char16_t symbol, const Value& left, const Value& right) {
  if (!IsNumber(left) || !IsNumber(right)) Refuse("arithmetic with what is no number");
  const bool is_whole = IsWhole(left) && IsWhole(right);
  const double a = left.ToDouble(), b = right.ToDouble();
  switch (symbol) {
    case u'+':
      return is_whole ? WholeResult(left, right, std::llround(a + b)) : Value(a + b);
    case u'-':
      return is_whole ? WholeResult(left, right, std::llround(a - b)) : Value(a - b);
    case u'*':
      return is_whole ? WholeResult(left, right, std::llround(a * b)) : Value(a * b);
    default:
      break;
  }
  if (b == 0) Refuse("division by zero");
  if (symbol == u'/') return a / b;
  if (!is_whole) Refuse("whole division of fractions");
  const std::int64_t x = left.ToInt32(), y = right.ToInt32();
  return WholeResult(left, right, symbol == u'm' ? x % y : x / y);
}

bool Decide(std::u16string_view symbol, std::partial_ordering order) {
  if (symbol == u"=") return order == 0;
  if (symbol == u"<>") return order != 0;
  if (symbol == u"<") return order < 0;
  if (symbol == u">") return order > 0;
  if (symbol == u"<=") return order <= 0;
  return order >= 0;
}

Value Compare(std::u16string_view symbol, const Value& left, const Value& right) {
  if (IsNumber(left) && IsNumber(right)) return Decide(symbol, left.ToDouble() <=> right.ToDouble());
  if (left.type() != right.type()) Refuse("a comparison of values of two kinds");
  if (left.Is(Type::Text)) return Decide(symbol, left.ToText() <=> right.ToText());
  if (left.Is(Type::Date)) return Decide(symbol, left.ToDate().serial <=> right.ToDate().serial);
  if (left.Is(Type::Boolean) && (symbol == u"=" || symbol == u"<>"))
    return (left == right) == (symbol == u"=");
  Refuse("a comparison of what the engines do not compare alike");
}

bool TruthOf(const Value& value) {
  if (!value.Is(Type::Boolean)) Refuse("a Boolean is needed");
  return value.As<bool>();
}

}  // namespace

const Functions& BasicFunctions() {
  static const Functions functions = {
      {u"cbyte", [](const auto& a) { return Value(At(a, 0).ToByte()); }},
      {u"cint", [](const auto& a) { return Value(At(a, 0).ToInt16()); }},
      {u"clng", [](const auto& a) { return Value(At(a, 0).ToInt32()); }},
      {u"cdbl", [](const auto& a) { return Value(At(a, 0).ToDouble()); }},
      {u"cstr", [](const auto& a) { return Value(TextAt(a, 0)); }},
      {u"len", Length},
      {u"left", Left},
      {u"right", Right},
      {u"instr", InStr},
      {u"replace", Replace},
      {u"lcase", [](const auto& a) { return Value(ToLower(TextAt(a, 0))); }},
      {u"string", Repeat},
      {u"array", MakeArray},
      {u"dateserial", MakeDate},
      {u"isempty", [](const auto& a) { return Value(At(a, 0).Is(Type::Empty)); }},
      {u"vbcrlf", [](const auto&) { return Value(u"\r\n"); }},
  };
  return functions;
}

Value Operate(std::u16string_view symbol, const Value& left, const Value& right) {
  if (symbol == u"&") {
    for (const Value* value : {&left, &right}) {
      if (!value->Is(Type::Text) && !IsWhole(*value) && !value->Is(Type::Empty))
        Refuse("only texts and whole numbers are joined alike; use Show");
    }
    return left.ToText() + right.ToText();
  }
  if (symbol == u"and") return TruthOf(left) && TruthOf(right);
  if (symbol == u"or") return TruthOf(left) || TruthOf(right);
  if (symbol == u"mod" || std::u16string_view(u"+-*/\\").find(symbol) != std::u16string_view::npos)
    return Calculate(symbol[0], left, right);
  return Compare(symbol, left, right);
}

Value OperateUnary(std::u16string_view symbol, const Value& operand) {
  if (symbol == u"not") return !TruthOf(operand);
  return Calculate(u'-', Value(std::int16_t{0}), operand);
}

}  // namespace qva::corpus
