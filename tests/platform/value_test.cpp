#include "platform/value.h"

#include <limits>
#include <locale>

#include "platform/date.h"
#include "platform/error.h"
#include "platform/member_table.h"
#include "tests/platform/core_test.h"

namespace qva {
namespace {

/// An object whose default property has any value.
class Holder : public Described<Holder> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Holder", "").Property<&Holder::value>(u"Value").Default(u"Value");
  }
  Value value;
};

Value HolderOf(Value value) {
  auto holder = MakeRef<Holder>();
  holder->value = std::move(value);
  return holder;
}

class ValueTest : public CoreTest {
 protected:
  /// The number of the error of every conversion but those to an object and to an array, when it is one and
  /// the same; −1 otherwise.
  static std::int32_t ErrorOfEveryConversion(const Value& value) {
    const std::int32_t numbers[] = {
        RaisedBy([&] { value.ToBoolean(); }), RaisedBy([&] { value.ToByte(); }),
        RaisedBy([&] { value.ToInt16(); }),   RaisedBy([&] { value.ToInt32(); }),
        RaisedBy([&] { value.ToDouble(); }),  RaisedBy([&] { value.ToCurrency(); }),
        RaisedBy([&] { value.ToDate(); }),    RaisedBy([&] { value.ToText(); })};
    for (const std::int32_t number : numbers) {
      if (number != numbers[0]) return -1;
    }
    return numbers[0];
  }
};

TEST_F(ValueTest, HoldsTheTypeItWasMadeFrom) {
  const std::pair<Value, Value::Type> values[] = {
      {Value(), Value::Type::Empty},
      {Null{}, Value::Type::Null},
      {Missing{}, Value::Type::Missing},
      {ErrorValue{2042}, Value::Type::Error},
      {true, Value::Type::Boolean},
      {std::uint8_t{1}, Value::Type::Byte},
      {std::int16_t{1}, Value::Type::Int16},
      {1, Value::Type::Int32},
      {1.0, Value::Type::Double},
      {Currency{1}, Value::Type::Currency},
      {Date{1}, Value::Type::Date},
      {u"1", Value::Type::Text},
      {ObjectPtr(), Value::Type::Object},
      {Array{}, Value::Type::Array},
  };
  for (const auto& [value, type] : values) EXPECT_EQ(value.type(), type) << testing::PrintToString(value);
}

TEST_F(ValueTest, EmptyIsZeroFalseAndNoText) {
  const Value empty;
  EXPECT_FALSE(empty.ToBoolean());
  EXPECT_EQ(empty.ToByte(), 0);
  EXPECT_EQ(empty.ToInt16(), 0);
  EXPECT_EQ(empty.ToInt32(), 0);
  EXPECT_EQ(empty.ToDouble(), 0.0);
  EXPECT_EQ(empty.ToCurrency(), Currency{0});
  EXPECT_EQ(empty.ToDate(), Date{0});
  EXPECT_EQ(empty.ToText(), u"");
}

TEST_F(ValueTest, TrueIsMinusOneButTheGreatestByte) {
  const Value yes(true);
  EXPECT_TRUE(yes.ToBoolean());
  EXPECT_EQ(yes.ToByte(), 255);
  EXPECT_EQ(yes.ToInt16(), -1);
  EXPECT_EQ(yes.ToInt32(), -1);
  EXPECT_EQ(yes.ToDouble(), -1.0);
  EXPECT_EQ(yes.ToCurrency(), Currency{-10000});
  EXPECT_EQ(yes.ToDate(), Date{-1});
  EXPECT_EQ(yes.ToText(), u"True");
  EXPECT_EQ(Value(false).ToByte(), 0);
  EXPECT_EQ(Value(false).ToInt32(), 0);
  EXPECT_EQ(Value(false).ToText(), u"False");
}

