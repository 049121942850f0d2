// The condition builder: whatever characters a value has, for SQL it stays that one value.
#include "host/ConditionBuilder.h"

#include <cmath>

#include "host/Database.h"
#include "host/HostError.h"
#include "platform/date.h"
#include "tests/fuzz/fuzz.h"

namespace qva::embedded {
namespace {

constexpr std::int32_t kWrong = kObjectErrorBase + static_cast<std::int32_t>(Failure::WrongParameters);

Value ValueFrom(FuzzInput& input) {
  switch (input.ConsumeIntegralInRange(0, 7)) {
    case 0:
      return input.ConsumeBool();
    case 1:
      return input.ConsumeIntegral<std::int32_t>();
    case 2:
      return DoubleFrom(input);
    case 3:
      return Currency{input.ConsumeIntegral<std::int64_t>()};
    case 4:
      return Date{DoubleFrom(input)};
    case 5:
      return Null{};
    default:
      return TextFrom(input);
  }
}

/// The one row of one column that an expression gives, as text.
std::u16string Evaluated(std::u16string_view expression) {
  static const Database database(":memory:", Database::Mode::Write);
  const Statement statement = database.Prepare("SELECT " + ToUtf8(expression), Author::Caller);
  Require(statement.ParameterCount() == 0, "a value has no parameters");
  Cursor row = statement.Run({});
  Require(row.Next(), "a value is one row");
  std::u16string text = row.Text(0);
  Require(!row.Next(), "a value is no second row");
  return text;
}

std::u16string Hex(std::string_view bytes) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  std::u16string hex;
  for (const char byte : bytes) {
    const auto b = static_cast<unsigned char>(byte);
    hex += {kDigits[b >> 4], kDigits[b & 0xF]};
  }
  return hex;
}

void CheckLiteral(const std::u16string& literal, const Value& value) {
  const std::u16string result = Evaluated(literal);
  switch (value.type()) {
    case Value::Type::Text:
      // By its bytes: what SQLite gives as UTF-16 lacks the characters that Unicode has set apart.
      Require(Evaluated(u"hex(" + literal + u")") == Hex(ToUtf8(value.As<std::u16string>())),
              "a text stays what it is");
      break;
    case Value::Type::Boolean:
      Require(result == (value.As<bool>() ? u"1" : u"0"), "a Boolean is 1 or 0");
      break;
    case Value::Type::Int32:
      Require(result == literal, "a whole number stays what it is");
      break;
    case Value::Type::Double:
      Require(std::strtod(ToUtf8(literal).c_str(), nullptr) == value.As<double>(),
              "a number keeps its digits");
      break;
    case Value::Type::Date:
      Require(result == FormatByWindowsPattern(value.As<Date>(),
                                               result.size() == 10 ? u"yyyy-MM-dd" : u"yyyy-MM-dd HH:mm:ss"),
              "a date stays what it is");
      break;
    default:
      Require(value.Is(Value::Type::Currency), "nothing else is a value");
  }
}

}  // namespace
}  // namespace qva::embedded

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  using namespace qva::embedded;
  FuzzInput input(data, size);
  const auto builder = MakeRef<ConditionBuilder>();
  const Value value = ValueFrom(input);
  const std::u16string field = TextFrom(input, 20);

  std::u16string condition;
  const std::int32_t error = RaisedBy([&] { condition = builder->Equal(u"Doc.X", value); });
  const bool is_overflow = error == kOverflow && value.Is(Value::Type::Date);
  Require(error == 0 || error == kWrong || is_overflow, "errors are those of wrong parameters");
  if (error == 0) {
    Require(condition.starts_with(u"Doc.X = "), "the field comes first");
    CheckLiteral(condition.substr(8), value);
    const std::u16string both = builder->And(condition, builder->In(u"X", u"(SELECT 1)"));
    const std::u16string query = u"(SELECT count(*) FROM (SELECT 1 AS X) AS Doc WHERE " + both + u")";
    Require(Evaluated(query).size() == 1, "conditions are put together");
  }
  std::u16string of_field;
  if (RaisedBy([&] { of_field = builder->Equal(field, u"'"); }) == 0) {
    constexpr std::u16string_view kAllowed =
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.";
    Require(!field.empty() && field.find_first_not_of(kAllowed) == field.npos, "a field is a name");
    Require(of_field == field + u" = ''''", "and stands in front");
  }
  return 0;
}
