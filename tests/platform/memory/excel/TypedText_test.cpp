#include "platform/memory/excel/TypedText.h"

#include <gtest/gtest.h>

#include "platform/date.h"
#include "tests/platform/core_test.h"

namespace qva::memory {
namespace {

class TypedTextTest : public CoreTest {
 protected:
  static void ExpectNumber(std::u16string_view text, double number, std::u16string_view format) {
    const auto typed = ReadTypedText(text);
    ASSERT_TRUE(typed) << ToUtf8(text);
    EXPECT_DOUBLE_EQ(typed->number, number) << ToUtf8(text);
    EXPECT_EQ(ToUtf8(typed->format), ToUtf8(format)) << ToUtf8(text);
  }
  static void ExpectNone(std::initializer_list<const char16_t*> texts) {
    for (const char16_t* text : texts) EXPECT_FALSE(ReadTypedText(text)) << ToUtf8(text);
  }
};

TEST_F(TypedTextTest, ReadsNumbersInTheNotationOfTheUnitedStates) {
  ExpectNumber(u"12", 12, u"General");
  ExpectNumber(u" -1.5 ", -1.5, u"General");
  ExpectNumber(u"+37052123456", 37052123456.0, u"General");
  ExpectNumber(u".5", 0.5, u"General");
  ExpectNumber(u"(3)", -3, u"General");
  ExpectNumber(u"1,500", 1500, u"#,##0");
  ExpectNumber(u"1,234,567.5", 1234567.5, u"#,##0.00");
  ExpectNumber(u"1E3", 1000, u"0.00E+00");
  ExpectNumber(u"1e+3", 1000, u"0.00E+00");
  ExpectNone(
      {u"1,5", u"1.2.3", u"12 kg", u"LT123", u"--1", u"-", u"1e", u"nan", u"inf", u"1+2", u"(-3)", u"(3"});
}

TEST_F(TypedTextTest, ReadsPercentagesAmountsAndFractions) {
  ExpectNumber(u"5%", 0.05, u"0%");
  ExpectNumber(u"5.5%", 0.055, u"0.00%");
  ExpectNumber(u"$12", 12, u"$#,##0_);[Red]($#,##0)");
  ExpectNumber(u"-$1,500.25", -1500.25, u"$#,##0.00_);[Red]($#,##0.00)");
  ExpectNumber(u"0 1/2", 0.5, u"# ?/?");
  ExpectNumber(u"3 1/16", 3.0625, u"# ?\?/?\?");
  ExpectNone({u"%", u"$", u"5$", u"0 1/0", u"1 2", u"1/2 3"});
}

TEST_F(TypedTextTest, ReadsDates) {
  ExpectNumber(u"2024-06-12", 45455, u"m/d/yyyy");
  ExpectNumber(u"2024/6/12", 45455, u"m/d/yyyy");
  ExpectNumber(u"6/12/2024", 45455, u"m/d/yyyy");
  ExpectNumber(u"6-12-2024", 45455, u"m/d/yyyy");
  ExpectNumber(u"6/12/24", 45455, u"m/d/yyyy");
  ExpectNumber(u"1/1/30", DateFromParts(1930, 1, 1).serial, u"m/d/yyyy");
  ExpectNumber(u"12-Jun-2024", 45455, u"d-mmm-yy");
  ExpectNumber(u"12-jun-24", 45455, u"d-mmm-yy");
  const int year = PartsOf(platform.clock.Now()).year;
  ExpectNumber(u"1/4", DateFromParts(year, 1, 4).serial, u"d-mmm");
  ExpectNumber(u"1-4", DateFromParts(year, 1, 4).serial, u"d-mmm");
  ExpectNumber(u"4-Jan", DateFromParts(year, 1, 4).serial, u"d-mmm");
  ExpectNone({u"2024.06.12", u"2024-02-30", u"2024-13-01", u"13/1", u"2/30", u"2024/6", u"2024-06/12",
              u"2024-06-12x", u"1899-12-31", u"6/12/024", u"31-Jun", u"12-Jan-x", u"1-2-3-4"});
}

TEST_F(TypedTextTest, ReadsTimes) {
  ExpectNumber(u"12:30", 750 / 1440.0, u"h:mm");
  ExpectNumber(u"12:30:15", 45015 / 86400.0, u"h:mm:ss");
  ExpectNumber(u"9:00 p", 0.875, u"h:mm AM/PM");
  ExpectNumber(u"12:00:00 AM", 0, u"h:mm:ss AM/PM");
  ExpectNumber(u"36:00", 1.5, u"[h]:mm:ss");
  ExpectNumber(u"2024-06-12 12:00", 45455.5, u"m/d/yyyy h:mm");
  ExpectNone(
      {u"12:60", u"12:", u"12:30:", u"12:30:15:1", u"13:00 PM", u"9:00 x", u"2024-06-12 24:00", u":30"});
}

}  // namespace
}  // namespace qva::memory
