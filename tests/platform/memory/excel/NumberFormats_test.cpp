#include "platform/memory/excel/NumberFormats.h"

#include <gtest/gtest.h>

#include "tests/platform/core_test.h"

namespace qva::memory {
namespace {

TEST(NumberFormats, MakeDatesOfDaysMonthsAndYears) {
  for (const char16_t* format :
       {u"m/d/yyyy", u"yyyy-mm-dd", u"d-mmm", u"mmm", u"m/d/yyyy h:mm", u"[$-427]yyyy", u"[Red]d", u"YYYY"}) {
    EXPECT_EQ(NumberInFormat(45455.5, format), Value(Date{45455.5})) << ToUtf8(format);
  }
  EXPECT_EQ(NumberInFormat(-1, u"d"), Value(-1.0)) << "no day";
  EXPECT_EQ(NumberInFormat(2958466, u"d"), Value(2958466.0)) << "beyond the last one";
}

TEST(NumberFormats, MakeAmountsOfFourDecimalsWithTheSignOfACurrency) {
  for (const char16_t* format : {u"$#,##0.00", u"#,##0.00 €", u"#,##0 [$€-427]", u"$#,##0_);[Red]($#,##0)"}) {
    EXPECT_EQ(NumberInFormat(1.23456789, format), Value(Currency{12346})) << ToUtf8(format);
  }
  EXPECT_EQ(NumberInFormat(1e15, u"$0"), Value(1e15)) << "greater than an amount can be";
}

TEST(NumberFormats, LeaveOtherNumbersAlone) {
  for (const char16_t* format :
       {u"General", u"@", u"0.00", u"0%", u"0.00E+00", u"h:mm", u"mm:ss", u"[h]:mm:ss", u"h:mm AM/PM",
        u"0 \"dydis\"", u"0\\d", u"0_d", u"0;d", u"[$-427]0", u"0 \"$\"", u"0 \"d"}) {
    EXPECT_EQ(NumberInFormat(1.5, format), Value(1.5)) << ToUtf8(format);
  }
}

}  // namespace
}  // namespace qva::memory
