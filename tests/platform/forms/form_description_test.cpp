#include "platform/forms/form_description.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qva {
namespace {

using ui::ControlKind;

const ui::FormDescription kGroups = {
    .name = u"frm",
    .caption = u"",
    .pages = {u"1", u"2"},
    .default_button = u"",
    .cancel_button = u"",
    .controls = {{.kind = ControlKind::Label, .name = u""},
                 {.kind = ControlKind::TabControl, .name = u"pages"},
                 {.kind = ControlKind::Frame, .name = u"frame", .parent = u"pages", .page = 1},
                 {.kind = ControlKind::OptionButton, .name = u"one", .parent = u"frame"},
                 {.kind = ControlKind::OptionButton, .name = u"other", .parent = u"frame"},
                 {.kind = ControlKind::Label, .name = u"label", .parent = u"frame"},
                 {.kind = ControlKind::OptionButton, .name = u"first", .parent = u"pages"},
                 {.kind = ControlKind::OptionButton, .name = u"outside"},
                 {.kind = ControlKind::OptionButton, .name = u"beside"}}};

const ui::ControlDescription& Described(std::u16string_view name) {
  return *std::ranges::find(kGroups.controls, name, &ui::ControlDescription::name);
}

TEST(FormDescription, KnowsWhereAControlStands) {
  EXPECT_EQ(ParentOf(kGroups, Described(u"one")), &Described(u"frame"));
  EXPECT_EQ(ParentOf(kGroups, Described(u"outside")), nullptr) << "also where a control has no name";
}

TEST(FormDescription, AControlInAFrameStandsOnThePageOfTheFrame) {
  EXPECT_EQ(PageOf(kGroups, Described(u"frame")), 1);
  EXPECT_EQ(PageOf(kGroups, Described(u"one")), 1);
  EXPECT_EQ(PageOf(kGroups, Described(u"first")), 0);
  EXPECT_EQ(PageOf(kGroups, Described(u"pages")), std::nullopt);
  EXPECT_EQ(PageOf(kGroups, Described(u"outside")), std::nullopt);
}

TEST(FormDescription, TheOptionsOfOneParentAreOneGroup) {
  EXPECT_TRUE(AreOneGroup(Described(u"one"), Described(u"other")));
  EXPECT_TRUE(AreOneGroup(Described(u"outside"), Described(u"beside")));
  EXPECT_FALSE(AreOneGroup(Described(u"one"), Described(u"first")));
  EXPECT_FALSE(AreOneGroup(Described(u"one"), Described(u"label")));
  EXPECT_FALSE(AreOneGroup(Described(u"label"), Described(u"one")));
  EXPECT_FALSE(AreOneGroup(Described(u"label"), Described(u"label")));
}

}  // namespace
}  // namespace qva
