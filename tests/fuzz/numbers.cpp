// Numbers from text and to text, by the user's decimal separator.
#include <cmath>

#include "platform/memory/MemoryPlatform.h"
#include "platform/number.h"
#include "tests/fuzz/fuzz.h"

namespace qva {
namespace {

constexpr double kGreatestAmount = 922337203685477.5807;

/// Whether a conversion of a number went through exactly where its range says so. Within `slack` of the ends
/// either is right.
bool IsByRange(std::int32_t error, double number, double least, double greatest, double slack) {
  if (number > least + slack && number < greatest - slack) return error == 0;
  if (number < least - slack || number > greatest + slack) return error == kOverflow;
  return error == 0 || error == kOverflow;
}

/// Whether a number was rounded to the nearest whole one, a half to the even one.
bool IsRounded(double whole, double number) {
  const double distance = std::abs(whole - number);
  return distance < 0.5 || (distance == 0.5 && std::fmod(whole, 2) == 0);
}

/// A conversion to whole numbers of a range.
template <class Conversion>
void CheckWhole(Conversion convert, double number, double least, double greatest, const char* what) {
  double whole = 0;
  const std::int32_t error = RaisedBy([&] { whole = convert(); });
  Require(IsByRange(error, number, least - 0.5, greatest + 0.5, 1e-6), what);
  Require(error != 0 || IsRounded(whole, number), what);
}

void CheckConversions(const Value& value, double number) {
  CheckWhole([&] { return value.ToInt32(); }, number, -2147483648.0, 2147483647.0, "a rounded Int32");
  CheckWhole([&] { return value.ToInt16(); }, number, -32768, 32767, "a rounded Int16");
  CheckWhole([&] { return value.ToByte(); }, number, 0, 255, "a rounded byte");
  double amount = number;
  Require(IsByRange(RaisedBy([&] { amount = static_cast<double>(value.ToCurrency().scaled) / 10000; }),
                    number, -kGreatestAmount, kGreatestAmount, 1) &&
              !(std::abs(amount - number) > 0.0000501 + std::abs(number) * 1e-15),
          "an amount is the nearest one, or an overflow");
  Require(IsByRange(RaisedBy([&] { value.ToDate(); }), number, -657435, 2958466, 1e-9) ||
              value.Is(Value::Type::Text),
          "a date lies between the years 100 and 9999");
}

void CheckText(const std::u16string& text) {
  const Value value(text);
  double number = 0;
  const std::int32_t error = RaisedBy([&] { number = value.ToDouble(); });
  Require(error == 0 || error == kTypeMismatch || error == kOverflow, "errors are 6 and 13");
  Require(std::isfinite(number), "text gives finite numbers");
  if (error == 0) {
    CheckConversions(value, number);
    Require(value.ToBoolean() == (number != 0), "0 is false");
  } else if (error == kTypeMismatch) {
    Require(RaisedBy([&] { value.ToCurrency(); }) == error, "no number is no amount");
    Require(RaisedBy([&] { value.ToInt32(); }) == error, "no number is no whole number");
  }
}

void CheckNumber(double number) {
  const std::u16string text = Value(number).ToText();
  if (!std::isfinite(number)) {
    Require(RaisedBy([&] { Value(text).ToDouble(); }) == kTypeMismatch, "no number is read as none");
    return;
  }
  CheckConversions(number, number);
  // Its 15 digits round to more than there is.
  if (std::abs(number) > 1.797693134862315e308) return;
  const double read = Value(text).ToDouble();
  Require(std::abs(read - number) <= std::abs(number) * 5.1e-15, "15 digits are kept");
  Require(Value(read).ToText() == text, "a number that was read is written the same");
}

}  // namespace
}  // namespace qva

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  static MemoryPlatform platform;
  InstallServices(platform.services());
  FuzzInput input(data, size);
  platform.locale.decimal_separator =
      input.PickValueInArray<std::u16string_view>({u",", u".", u"\u066B", u",-"});
  while (input.remaining_bytes() > 0) {
    CheckText(TextFrom(input));
    CheckNumber(DoubleFrom(input));
    const Currency amount{input.ConsumeIntegral<std::int64_t>()};
    Require(Value(Value(amount).ToText()).ToCurrency() == amount, "an amount keeps all its digits");
    const auto whole = input.ConsumeIntegral<std::int32_t>();
    Require(Value(Value(whole).ToText()).ToInt32() == whole, "a whole number is read as it was written");
    Require(!std::isnan(LeadingDecimal(input.ConsumeRandomLengthString(20))), "a number is at the beginning");
  }
  return 0;
}
