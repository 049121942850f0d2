// Numbers as text do not depend on what the process around the library has set for its C library.
#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "platform/number.h"

namespace qva {
namespace {

TEST(LeadingDecimal, TakesThePointWhateverTheProcessHasSet) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  ASSERT_NE(std::setlocale(LC_NUMERIC, "Lithuanian"), nullptr);
  const std::string point = std::localeconv()->decimal_point;
  const double number = LeadingDecimal("2.75");
  std::setlocale(LC_NUMERIC, before.c_str());
  EXPECT_EQ(point, ",");
  EXPECT_EQ(number, 2.75);
}

}  // namespace
}  // namespace qva
