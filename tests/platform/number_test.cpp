#include "platform/number.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qva {
namespace {

TEST(LeadingDecimal, ReadsTheNumberThatATextBeginsWith) {
  EXPECT_EQ(LeadingDecimal("12"), 12);
  EXPECT_EQ(LeadingDecimal("+7.25kg"), 7.25);
  EXPECT_EQ(LeadingDecimal("-.5"), -0.5);
  EXPECT_EQ(LeadingDecimal("1.5e-3"), 0.0015);
  EXPECT_EQ(LeadingDecimal("0.1"), 0.1) << "exactly the nearest double";
  EXPECT_EQ(LeadingDecimal("179769313486231.57e294"), 1.7976931348623157e308);
}

TEST(LeadingDecimal, IsZeroWithoutANumber) {
  EXPECT_EQ(LeadingDecimal(""), 0);
  EXPECT_EQ(LeadingDecimal("x12"), 0);
  EXPECT_EQ(LeadingDecimal(" 12"), 0);
  EXPECT_EQ(LeadingDecimal("-"), 0);
}

TEST(LeadingDecimal, KnowsNoOtherNotations) {
  EXPECT_EQ(LeadingDecimal("0x1F"), 0);
  EXPECT_EQ(LeadingDecimal("inf"), 0);
  EXPECT_EQ(LeadingDecimal("-nan"), 0);
  EXPECT_EQ(LeadingDecimal("1,5"), 1);
}

TEST(LeadingDecimal, GivesAnInfinityForWhatIsTooGreatAndZeroForWhatIsTooSmall) {
  EXPECT_TRUE(std::isinf(LeadingDecimal("1e400")));
  EXPECT_TRUE(std::isinf(LeadingDecimal("-1e400")));
  EXPECT_EQ(LeadingDecimal("1e-400"), 0);
}

}  // namespace
}  // namespace qva
