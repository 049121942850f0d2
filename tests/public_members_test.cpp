// The public classes as a whole: which they are. What is proven of all their members stands in
// tests/operations.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "global/CTools.h"
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

TEST(PublicMembers, AreThoseOfTheLibrarysOwnObjectsAlone) {
  /// Has a table of members, and is in none of the lists.
  class Other : public Described<Other> {
   public:
    static ClassBuilder Describe() { return ClassBuilder(u"Other", ""); }
  };
  /// Has no table.
  class Foreign : public Object {
   public:
    Value Invoke(Access, std::u16string_view, Arguments&) override { return {}; }
    std::u16string TypeName() const override { return u"CTools"; }
  };
  EXPECT_TRUE(IsPublicObject(*MakeRef<CTools>()));
  EXPECT_FALSE(IsPublicObject(*MakeRef<Other>()));
  EXPECT_FALSE(IsPublicObject(*MakeRef<Foreign>()));
}

}  // namespace
}  // namespace qva