TEST_F(ValueTest, WholeNumbersOfEveryWidthBecomeEveryType) {
  for (const Value& value : {Value(std::uint8_t{7}), Value(std::int16_t{7}), Value(7)}) {
    EXPECT_TRUE(value.ToBoolean());
    EXPECT_EQ(value.ToByte(), 7);
    EXPECT_EQ(value.ToInt16(), 7);
    EXPECT_EQ(value.ToInt32(), 7);
    EXPECT_EQ(value.ToDouble(), 7.0);
    EXPECT_EQ(value.ToCurrency(), Currency{70000});
    EXPECT_EQ(value.ToDate(), Date{7});
    EXPECT_EQ(value.ToText(), u"7");
  }
  EXPECT_EQ(Value(std::int16_t{-32768}).ToText(), u"-32768");
  EXPECT_EQ(Value(std::numeric_limits<std::int32_t>::min()).ToText(), u"-2147483648");
}

TEST_F(ValueTest, DoubleBecomesEveryType) {
  const Value value(2.25);
  EXPECT_TRUE(value.ToBoolean());
  EXPECT_EQ(value.ToByte(), 2);
  EXPECT_EQ(value.ToInt16(), 2);
  EXPECT_EQ(value.ToInt32(), 2);
  EXPECT_EQ(value.ToDouble(), 2.25);
  EXPECT_EQ(value.ToCurrency(), Currency{22500});
  EXPECT_EQ(value.ToDate(), Date{2.25});
  EXPECT_EQ(value.ToText(), u"2,25");
}

TEST_F(ValueTest, CurrencyBecomesEveryType) {
  const Value value(Currency{22500});
  EXPECT_TRUE(value.ToBoolean());
  EXPECT_EQ(value.ToByte(), 2);
  EXPECT_EQ(value.ToInt16(), 2);
  EXPECT_EQ(value.ToInt32(), 2);
  EXPECT_EQ(value.ToDouble(), 2.25);
  EXPECT_EQ(value.ToCurrency(), Currency{22500});
  EXPECT_EQ(value.ToDate(), Date{2.25});
  EXPECT_EQ(value.ToText(), u"2,25");
}

TEST_F(ValueTest, DateBecomesEveryType) {
  const Value value(Date{45455.75});
  EXPECT_TRUE(value.ToBoolean());
  EXPECT_EQ(Value(Date{200.5}).ToByte(), 200);
  EXPECT_EQ(Value(Date{200.5}).ToInt16(), 200);
  EXPECT_EQ(value.ToInt32(), 45456);
  EXPECT_EQ(value.ToDouble(), 45455.75);
  EXPECT_EQ(value.ToCurrency(), Currency{454557500});
  EXPECT_EQ(value.ToDate(), Date{45455.75});
  EXPECT_EQ(value.ToText(), u"2024-06-12 18:00:00");
}

TEST_F(ValueTest, NumberInTextBecomesEveryType) {
  const Value value(u" 2,5 ");
  EXPECT_TRUE(value.ToBoolean());
  EXPECT_EQ(value.ToByte(), 2);
  EXPECT_EQ(value.ToInt16(), 2);
  EXPECT_EQ(value.ToInt32(), 2);
  EXPECT_EQ(value.ToDouble(), 2.5);
  EXPECT_EQ(value.ToCurrency(), Currency{25000});
  EXPECT_EQ(value.ToDate(), Date{2.5});
  EXPECT_EQ(value.ToText(), u" 2,5 ");
}

TEST_F(ValueTest, NullRaises94InEveryConversion) {
  EXPECT_EQ(ErrorOfEveryConversion(Null{}), kInvalidUseOfNull);
}

TEST_F(ValueTest, MissingErrorAndArrayAreTypeMismatches) {
  EXPECT_EQ(ErrorOfEveryConversion(Missing{}), kTypeMismatch);
  EXPECT_EQ(ErrorOfEveryConversion(ErrorValue{2042}), kTypeMismatch);
  EXPECT_EQ(ErrorOfEveryConversion(Array::Of({1})), kTypeMismatch);
}

TEST_F(ValueTest, NothingRaises91InEveryConversion) {
  EXPECT_EQ(ErrorOfEveryConversion(ObjectPtr()), kObjectNotSet);
  EXPECT_TRUE(Value(ObjectPtr()).IsNothing());
  EXPECT_FALSE(HolderOf(1).IsNothing());
  EXPECT_FALSE(Value().IsNothing());
}

