#include "platform/memory/excel/CellInput.h"

#include <gtest/gtest.h>

#include "platform/excel_constants.h"
#include "tests/platform/core_test.h"

namespace qva::memory {
namespace {

using CellInputTest = CoreTest;

Value Entered(const Value& value) {
  return ReadEntry(value, false).value;
}

TEST_F(CellInputTest, TurnsWholeNumbersIntoDoubles) {
  EXPECT_EQ(Entered(std::uint8_t{3}), Value(3.0));
  EXPECT_EQ(Entered(std::int16_t{-3}), Value(-3.0));
  EXPECT_EQ(Entered(3), Value(3.0));
}

TEST_F(CellInputTest, KeepsBooleansAndErrors) {
  EXPECT_EQ(Entered(true), Value(true));
  EXPECT_EQ(Entered(ErrorValue{xlErrNA}), Value(ErrorValue{xlErrNA}));
}

TEST_F(CellInputTest, MakesNumbersWithAFormatOfDatesAndAmounts) {
  const auto expect = [](const Value& given, double number, std::u16string_view format) {
    const CellEntry entry = ReadEntry(given, false);
    EXPECT_EQ(entry.value, Value(number));
    EXPECT_EQ(ToUtf8(entry.number_format), ToUtf8(format));
  };
  expect(Date{45455}, 45455, u"m/d/yyyy");
  expect(Date{45455.5}, 45455.5, u"m/d/yyyy h:mm");
  expect(Date{0.5}, 0.5, u"h:mm:ss AM/PM");
  expect(Currency{15000}, 1.5, u"$#,##0.00");
  expect(1.5, 1.5, u"General");
  EXPECT_EQ(RaisedBy([] { Entered(Date{-1}); }), 1004);
  EXPECT_EQ(RaisedBy([] { Entered(Date{2958466}); }), 1004);
}

TEST_F(CellInputTest, EmptiesForEmptyNullAndTheEmptyText) {
  for (const Value& value : {Value(), Value(Null()), Value(u"")}) {
    EXPECT_EQ(Entered(value), Value());
    EXPECT_EQ(ReadEntry(value, false).formula, u"");
  }
}

TEST_F(CellInputTest, ReadsNumbersBooleansAndErrorsInTexts) {
  const CellEntry entry = ReadEntry(u"5%", false);
  EXPECT_EQ(entry.value, Value(0.05));
  EXPECT_EQ(entry.number_format, u"0%");
  EXPECT_EQ(Entered(u"true"), Value(true));
  EXPECT_EQ(Entered(u"FALSE"), Value(false));
  EXPECT_EQ(Entered(u"#n/a"), Value(ErrorValue{xlErrNA}));
  EXPECT_EQ(Entered(u"LT123"), Value(u"LT123"));
}

TEST_F(CellInputTest, KeepsTextWhereItIsToldTo) {
  EXPECT_EQ(Entered(u"'0012"), Value(u"0012"));
  EXPECT_EQ(ReadEntry(u"0012", true).value, Value(u"0012"));
  EXPECT_EQ(ReadEntry(u"'12", true).value, Value(u"'12"));
  EXPECT_EQ(ReadEntry(u"=A1", true).formula, u"");
  EXPECT_EQ(ReadEntry(u"=A1", true).value, Value(u"=A1"));
}

TEST_F(CellInputTest, MakesTextsOfNumbersWhereTheCellIsOfTexts) {
  EXPECT_EQ(ReadEntry(1.5, true).value, Value(u"1.5"));
  EXPECT_EQ(ReadEntry(7, true).value, Value(u"7"));
  EXPECT_EQ(ReadEntry(true, true).value, Value(u"TRUE"));
  EXPECT_EQ(ReadEntry(ErrorValue{xlErrNA}, true).value, Value(ErrorValue{xlErrNA}));
}

TEST_F(CellInputTest, ReadsFormulasAndRefusesWhatIsNone) {
  EXPECT_EQ(ReadEntry(u"=A1+1", false).formula, u"=A1+1");
  EXPECT_EQ(Entered(u"="), Value(u"="));
  EXPECT_EQ(RaisedBy([] { Entered(u"=1+"); }), 1004);
}

TEST_F(CellInputTest, RefusesTextsLongerThanACell) {
  EXPECT_EQ(Entered(std::u16string(32767, u'x')), Value(std::u16string(32767, u'x')));
  EXPECT_EQ(RaisedBy([] { Entered(std::u16string(32768, u'x')); }), 1004);
}

TEST_F(CellInputTest, RefusesArrays) {
  EXPECT_EQ(RaisedBy([] { Entered(Array::Of({1})); }), 1004);
}

TEST_F(CellInputTest, WritesConstantsWithADecimalPointAndShowsThemByTheRegionalSettings) {
  EXPECT_EQ(ConstantText(1.5), u"1.5");
  EXPECT_EQ(DisplayText(1.5), u"1,5");
  EXPECT_EQ(ConstantText(Date{45455}), u"45455");
  EXPECT_EQ(DisplayText(Date{45455}), u"2024-06-12");
  EXPECT_EQ(ConstantText(true), u"TRUE");
  EXPECT_EQ(DisplayText(false), u"FALSE");
  EXPECT_EQ(DisplayText(ErrorValue{xlErrDiv0}), u"#DIV/0!");
  EXPECT_EQ(ConstantText(Value()), u"");
  EXPECT_EQ(ErrorText({4711}), u"#VALUE!") << "none of Excel's errors";
}

}  // namespace
}  // namespace qva::memory
