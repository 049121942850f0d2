#include "platform/memory/excel/CellInput.h"

#include <gtest/gtest.h>

#include "platform/date.h"
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

TEST_F(CellInputTest, KeepsDatesAmountsBooleansAndErrors) {
  EXPECT_EQ(Entered(Date{45455}), Value(Date{45455}));
  EXPECT_EQ(Entered(Currency{15000}), Value(Currency{15000}));
  EXPECT_EQ(Entered(true), Value(true));
  EXPECT_EQ(Entered(ErrorValue{xlErrNA}), Value(ErrorValue{xlErrNA}));
  EXPECT_EQ(RaisedBy([] { Entered(Date{-1}); }), 1004);
}

TEST_F(CellInputTest, EmptiesForEmptyNullAndTheEmptyText) {
  for (const Value& value : {Value(), Value(Null()), Value(u"")}) {
    EXPECT_EQ(Entered(value), Value());
    EXPECT_EQ(ReadEntry(value, false).formula, u"");
  }
}

TEST_F(CellInputTest, ReadsNumbersInTextsInTheNotationOfTheUnitedStates) {
  EXPECT_EQ(Entered(u"12"), Value(12.0));
  EXPECT_EQ(Entered(u" -1.5 "), Value(-1.5));
  EXPECT_EQ(Entered(u"+37052123456"), Value(37052123456.0));
  EXPECT_EQ(Entered(u"1,234,567.5"), Value(1234567.5));
  EXPECT_EQ(Entered(u"5%"), Value(0.05));
  EXPECT_EQ(Entered(u"1E3"), Value(1000.0));
  EXPECT_EQ(Entered(u"1e+3"), Value(1000.0));
  EXPECT_EQ(Entered(u".5"), Value(0.5));
  for (const char16_t* text :
       {u"1,5", u"1.2.3", u"12 kg", u"LT123", u"--1", u"-", u"1e", u"nan", u"inf", u"1+2"}) {
    EXPECT_EQ(Entered(text), Value(text));
  }
}

TEST_F(CellInputTest, ReadsBooleansErrorsAndDatesInTexts) {
  EXPECT_EQ(Entered(u"true"), Value(true));
  EXPECT_EQ(Entered(u"FALSE"), Value(false));
  EXPECT_EQ(Entered(u"#n/a"), Value(ErrorValue{xlErrNA}));
  EXPECT_EQ(Entered(u"2024-06-12"), Value(Date{45455}));
  EXPECT_EQ(Entered(u"6/12/2024"), Value(Date{45455}));
  for (const char16_t* text : {u"2024.06.12", u"2024-02-30", u"2024-13-01", u"13/1", u"2/30", u"2024/6",
                               u"2024-06/12", u"2024-06-12x"}) {
    EXPECT_EQ(Entered(text), Value(text));
  }
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

TEST_F(CellInputTest, ReadsDaysOfThisYearAndTimes) {
  const int year = PartsOf(platform.clock.Now()).year;
  EXPECT_EQ(Entered(u"1/4"), Value(DateFromParts(year, 1, 4)));
  EXPECT_EQ(Entered(u"1-4"), Value(DateFromParts(year, 1, 4)));
  EXPECT_EQ(Entered(u"12:30"), Value(750 / 1440.0));
  EXPECT_EQ(Entered(u"12:30:15"), Value(45015 / 86400.0));
  for (const char16_t* text : {u"24:00", u"12:60", u"12:", u"12:30:", u"12:30:15:1"}) {
    EXPECT_EQ(Entered(text), Value(text)) << ToUtf8(text);
  }
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