TEST_F(ValueTest, ObjectStandsForItsDefaultProperty) {
  EXPECT_TRUE(HolderOf(u"True").ToBoolean());
  EXPECT_EQ(HolderOf(7).ToByte(), 7);
  EXPECT_EQ(HolderOf(true).ToByte(), 255);
  EXPECT_EQ(HolderOf(7).ToInt16(), 7);
  EXPECT_EQ(HolderOf(2.5).ToInt32(), 2);
  EXPECT_EQ(HolderOf(u"2,5").ToDouble(), 2.5);
  EXPECT_EQ(HolderOf(Currency{9007199254740993}).ToCurrency(), Currency{9007199254740993});
  EXPECT_EQ(HolderOf(u"2024-06-12").ToDate(), Date{45455});
  EXPECT_EQ(HolderOf(Date{45455}).ToText(), u"2024-06-12");
  EXPECT_EQ(ErrorOfEveryConversion(HolderOf(Null{})), kInvalidUseOfNull);
  EXPECT_EQ(ErrorOfEveryConversion(HolderOf(HolderOf(1))), kTypeMismatch);
}

TEST_F(ValueTest, ObjectWithoutDefaultPropertyRaises438) {
  class Plain : public Described<Plain> {
   public:
    static ClassBuilder Describe() { return ClassBuilder(u"Plain", ""); }
  };
  EXPECT_EQ(ErrorOfEveryConversion(MakeRef<Plain>()), kUnsupportedMember);
}

TEST_F(ValueTest, OnlyObjectsBecomeObjectsAndOnlyArraysArrays) {
  const Value holder = HolderOf(1);
  EXPECT_EQ(holder.ToObject()->TypeName(), u"Holder");
  EXPECT_EQ(Value(ObjectPtr()).ToObject(), nullptr);
  EXPECT_EQ(Array::Of({5, 6}, 1).ToArray().elements[1], Value(6));
  for (const Value& value : {Value(), Value(Null{}), Value(Missing{}), Value(0), Value(u"")}) {
    EXPECT_EQ(RaisedBy([&] { value.ToObject(); }), kTypeMismatch) << testing::PrintToString(value);
    EXPECT_EQ(RaisedBy([&] { value.ToArray(); }), kTypeMismatch) << testing::PrintToString(value);
  }
  EXPECT_EQ(RaisedBy([&] { holder.ToArray(); }), kTypeMismatch);
}

TEST_F(ValueTest, WholeNumbersRoundHalfToEven) {
  const std::pair<double, std::int32_t> roundings[] = {{0.5, 0},
                                                       {1.5, 2},
                                                       {2.5, 2},
                                                       {3.5, 4},
                                                       {-0.5, 0},
                                                       {-1.5, -2},
                                                       {-2.5, -2},
                                                       {0.4999, 0},
                                                       {0.501, 1},
                                                       {-0.6, -1},
                                                       {-0.4, 0},
                                                       {0.49999999999999994, 0},
                                                       {1e9 + .5, 1000000000}};
  for (const auto& [number, rounded] : roundings) EXPECT_EQ(Value(number).ToInt32(), rounded) << number;
  EXPECT_EQ(Value(2.5).ToInt16(), 2);
  EXPECT_EQ(Value(2.5).ToByte(), 2);
  EXPECT_EQ(Value(u"3,5").ToInt16(), 4);
  EXPECT_EQ(Value(Currency{25000}).ToInt32(), 2);
  EXPECT_EQ(Value(0.00025).ToCurrency(), Currency{2});
  EXPECT_EQ(Value(0.00035).ToCurrency(), Currency{4});
}

