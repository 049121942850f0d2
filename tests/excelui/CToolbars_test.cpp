#include "excelui/CToolbars.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

class Toolbars : public LibraryTest {
 protected:
  ObjectPtr toolbars = Create(u"CToolbars");
};

TEST_F(Toolbars, StartEmpty) {
  EXPECT_EQ(Get(toolbars, u"Count"), Value(std::int32_t{0}));
  EXPECT_EQ(Call(toolbars, u"Item", {std::int32_t{1}}), Nothing());
}

TEST_F(Toolbars, TheGoToApplicationCaptionIsTheHostsText841) {
  host.texts[841] = u"Grįžti į sistemą";
  EXPECT_EQ(Get(toolbars, u"cmdGoToAppCaption"), Value(u"Grįžti į sistemą"));
}

TEST_F(Toolbars, AToolbarKeepsTheCommandEventsThatItIsGiven) {
  const ObjectPtr toolbar = Create(u"CToolbar");
  EXPECT_EQ(Get(toolbar, u"CmdEvent"), Nothing());
  const ObjectPtr events = Create(u"CCommandsEvent");
  PutRef(toolbar, u"CmdEvent", events);
  EXPECT_EQ(Get(toolbar, u"CmdEvent"), Value(events));
  EXPECT_EQ(ErrorNumberOf([&] { PutRef(toolbar, u"CmdEvent", toolbar); }), kTypeMismatch);
}

TEST_F(Toolbars, AToolbarKeepsTheIdThatItIsGiven) {
  const ObjectPtr toolbar = Create(u"CToolbar");
  EXPECT_EQ(Get(toolbar, u"IDCollection"), Value(std::uint8_t{0}));
  Put(toolbar, u"IDCollection", std::int32_t{255});
  EXPECT_EQ(Get(toolbar, u"IDCollection"), Value(std::uint8_t{255}));
  EXPECT_EQ(ErrorNumberOf([&] { Put(toolbar, u"IDCollection", std::int32_t{256}); }), kOverflow);
}

}  // namespace
}  // namespace qva
