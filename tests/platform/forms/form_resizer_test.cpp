#include "platform/forms/form_resizer.h"

#include <gtest/gtest.h>

namespace qva {
namespace {

using ui::ControlKind;

/// A form with pages, on the first of them a grid with a label below it and one beside it.
const ui::FormDescription kForm = {
    .name = u"frm",
    .caption = u"",
    .width = 300,
    .height = 200,
    .resizable = true,
    .pages = {u"1", u"2"},
    .default_button = u"",
    .cancel_button = u"",
    .controls = {
        {.kind = ControlKind::TabControl, .name = u"pages", .bounds = {0, 0, 300, 160}},
        {.kind = ControlKind::Grid, .name = u"grid", .bounds = {10, 10, 200, 80}, .parent = u"pages"},
        {.kind = ControlKind::Label, .name = u"below", .bounds = {10, 90, 80, 20}, .parent = u"pages"},
        {.kind = ControlKind::Label, .name = u"beside", .bounds = {220, 89, 60, 20}, .parent = u"pages"},
        {.kind = ControlKind::Label,
         .name = u"other",
         .bounds = {10, 90, 80, 20},
         .parent = u"pages",
         .page = 1},
        {.kind = ControlKind::Button, .name = u"inner", .bounds = {10, 20, 80, 20}, .parent = u"pages"},
        {.kind = ControlKind::Button, .name = u"ok", .bounds = {200, 170, 80, 20}},
        {.kind = ControlKind::TextBox, .name = u"text", .bounds = {10, 170, 80, 20}}}};

class FormResizerTest : public testing::Test {
 protected:
  /// What a control does, as letters: right, wider, down, higher.
  std::string Of(std::u16string_view name) const {
    std::size_t number = 0;
    while (kForm.controls[number].name != name) ++number;
    const Following following = resizer.Of(number);
    return std::string(following.moves_right ? "r" : "") + (following.widens ? "w" : "") +
           (following.moves_down ? "d" : "") + (following.heightens ? "h" : "");
  }
  FormResizer resizer{kForm};
};

TEST_F(FormResizerTest, NothingFollowsBeforeTheStart) {
  for (const ui::ControlDescription& control : kForm.controls) EXPECT_EQ(Of(control.name), "");
}

TEST_F(FormResizerTest, KindsHaveTheirDefaults) {
  resizer.Start(310, 210, {});
  EXPECT_EQ(resizer.start_width(), 310);
  EXPECT_EQ(resizer.start_height(), 210);
  EXPECT_EQ(Of(u"pages"), "wh");
  EXPECT_EQ(Of(u"grid"), "wh");
  EXPECT_EQ(Of(u"ok"), "rd") << "the form's buttons keep to the lower right corner";
  EXPECT_EQ(Of(u"inner"), "") << "others do not";
  EXPECT_EQ(Of(u"text"), "");
}

TEST_F(FormResizerTest, WhatStandsBelowAGridMovesDownWithIt) {
  resizer.Start(300, 200, {});
  EXPECT_EQ(Of(u"below"), "d");
  EXPECT_EQ(Of(u"beside"), "") << "it begins above the grid's lower edge";
  EXPECT_EQ(Of(u"other"), "") << "it is on another page";
}

TEST_F(FormResizerTest, AModeTakesTheDefaultsPlace) {
  resizer.Start(300, 200, [](std::u16string_view name) -> FormResizer::Mode {
    if (name == u"grid" || name == u"below" || name == u"ok") return ui::ResizeMode::MoveWithWidth;
    if (name == u"pages" || name == u"text") return ui::ResizeMode::StretchWithWidth;
    return std::nullopt;
  });
  EXPECT_EQ(Of(u"pages"), "w");
  EXPECT_EQ(Of(u"grid"), "r");
  EXPECT_EQ(Of(u"below"), "rd") << "below a grid it moves down all the same";
  EXPECT_EQ(Of(u"ok"), "r");
  EXPECT_EQ(Of(u"text"), "w");
}

TEST_F(FormResizerTest, AModeThatCannotBeHadChangesNothing) {
  EXPECT_ANY_THROW(resizer.Start(1, 1, [](std::u16string_view) -> FormResizer::Mode { throw 1; }));
  EXPECT_EQ(resizer.start_width(), 0);
  EXPECT_EQ(Of(u"grid"), "");
}

}  // namespace
}  // namespace qva