TEST_F(ValueTest, NumbersBeyondATypesBoundsOverflow) {
  EXPECT_EQ(Value(255.5 - 0.1).ToByte(), 255);
  EXPECT_EQ(Value(-0.5).ToByte(), 0);
  EXPECT_EQ(RaisedBy([] { Value(255.5).ToByte(); }), kOverflow);
  EXPECT_EQ(RaisedBy([] { Value(-1).ToByte(); }), kOverflow);
  EXPECT_EQ(Value(32767.4).ToInt16(), 32767);
  EXPECT_EQ(Value(-32768.5).ToInt16(), -32768);
  EXPECT_EQ(RaisedBy([] { Value(32767.5).ToInt16(); }), kOverflow);
  EXPECT_EQ(RaisedBy([] { Value(-32769).ToInt16(); }), kOverflow);
  EXPECT_EQ(Value(2147483647.4).ToInt32(), 2147483647);
  EXPECT_EQ(Value(-2147483648.5).ToInt32(), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(RaisedBy([] { Value(2147483647.5).ToInt32(); }), kOverflow);
  EXPECT_EQ(RaisedBy([] { Value(u"-2147483649").ToInt32(); }), kOverflow);
  EXPECT_EQ(Value(922337203685477.0).ToCurrency(), Currency{9223372036854770000});
  EXPECT_EQ(Value(922337203685477.5).ToCurrency(), Currency{9223372036854775000});
  EXPECT_EQ(Value(-922337203685477.5).ToCurrency(), Currency{-9223372036854775000});
  EXPECT_EQ(RaisedBy([] { Value(922337203685477.625).ToCurrency(); }), kOverflow);
  EXPECT_EQ(RaisedBy([] { Value(-922337203685477.625).ToCurrency(); }), kOverflow);
  EXPECT_EQ(RaisedBy([] { Value(922337203685478.0).ToCurrency(); }), kOverflow);
  EXPECT_EQ(RaisedBy([] { Value(-922337203685478.0).ToCurrency(); }), kOverflow);
}

TEST_F(ValueTest, ATextWithANumberTooGreatForADoubleOverflows) {
  const std::u16string zeros(400, u'0');
  for (const std::u16string& text :
       {std::u16string(u"1e400"), std::u16string(u"-1E+400"), std::u16string(u"0,5e400"),
        std::u16string(u"0,001e400"), u"1" + zeros, u"1" + zeros + u"e-50", u"0," + zeros + u"1e800",
        std::u16string(u"0,1e99999999999999999999")}) {
    EXPECT_EQ(RaisedBy([&] { Value(text).ToDouble(); }), kOverflow) << ToUtf8(text);
  }
}

TEST_F(ValueTest, ATextWithANumberTooSmallForADoubleIsZero) {
  const std::u16string zeros(400, u'0');
  for (const std::u16string& text :
       {std::u16string(u"1e-400"), std::u16string(u"100e-400"), std::u16string(u"0,5e-400"),
        u"0," + zeros + u"1", u"0," + zeros + u"1e10", u"1" + zeros + u"e-800", std::u16string(u"0e400"),
        std::u16string(u"0,0e99999999999999999999"), std::u16string(u"1e-99999999999999999999")}) {
    EXPECT_EQ(Value(text).ToDouble(), 0.0) << ToUtf8(text);
  }
  EXPECT_EQ(Value(u"0," + zeros + u"1e401").ToDouble(), 1.0) << "the exponent makes up for the zeros";
}

TEST_F(ValueTest, WhatIsNoNumberOverflowsWholeNumbers) {
  for (const double number :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(RaisedBy([=] { Value(number).ToByte(); }), kOverflow);
    EXPECT_EQ(RaisedBy([=] { Value(number).ToInt32(); }), kOverflow);
    EXPECT_EQ(RaisedBy([=] { Value(number).ToCurrency(); }), kOverflow);
    EXPECT_EQ(RaisedBy([=] { Value(number).ToDate(); }), kOverflow);
  }
}

TEST_F(ValueTest, DatesReachFromYear100To9999) {
  EXPECT_EQ(PartsOf(Value(-657434).ToDate()).year, 100);
  EXPECT_EQ(PartsOf(Value(-657434.75).ToDate()).hour, 18);
  EXPECT_EQ(RaisedBy([] { Value(-657435).ToDate(); }), kOverflow);
  EXPECT_EQ(PartsOf(Value(2958465.5).ToDate()).year, 9999);
  EXPECT_EQ(RaisedBy([] { Value(2958466).ToDate(); }), kOverflow);
}

TEST_F(ValueTest, TextNumbersFollowTheRegionalDecimalSeparator) {
  EXPECT_EQ(Value(u"1234,5").ToDouble(), 1234.5);
  EXPECT_EQ(Value(u"-,5").ToDouble(), -0.5);
  EXPECT_EQ(Value(u"+5,").ToDouble(), 5.0);
  EXPECT_EQ(Value(u"1,5E3").ToDouble(), 1500.0);
  EXPECT_EQ(Value(u"15e-1").ToDouble(), 1.5);
  EXPECT_EQ(RaisedBy([] { Value(u"1.5").ToDouble(); }), kTypeMismatch);
  platform.locale.decimal_separator = u".";
  EXPECT_EQ(Value(u"1.5").ToDouble(), 1.5);
  EXPECT_EQ(RaisedBy([] { Value(u"1,5").ToDouble(); }), kTypeMismatch);
  platform.locale.decimal_separator = u"::";
  EXPECT_EQ(Value(u"1::5").ToDouble(), 1.5);
}

TEST_F(ValueTest, NumbersInTextDoNotDependOnTheLocaleOfTheProcess) {
  // A process around the library, such as a desktop program, sets the C and C++ locales to the user's.
  struct CommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ';'; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale(), new CommaPoint));
  EXPECT_EQ(Value(u"1,5").ToDouble(), 1.5);
  EXPECT_EQ(Value(1.5).ToText(), u"1,5");
  std::locale::global(before);
}

