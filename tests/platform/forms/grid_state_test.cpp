#include "platform/forms/grid_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/forms/text_rows.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class GridStateTest : public testing::Test {
 protected:
  GridStateTest() {
    model.rows = {{u"a", u"b", u"0", u"d"}, {u"e", u"f", u"True", u"h"}};
    state.SetColumns({{.name = u"Text", .width = 50},
                      {.name = u"Hidden", .width = 0},
                      {.name = u"Mark", .width = 50, .check_box = true},
                      {.name = u"Fixed", .width = 50, .read_only = true, .cell_button = true}});
    model.changed = [this] { state.Refresh(); };
    model.pressed = [this](std::u16string& text) {
      if (!chosen.empty()) text = chosen;
    };
    state.SetModel(&model);
  }
  GridState state;
  TextRows model{4};
  std::u16string chosen;
};

TEST_F(GridStateTest, HasNoPlaceForColumnsWithoutWidth) {
  ASSERT_EQ(state.columns().size(), 3u);
  EXPECT_EQ(state.columns()[1].description.name, u"Mark");
  EXPECT_EQ(state.columns()[1].model_column, 2u);
  EXPECT_EQ(state.TextOf({1, 2}), u"h");
}

TEST_F(GridStateTest, AnEmptyLineFollowsTheRows) {
  EXPECT_EQ(state.lines(), 3u);
  state.MoveTo({2, 0});
  EXPECT_EQ(state.CurrentRow(), std::nullopt);
  EXPECT_EQ(state.CurrentText(), u"");
  EXPECT_TRUE(state.TakesText());
}

TEST_F(GridStateTest, TellsWhereALineStandsTheEmptyOneAmongThem) {
  EXPECT_EQ(state.PlaceOf(0), u"1 / 3");
  EXPECT_EQ(state.PlaceOf(2), u"3 / 3");
}

TEST_F(GridStateTest, AListThatIsOnlyReadHasNoEmptyLineAndLosesNoRow) {
  state.SetColumns({{.name = u"Text", .width = 50, .read_only = true}});
  EXPECT_EQ(state.lines(), 2u);
  EXPECT_FALSE(state.can_edit());
  EXPECT_FALSE(state.TakesText());
  state.DeleteCurrentRow();
  EXPECT_EQ(model.rows.size(), 2u);
}

TEST_F(GridStateTest, WhatIsTypedOnTheEmptyLineMakesARow) {
  state.MoveTo({2, 0});
  ASSERT_TRUE(state.BeginRow());
  EXPECT_EQ(state.CurrentRow(), 2u);
  EXPECT_TRUE(state.Store(u"nauja"));
  EXPECT_EQ(model.rows.at(2)[0], u"nauja");
  EXPECT_EQ(state.lines(), 4u);
}

TEST_F(GridStateTest, ARowGoesWhenItsFirstTextIsRefused) {
  state.MoveTo({2, 0});
  ASSERT_TRUE(state.BeginRow());
  EXPECT_FALSE(state.Store(u"bloga"));
  EXPECT_EQ(model.rows.size(), 2u);
  EXPECT_EQ(state.current(), (GridCell{2, 0})) << "back on the empty line";
  state.MoveTo({1, 0});
  ASSERT_TRUE(state.BeginRow());
  EXPECT_FALSE(state.Store(u"bloga"));
  EXPECT_EQ(model.rows.size(), 2u) << "one that was there stays";
}

TEST_F(GridStateTest, ARowGoesWhenTheUserGivesItUp) {
  state.MoveTo({2, 0});
  ASSERT_TRUE(state.BeginRow());
  state.GiveUp();
  EXPECT_EQ(model.rows.size(), 2u);
  EXPECT_EQ(state.current(), (GridCell{2, 0}));
  state.GiveUp();
  EXPECT_EQ(model.rows.size(), 2u) << "once";
}

