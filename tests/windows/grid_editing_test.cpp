// What is typed into a grid, and what becomes of it.
#include "platform/windows/forms/GridControl.h"
#include "tests/windows/grid_test.h"

namespace qva::windows {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(GridControlTest, TabOutOfAnEditedLastCellStoresItAndGoesToTheNextControl) {
  grid->SetColumns({{.name = u"Code", .caption = u"Kodas", .width = 90}});
  Press(VK_END, {VK_CONTROL});
  Type(u"nauja");
  EXPECT_EQ(model.rows.size(), 4u);
  Press(VK_DOWN);
  EXPECT_EQ(model.rows[3][0], u"nauja");
  Press(VK_F2);
  ASSERT_TRUE(Editor());
  Press(VK_TAB);
  EXPECT_EQ(GetFocus(), after);
  EXPECT_EQ(model.rows.size(), 4u) << "nothing was typed into the fifth row";
  grid->SetFocus();
  grid->SetCurrentRow(0);
  Type(u"x");
  Press(VK_TAB, {VK_SHIFT});
  EXPECT_EQ(GetFocus(), before);
  EXPECT_EQ(model.rows[0][0], u"x");
}

TEST_F(GridControlTest, TypingReplacesTheTextAndEnterStoresIt) {
  Type(u"ąž");
  ASSERT_TRUE(Editor());
  EXPECT_EQ(GetFocus(), Editor());
  EXPECT_EQ(EditorText(), u"ąž");
  EXPECT_THAT(model.stored, IsEmpty());
  Press(VK_RETURN);
  EXPECT_FALSE(Editor());
  EXPECT_EQ(GetFocus(), grid->window());
  EXPECT_THAT(model.stored, ElementsAre(u"ąž"));
  EXPECT_EQ(model.rows[0][0], u"ąž");
  EXPECT_THAT(commands, IsEmpty()) << "Enter was the cell's";
}

TEST_F(GridControlTest, F2KeepsTheTextToBeChanged) {
  Press(VK_F2);
  EXPECT_EQ(EditorText(), u"a0");
  Press(VK_END);
  Type(u"!");
  Press(VK_RETURN);
  EXPECT_EQ(model.rows[0][0], u"a0!");
}

TEST_F(GridControlTest, TheSameTextTypedAgainIsStoredButAnUntouchedOneIsNot) {
  Press(VK_F2);
  Press(VK_RETURN);
  EXPECT_THAT(model.stored, IsEmpty());
  Type(u"a0");
  Press(VK_RETURN);
  EXPECT_THAT(model.stored, ElementsAre(u"a0"));
}

TEST_F(GridControlTest, EscapeWhileEditingGivesUpTheCellAlone) {
  Type(u"x");
  Press(VK_ESCAPE);
  EXPECT_FALSE(Editor());
  EXPECT_EQ(GetFocus(), grid->window());
  EXPECT_THAT(model.stored, IsEmpty());
  EXPECT_THAT(commands, IsEmpty());
}

TEST_F(GridControlTest, EnterAndEscapeAreTheFormsWhenNothingIsEdited) {
  Press(VK_RETURN);
  EXPECT_THAT(commands, ElementsAre(IDOK));
  Press(VK_ESCAPE);
  EXPECT_THAT(commands, ElementsAre(IDOK, IDCANCEL));
}

TEST_F(GridControlTest, MovingOnStoresTheText) {
  Type(u"x");
  Press(VK_DOWN);
  Type(u"y");
  Press(VK_TAB);
  EXPECT_THAT(Column(0), ElementsAre(u"x", u"y", u"a2"));
  Type(u"z");
  Press(VK_UP);
  EXPECT_EQ(model.rows[1][1], u"z");
  EXPECT_EQ(grid->CurrentRow(), 0u);
}

TEST_F(GridControlTest, ClickingElsewhereAndLosingTheFocusStoreTheText) {
  Type(u"x");
  Click(PlaceIn(1, 1));
  EXPECT_EQ(model.rows[0][0], u"x");
  EXPECT_EQ(grid->CurrentRow(), 1u);
  Type(u"y");
  ::SetFocus(after);
  Pump();
  EXPECT_EQ(model.rows[1][0], u"y");
  EXPECT_FALSE(Editor());
  EXPECT_EQ(GetFocus(), after);
}

TEST_F(GridControlTest, ARefusedTextKeepsTheOldValueAndTheCell) {
  Type(model.refused);
  Press(VK_DOWN);
  EXPECT_THAT(model.stored, ElementsAre(model.refused));
  EXPECT_EQ(model.rows[0][0], u"a0");
  EXPECT_EQ(grid->CurrentRow(), 0u);
  EXPECT_FALSE(Editor());
}

TEST_F(GridControlTest, ReadOnlyColumnsAndMarksAreNotEdited) {
  Press(VK_END);
  Type(u"x");
  Press(VK_F2);
  EXPECT_FALSE(Editor());
  Press(VK_LEFT);
  Type(u" x");
  Press(VK_F2);
  EXPECT_FALSE(Editor());
  EXPECT_THAT(model.stored, IsEmpty());
}

TEST_F(GridControlTest, SpaceAndAClickTurnAMarkOver) {
  grid->SetColumns({{.name = u"Code", .caption = u"Kodas", .width = 0},
                    {.name = u"Plan", .caption = u"Planas", .width = 0},
                    {.name = u"Id", .caption = u"", .width = 0},
                    {.name = u"Flag", .caption = u"Biudžeto", .width = 60, .check_box = true}});
  Type(u" ");
  EXPECT_THAT(Column(3), ElementsAre(u"False", u"False", u"0"));
  Click(PlaceIn(2, 1));
  EXPECT_EQ(model.rows[2][3], u"0") << "the first click makes the cell the current one";
  Click(PlaceIn(2, 1));
  EXPECT_EQ(model.rows[2][3], u"True");
}

TEST_F(GridControlTest, ADoubleClickEditsTheCell) {
  Click(PlaceIn(1, 1));
  Click(PlaceIn(1, 1), WM_LBUTTONDBLCLK);
  ASSERT_TRUE(Editor());
  EXPECT_EQ(EditorText(), u"a1");
}

TEST_F(GridControlTest, EditingInTheEmptyLineMakesARowFirst) {
  Repeat(3, VK_DOWN);
  Type(u"n");
  EXPECT_EQ(model.rows.size(), 4u);
  EXPECT_EQ(grid->CurrentRow(), 3u);
  Press(VK_RETURN);
  EXPECT_EQ(model.rows[3][0], u"n");
  Press(VK_DOWN);
  EXPECT_EQ(grid->CurrentRow(), std::nullopt) << "there is an empty line again";
}

TEST_F(GridControlTest, ANewRowGoesAgainWhenNothingCameOfIt) {
  Repeat(3, VK_DOWN);
  Type(u"x");
  Press(VK_ESCAPE);
  EXPECT_EQ(model.rows.size(), 3u) << "given up";
  EXPECT_EQ(grid->CurrentRow(), std::nullopt);
  Type(model.refused);
  Press(VK_RETURN);
  EXPECT_EQ(model.rows.size(), 3u) << "refused";
  EXPECT_EQ(grid->CurrentRow(), std::nullopt);
  Press(VK_F2);
  EXPECT_EQ(model.rows.size(), 4u);
  Press(VK_RETURN);
  EXPECT_EQ(model.rows.size(), 3u) << "untouched";
}

TEST_F(GridControlTest, AModelThatGivesNoRowsIsNotEditedInTheEmptyLine) {
  model.gives_rows = false;
  Repeat(3, VK_DOWN);
  Type(u"x");
  EXPECT_FALSE(Editor());
  Press(VK_RIGHT);
  Press(VK_F4);
  EXPECT_THAT(model.pressed, IsEmpty());
  EXPECT_EQ(model.rows.size(), 3u);
}

TEST_F(GridControlTest, DeleteDeletesTheRowUnlessACellIsEdited) {
  Press(VK_DOWN);
  Press(VK_DELETE);
  EXPECT_THAT(Column(0), ElementsAre(u"a0", u"a2"));
  EXPECT_EQ(grid->CurrentRow(), 1u);
  Press(VK_DELETE);
  EXPECT_EQ(grid->CurrentRow(), 0u) << "a current row that is gone becomes the last one";
  Press(VK_F2);
  Press(VK_DELETE);
  EXPECT_EQ(EditorText(), u"");
  Press(VK_ESCAPE);
  EXPECT_THAT(Column(0), ElementsAre(u"a0"));
  Press(VK_DOWN);
  Press(VK_DELETE);
  EXPECT_EQ(model.rows.size(), 1u) << "the empty line is no row";
}

TEST_F(GridControlTest, F4AndAltDownPressTheCurrentCellsButton) {
  Press(VK_F4);
  EXPECT_THAT(model.pressed, IsEmpty()) << "the column has none";
  Press(VK_RIGHT);
  Press(VK_F4);
  Press(VK_DOWN);
  Press(VK_DOWN, {VK_MENU});
  EXPECT_THAT(model.pressed, ElementsAre(u"0:1", u"1:1"));
  EXPECT_EQ(grid->CurrentRow(), 1u) << "with Alt it is no arrow";
}

TEST_F(GridControlTest, TheButtonPressedWhileEditingFindsTheTextStored) {
  Press(VK_RIGHT);
  Type(u"x");
  model.on_press = [&] { EXPECT_EQ(model.rows[0][1], u"x"); };
  Press(VK_F4);
  Type(u"y");
  model.on_press = [&] { EXPECT_EQ(model.rows[0][1], u"y"); };
  Press(VK_DOWN, {VK_MENU});
  EXPECT_THAT(model.pressed, ElementsAre(u"0:1", u"0:1"));
  EXPECT_EQ(GetFocus(), grid->window());
}

TEST_F(GridControlTest, TheMousePressesTheCurrentCellsButtonWhereItGoesUpOnIt) {
  Click(PlaceIn(1, 2, true));
  EXPECT_THAT(model.pressed, IsEmpty()) << "the button was not there yet";
  Click(PlaceIn(1, 2, true));
  EXPECT_THAT(model.pressed, ElementsAre(u"1:1"));
  SendMessageW(grid->window(), WM_LBUTTONDOWN, MK_LBUTTON, PlaceIn(1, 2, true));
  SendMessageW(grid->window(), WM_MOUSEMOVE, MK_LBUTTON, PlaceIn(0, 1));
  SendMessageW(grid->window(), WM_LBUTTONUP, 0, PlaceIn(0, 1));
  EXPECT_EQ(model.pressed.size(), 1u);
  EXPECT_NE(GetCapture(), grid->window());
}

TEST_F(GridControlTest, ThePressedButtonOfAnEditedCellFindsTheTextStored) {
  Press(VK_RIGHT);
  Type(u"x");
  model.on_press = [&] { EXPECT_EQ(model.rows[0][1], u"x"); };
  Click(PlaceIn(0, 2, true));
  EXPECT_THAT(model.pressed, ElementsAre(u"0:1"));
  EXPECT_FALSE(Editor());
}

TEST_F(GridControlTest, TheButtonInTheEmptyLineMakesARowThatStaysWhenSomethingWasPicked) {
  Repeat(3, VK_DOWN);
  Press(VK_RIGHT);
  Press(VK_F4);
  EXPECT_THAT(model.pressed, ElementsAre(u"3:1"));
  EXPECT_EQ(model.rows.size(), 3u) << "nothing was picked";
  EXPECT_EQ(grid->CurrentRow(), std::nullopt);
  model.on_press = [&] { model.SetCellText(3, 1, u"MEDVILNE"); };
  Press(VK_F4);
  EXPECT_EQ(model.rows.size(), 4u);
  EXPECT_EQ(model.rows[3][1], u"MEDVILNE");
  EXPECT_EQ(grid->CurrentRow(), 3u);
}

TEST_F(GridControlTest, TheFocusThatComesBackToTheHiddenFieldIsTheGrids) {
  Type(u"x");
  HWND field = Editor();
  Press(VK_RETURN);
  ::SetFocus(after);
  ::SetFocus(field);
  EXPECT_EQ(GetFocus(), grid->window());
}

TEST_F(GridControlTest, RefreshGivesUpWhatIsBeingEdited) {
  Type(u"x");
  model.rows.clear();
  grid->Refresh();
  EXPECT_FALSE(Editor());
  EXPECT_THAT(model.stored, IsEmpty());
  EXPECT_EQ(GetFocus(), grid->window());
}

TEST_F(GridControlTest, WhatTheModelRaisesDoesNotReachWindowsButTheSink) {
  Press(VK_RIGHT);
  model.on_press = [] { throw AutomationError(kOverflow); };
  Press(VK_F4);
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_THROW(std::rethrow_exception(failures[0]), AutomationError);
  model.on_press = [] { throw std::bad_alloc(); };
  Type(u"x");
  Press(VK_F4);  // in the field
  ASSERT_EQ(failures.size(), 2u);
  EXPECT_THROW(std::rethrow_exception(failures[1]), std::bad_alloc);
  Press(VK_DOWN);
  EXPECT_EQ(grid->CurrentRow(), 1u);
}

}  // namespace
}  // namespace qva::windows