TEST_F(ValueTest, HexadecimalTextIsSignedByItsLength) {
  EXPECT_EQ(Value(u"&HFF").ToInt32(), 255);
  EXPECT_EQ(Value(u"&hffff").ToInt32(), -1);
  EXPECT_EQ(Value(u"&H10000").ToInt32(), 65536);
  EXPECT_EQ(Value(u"&HFFFFFFFF").ToInt32(), -1);
  EXPECT_EQ(Value(u"&H80000000").ToInt32(), std::numeric_limits<std::int32_t>::min());
  for (const char16_t* text : {u"&H", u"&HG", u"&H123456789"}) {
    EXPECT_EQ(RaisedBy([=] { Value(text).ToInt32(); }), kTypeMismatch) << ToUtf8(text);
  }
}

TEST_F(ValueTest, TextThatIsNoNumberIsATypeMismatch) {
  for (const char16_t* text :
       {u"", u" ", u"abc", u"1a", u"1,2,3", u"1 2", u"-", u",", u"1e", u"1e+", u"--1"}) {
    EXPECT_EQ(RaisedBy([=] { Value(text).ToDouble(); }), kTypeMismatch) << ToUtf8(text);
    EXPECT_EQ(RaisedBy([=] { Value(text).ToBoolean(); }), kTypeMismatch) << ToUtf8(text);
    EXPECT_EQ(RaisedBy([=] { Value(text).ToCurrency(); }), kTypeMismatch) << ToUtf8(text);
  }
}

TEST_F(ValueTest, TextBecomesABooleanByWordOrNumber) {
  for (const char16_t* text : {u"True", u"TRUE", u"true", u"#TRUE#", u"1", u"-1", u"0,1", u"&H1"}) {
    EXPECT_TRUE(Value(text).ToBoolean()) << ToUtf8(text);
  }
  for (const char16_t* text : {u"False", u"false", u"#FALSE#", u"0", u"0,0"}) {
    EXPECT_FALSE(Value(text).ToBoolean()) << ToUtf8(text);
  }
  EXPECT_EQ(RaisedBy([] { Value(u"yes").ToBoolean(); }), kTypeMismatch);
}

TEST_F(ValueTest, DoublesAreWrittenWithUpTo15Digits) {
  const std::pair<double, const char16_t*> texts[] = {
      {0.0, u"0"},
      {-0.0, u"0"},
      {1.0, u"1"},
      {-1.5, u"-1,5"},
      {0.1, u"0,1"},
      {0.1 + 0.2, u"0,3"},
      {1.0 / 3, u"0,333333333333333"},
      {2.0 / 3, u"0,666666666666667"},
      {1.0 / 30, u"3,33333333333333E-02"},
      {123456.789, u"123456,789"},
      {100000.0, u"100000"},
      {0.00001, u"0,00001"},
      {123456789012345.0, u"123456789012345"},
      {999999999999999.0, u"999999999999999"},
      {1e15, u"1E+15"},
      {-1234567890123456.0, u"-1,23456789012346E+15"},
      {1e100, u"1E+100"},
      {1.5e-20, u"1,5E-20"},
      {1e-300, u"1E-300"},
      {999999999999999.9, u"1E+15"},
  };
  for (const auto& [number, text] : texts) {
    EXPECT_EQ(ToUtf8(Value(number).ToText()), ToUtf8(text)) << number;
  }
}

