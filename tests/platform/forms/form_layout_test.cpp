#include "platform/forms/form_layout.h"

#include <gtest/gtest.h>

#include "tests/raised_error.h"

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
        {.kind = ControlKind::TextBox, .name = u"text", .bounds = {10, 170, 80, 20}},
        {.kind = ControlKind::Frame, .name = u"frame", .bounds = {100, 20, 50, 60}},
        {.kind = ControlKind::OptionButton,
         .name = u"option",
         .bounds = {5, 7, 40, 20},
         .parent = u"frame"}}};

class FormLayoutTest : public testing::Test {
 protected:
  /// What a control does, as letters: right, wider, down, higher.
  std::string Of(std::u16string_view name) const {
    std::size_t number = 0;
    while (kForm.controls[number].name != name) ++number;
    const Following following = layout.Of(number);
    return std::string(following.moves_right ? "r" : "") + (following.widens ? "w" : "") +
           (following.moves_down ? "d" : "") + (following.heightens ? "h" : "");
  }
  FormLayout layout{kForm};
};

TEST_F(FormLayoutTest, NothingFollowsBeforeTheStart) {
  for (const ui::ControlDescription& control : kForm.controls) EXPECT_EQ(Of(control.name), "");
}

TEST_F(FormLayoutTest, KindsHaveTheirDefaults) {
  layout.StartResizer(310, 210, {});
  EXPECT_EQ(layout.start_width(), 310);
  EXPECT_EQ(layout.start_height(), 210);
  EXPECT_EQ(Of(u"pages"), "wh");
  EXPECT_EQ(Of(u"grid"), "wh");
  EXPECT_EQ(Of(u"ok"), "rd") << "the form's buttons keep to the lower right corner";
  EXPECT_EQ(Of(u"inner"), "") << "others do not";
  EXPECT_EQ(Of(u"text"), "");
}

TEST_F(FormLayoutTest, WhatStandsBelowAGridMovesDownWithIt) {
  layout.StartResizer(300, 200, {});
  EXPECT_EQ(Of(u"below"), "d");
  EXPECT_EQ(Of(u"beside"), "") << "it begins above the grid's lower edge";
  EXPECT_EQ(Of(u"other"), "") << "it is on another page";
}

TEST_F(FormLayoutTest, AModeTakesTheDefaultsPlace) {
  layout.StartResizer(300, 200, [](std::u16string_view name) -> FormLayout::Mode {
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

TEST_F(FormLayoutTest, AModeThatCannotBeHadChangesNothing) {
  EXPECT_ANY_THROW(layout.StartResizer(1, 1, [](std::u16string_view) -> FormLayout::Mode { throw 1; }));
  EXPECT_EQ(layout.start_width(), 0);
  EXPECT_EQ(Of(u"grid"), "");
}

using Edges = std::vector<int>;

TEST_F(FormLayoutTest, WhatStandsInAnotherControlFollowsWithIt) {
  const auto place = [&](std::u16string_view name, int width, int height) {
    std::size_t number = 0;
    while (kForm.controls[number].name != name) ++number;
    const ui::Bounds bounds = layout.Places(width, height).at(number);
    return Edges{bounds.left, bounds.top, bounds.width, bounds.height};
  };
  EXPECT_EQ(place(u"frame", 400, 300), (Edges{100, 20, 50, 60})) << "it is not started yet";
  EXPECT_EQ(place(u"option", 400, 300), (Edges{105, 27, 40, 20})) << "as far from the frame as described";
  layout.StartResizer(310, 210, [](std::u16string_view name) {
    return name == u"frame" ? FormLayout::Mode(ui::ResizeMode::MoveWithWidth) : std::nullopt;
  });
  EXPECT_EQ(place(u"frame", 310, 210), (Edges{100, 20, 50, 60}));
  EXPECT_EQ(place(u"frame", 400, 300), (Edges{190, 20, 50, 60}));
  EXPECT_EQ(place(u"option", 400, 300), (Edges{195, 27, 40, 20}));
  EXPECT_EQ(place(u"pages", 400, 300), (Edges{0, 0, 390, 250}));
  EXPECT_EQ(place(u"below", 400, 300), (Edges{10, 180, 80, 20}));
  EXPECT_EQ(place(u"ok", 300, 200), (Edges{190, 160, 80, 20})) << "smaller, too";
}

TEST_F(FormLayoutTest, EdgesThatMeetDoSoAtEveryScale) {
  const ui::FormDescription form = {
      .name = u"frm",
      .caption = u"",
      .default_button = u"",
      .cancel_button = u"",
      .controls = {
          {.kind = ControlKind::Frame, .name = u"frame", .bounds = {1, 1, 21, 21}},
          {.kind = ControlKind::Label, .name = u"beside", .bounds = {22, 22, 20, 20}},
          {.kind = ControlKind::Grid, .name = u"within", .bounds = {1, 1, 5, 5}, .parent = u"frame"}}};
  FormLayout scaled(form);
  const auto by_half = [](int length) { return length * 3 / 2; };
  scaled.StartResizer(101, 103, {});
  const std::vector<ui::Bounds> places = scaled.Places(by_half(101) + 7, by_half(103) + 8, by_half);
  EXPECT_EQ(places[0].left + places[0].width, places[1].left);
  EXPECT_EQ(places[0].top + places[0].height, places[1].top);
  EXPECT_EQ(places[2].left, by_half(1) + by_half(1));
  EXPECT_EQ(places[2].width, by_half(6) - by_half(1) + 7) << "what it grows by is not scaled again";
  EXPECT_EQ(places[2].height, by_half(6) - by_half(1) + 8);
}

TEST(FormLayout, RefusesADescriptionThatContradictsItself) {
  ui::FormDescription form = kForm;
  form.controls.back().parent = u"nobody";
  EXPECT_EQ(RaisedBy([&] { FormLayout layout(form); }), kInternalError);
}

}  // namespace
}  // namespace qva
