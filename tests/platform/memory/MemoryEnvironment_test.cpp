#include "platform/memory/MemoryEnvironment.h"

#include <gtest/gtest.h>

#include <string>

namespace qva {
namespace {

TEST(MemoryEnvironment, GivesZeroForAMissingVariable) {
  const MemoryEnvironment environment;
  std::string buffer(4, 'x');
  EXPECT_EQ(environment.GetVariable(u"PATH", buffer), 0u);
  EXPECT_EQ(buffer, "xxxx");
}

TEST(MemoryEnvironment, StoresTheValueWithItsZeroAndGivesTheLengthWithoutIt) {
  MemoryEnvironment environment;
  environment.Set(u"Path", "abc");
  std::string buffer(6, 'x');
  EXPECT_EQ(environment.GetVariable(u"PATH", buffer), 3u);
  EXPECT_EQ(buffer, std::string("abc\0xx", 6));
}

TEST(MemoryEnvironment, GivesTheNeededSizeWhenTheZeroDoesNotFit) {
  MemoryEnvironment environment;
  environment.Set(u"PATH", "abc");
  std::string buffer(3, 'x');
  EXPECT_EQ(environment.GetVariable(u"PATH", buffer), 4u);
  EXPECT_EQ(buffer, "xxx");
  EXPECT_EQ(environment.GetVariable(u"PATH", {}), 4u);
}

TEST(MemoryEnvironment, ForgetsARemovedVariable) {
  MemoryEnvironment environment;
  environment.Set(u"PATH", "abc");
  environment.Remove(u"path");
  EXPECT_EQ(environment.GetVariable(u"PATH", {}), 0u);
}

}  // namespace
}  // namespace qva