TEST_F(ValueTest, WhatIsNoNumberIsWrittenAsOnWindows) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Value(infinity).ToText(), u"1.#INF");
  EXPECT_EQ(Value(-infinity).ToText(), u"-1.#INF");
  EXPECT_EQ(Value(std::nan("")).ToText(), u"-1.#IND");
}

TEST_F(ValueTest, CurrencyFromTextIsExactToItsNineteenDigits) {
  const std::pair<const char16_t*, std::int64_t> amounts[] = {
      {u"922337203685477,5807", std::numeric_limits<std::int64_t>::max()},
      {u"-922337203685477,5808", std::numeric_limits<std::int64_t>::min()},
      {u"900719925474099,3001", 9007199254740993001},
      {u"0,1", 1000},
      {u",0001", 1},
      {u"12", 120000},
      {u"+007,5", 75000},
      {u"1,5e3", 15000000},
      {u"15e-4", 15},
      {u"0,000015e2", 15},
      {u"0,00025", 2},
      {u"0,00035", 4},
      {u"0,000250001", 3},
      {u"0,00005", 0},
      {u"0,000050001", 1},
      {u"0,00015", 2},
      {u"0,000049999", 0},
      {u"922337203685477,58070", std::numeric_limits<std::int64_t>::max()},
      {u"922337203685477,58074", std::numeric_limits<std::int64_t>::max()},
      {u"1e-999999999999999999999", 0},
      {u"0e999999999999999999999", 0},
      {u"&HFFFF", -10000},
      {u"&H80000000", std::int64_t{-2147483648} * 10000},
  };
  for (const auto& [text, scaled] : amounts) {
    EXPECT_EQ(Value(text).ToCurrency(), Currency{scaled}) << ToUtf8(text);
  }
  for (const char16_t* text : {u"922337203685477,5808", u"-922337203685477,5809", u"922337203685477,58075",
                               u"1e15", u"1e400", u"1e999999999999999999999", u"9999999999999999999"}) {
    EXPECT_EQ(RaisedBy([=] { Value(text).ToCurrency(); }), kOverflow) << ToUtf8(text);
  }
}

TEST_F(ValueTest, ADateOutOfItsRangeOverflowsAlsoWhenItIsADateAlready) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double serial : {std::nan(""), infinity, -infinity, 1e300, -1e300, 1e10, 2958466.0, -657435.0}) {
    const Value value(Date{serial});
    EXPECT_EQ(RaisedBy([&] { value.ToDate(); }), kOverflow) << serial;
    EXPECT_EQ(RaisedBy([&] { value.ToText(); }), kOverflow) << serial;
    EXPECT_EQ(RaisedBy([&] { HolderOf(value).ToDate(); }), kOverflow) << serial;
    EXPECT_TRUE(DescribeValue(value).starts_with(u"#")) << serial;
  }
  EXPECT_EQ(Value(Date{2958465.99}).ToDate(), Date{2958465.99});
  EXPECT_EQ(Value(Date{-657434.5}).ToDate(), Date{-657434.5});
}

TEST_F(ValueTest, CurrencyIsWrittenWithUpToFourDecimals) {
  const std::pair<std::int64_t, const char16_t*> texts[] = {
      {0, u"0"},
      {1, u"0,0001"},
      {-1, u"-0,0001"},
      {12500, u"1,25"},
      {10000, u"1"},
      {std::numeric_limits<std::int64_t>::max(), u"922337203685477,5807"},
      {std::numeric_limits<std::int64_t>::min(), u"-922337203685477,5808"},
  };
  for (const auto& [scaled, text] : texts) {
    EXPECT_EQ(ToUtf8(Value(Currency{scaled}).ToText()), ToUtf8(text)) << scaled;
  }
}

