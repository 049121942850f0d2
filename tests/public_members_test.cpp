// The public classes as a whole: which they are. What is proven of all their members stands in
// tests/operations.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "server/PublicClasses.h"

namespace qva {
namespace {

TEST(PublicMembers, StandInTheirPublishedClasses) {
  std::vector<std::string> names;
  for (const PublicClass& public_class : PublicClasses())
    names.push_back(ToUtf8(public_class.description().name()));
  EXPECT_THAT(names,
              testing::ElementsAre("gExcelObject", "CTools", "CLockScreen", "CRepPeriod", "CDatePic",
                                   "CReports", "CSaveForm", "CSetPath", "CToolbar", "CButtonProperties",
                                   "CToolbars", "CDefaultButtons", "CCommandsEvent", "CEnvironment"));
}

}  // namespace
}  // namespace qva