TEST_F(GridStateTest, ARowThatCameWithAnotherChangeIsNotTakenAway) {
  state.MoveTo({2, 0});
  ASSERT_TRUE(state.BeginRow());
  model.rows.emplace_back(4);
  state.Refresh();
  state.GiveUp();
  EXPECT_EQ(model.rows.size(), 4u);
}

TEST_F(GridStateTest, AModelThatTakesNoRowsLeavesTheEmptyLine) {
  model.takes_rows = false;
  state.MoveTo({2, 0});
  EXPECT_FALSE(state.BeginRow());
  EXPECT_EQ(state.CurrentRow(), std::nullopt);
  EXPECT_FALSE(state.Store(u"x"));
}

TEST_F(GridStateTest, TurnsMarksThatCanBeChanged) {
  state.MoveTo({0, 1});
  state.TurnMark();
  EXPECT_EQ(model.rows[0][2], u"True");
  state.TurnMark();
  EXPECT_EQ(model.rows[0][2], u"False");
  state.MoveTo({1, 1});
  state.TurnMark();
  EXPECT_EQ(model.rows[1][2], u"False");
  state.MoveTo({0, 0});
  state.TurnMark();
  EXPECT_EQ(model.rows[0][0], u"a") << "a text is no mark";
  state.SetColumns({{.name = u"Text", .width = 50},
                    {.name = u"B", .width = 50},
                    {.name = u"Mark", .width = 50, .read_only = true, .check_box = true}});
  state.MoveTo({0, 2});
  state.TurnMark();
  EXPECT_EQ(model.rows[0][2], u"False");
}

TEST_F(GridStateTest, TheButtonOfTheEmptyLineMakesARowThatStaysOnlyWithSomethingInIt) {
  state.MoveTo({2, 2});
  ASSERT_TRUE(state.HasButton());
  state.PressButton();
  EXPECT_EQ(model.rows.size(), 2u) << "nothing was chosen";
  EXPECT_EQ(state.current(), (GridCell{2, 2}));
  chosen = u"F1";
  state.PressButton();
  ASSERT_EQ(model.rows.size(), 3u);
  EXPECT_EQ(model.rows[2][3], u"F1");
  chosen.clear();
  state.PressButton();
  EXPECT_EQ(model.rows.size(), 3u) << "a row that was there stays";
  state.MoveTo({0, 0});
  chosen = u"F2";
  state.PressButton();
  EXPECT_EQ(model.rows[0][0], u"a") << "this cell has no button";
}

TEST_F(GridStateTest, DeletesTheCurrentRowAndStaysOnOne) {
  state.MoveTo({1, 0});
  state.DeleteCurrentRow();
  EXPECT_THAT(model.rows, ElementsAre(ElementsAre(u"a", u"b", u"0", u"d")));
  EXPECT_EQ(state.CurrentRow(), 0u);
  state.MoveTo({1, 0});
  state.DeleteCurrentRow();
  EXPECT_EQ(model.rows.size(), 1u) << "the empty line is no row";
  state.MoveTo({0, 0});
  state.DeleteCurrentRow();
  EXPECT_THAT(model.rows, IsEmpty());
  EXPECT_EQ(state.CurrentRow(), std::nullopt);
}

TEST_F(GridStateTest, ARefreshKeepsTheUserWhereHeIs) {
  state.MoveTo({2, 0});
  state.Refresh();
  EXPECT_EQ(state.current(), (GridCell{2, 0})) << "on the empty line";
  model.rows.resize(1);
  state.MoveTo({1, 0});
  state.Refresh();
  EXPECT_EQ(state.CurrentRow(), 0u) << "the last row that is left";
  state.SetModel(nullptr);
  EXPECT_EQ(state.lines(), 0u);
  EXPECT_EQ(state.CurrentColumn(), nullptr);
  EXPECT_FALSE(state.BeginRow());
}

}  // namespace
}  // namespace qva