TEST_F(ValueTest, DatesAreWrittenByTheRegionalPatterns) {
  const std::pair<double, const char16_t*> texts[] = {
      {45455, u"2024-06-12"},
      {45455.25, u"2024-06-12 06:00:00"},
      {0, u"1899-12-30"},
      {0.5, u"12:00:00"},
      {-0.5, u"12:00:00"},
      {-1.25, u"1899-12-29 06:00:00"},
      {1.75, u"1899-12-31 18:00:00"},
      {45455 + 1e-7, u"2024-06-12"},
      {0.9999999, u"1899-12-31"},
  };
  for (const auto& [serial, text] : texts) {
    EXPECT_EQ(ToUtf8(Value(Date{serial}).ToText()), ToUtf8(text)) << serial;
  }
  platform.locale.short_date_pattern = u"d.M.yy";
  platform.locale.long_time_pattern = u"h:mm:ss tt";
  EXPECT_EQ(Value(Date{45455.75}).ToText(), u"12.6.24 6:00:00 popiet");
}

TEST_F(ValueTest, TextBecomesADateBeforeItCountsAsANumber) {
  EXPECT_EQ(Value(u"2024-06-12").ToDate(), Date{45455});
  EXPECT_EQ(Value(u"2024-06-12 06:00").ToDate(), Date{45455.25});
  EXPECT_EQ(Value(u"12:00").ToDate(), Date{0.5});
  EXPECT_EQ(Value(u"45455,5").ToDate(), Date{45455.5});
  EXPECT_EQ(RaisedBy([] { Value(u"birželis").ToDate(); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([] { Value(u"2024-13-01").ToDate(); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([] { Value(u"9999999").ToDate(); }), kOverflow);
}

TEST_F(ValueTest, EqualsByTypeAndContent) {
  EXPECT_EQ(Value(1), Value(1));
  EXPECT_NE(Value(1), Value(1.0));
  EXPECT_NE(Value(1), Value(std::int16_t{1}));
  EXPECT_NE(Value(), Value(Null{}));
  const Value holder = HolderOf(1);
  EXPECT_EQ(holder, Value(holder));
  EXPECT_NE(holder, HolderOf(1));
  const Value array = Array::Of({1});
  EXPECT_EQ(array, Value(array));
  EXPECT_NE(array, Array::Of({1}));
}

TEST_F(ValueTest, ArraysKeepTheirBounds) {
  const Value row = Array::Of({u"a", u"b"}, 1);
  EXPECT_EQ(row.ToArray().dimensions.size(), 1u);
  EXPECT_EQ(row.ToArray().dimensions[0].lower, 1);
  EXPECT_EQ(row.ToArray().dimensions[0].count, 2);
  const Value block = Array::Block(2, 3, {1, 2, 3, 4, 5, 6});
  ASSERT_EQ(block.ToArray().dimensions.size(), 2u);
  EXPECT_EQ(block.ToArray().dimensions[0].count, 2);
  EXPECT_EQ(block.ToArray().dimensions[1].lower, 1);
  EXPECT_EQ(block.ToArray().dimensions[1].count, 3);
}

TEST_F(ValueTest, AreDescribedAsAMacroWouldWriteThem) {
  const std::pair<Value, const char*> descriptions[] = {
      {Value(), "Empty"},
      {Null{}, "Null"},
      {Missing{}, "Missing"},
      {ErrorValue{2042}, "Error 2042"},
      {true, "True"},
      {std::uint8_t{7}, "7"},
      {1.5, "1.5"},
      {Currency{12500}, "1.25@"},
      {Date{45455}, "#2024-06-12#"},
      {Date{45455.25}, "#2024-06-12 06:00:00#"},
      {u"say \"ąž\"", "\"say \"\"ąž\"\"\""},
      {ObjectPtr(), "Nothing"},
      {HolderOf(1), "<Holder>"},
      {Array::Of({1, u"a", Value()}), "Array(1, \"a\", Empty)"},
  };
  for (const auto& [value, text] : descriptions) EXPECT_EQ(ToUtf8(DescribeValue(value)), text);
}

}  // namespace
}  // namespace qva
