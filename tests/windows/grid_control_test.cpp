#include "platform/windows/forms/GridControl.h"

#include <gmock/gmock.h>

#include "platform/windows/WindowsApi.h"

#include <commctrl.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/text.h"
#include "platform/windows/forms/Font.h"
#include "platform/windows/forms/GridKeys.h"
#include "platform/windows/forms/WindowText.h"
#include "tests/windows/gui_test.h"

namespace qva::windows {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UiScale kScale{96};
using Texts = std::vector<std::u16string>;

TEST(KeyTarget, LeavesTabWithCtrlToTheForm) {
  const GridExtent extent{.lines = 3, .columns = 3, .page = 2};
  EXPECT_EQ(KeyTarget(VK_TAB, false, false, {0, 2}, extent), (GridCell{1, 0}));
  EXPECT_EQ(KeyTarget(VK_TAB, true, false, {0, 2}, extent), std::nullopt);
  EXPECT_EQ(KeyTarget(VK_TAB, true, true, {1, 2}, extent), std::nullopt);
}

TEST(KeyTarget, LeadsNowhereInAGridWithoutCells) {
  for (const UINT key : {VK_TAB, VK_DOWN, VK_END, VK_NEXT}) {
    EXPECT_EQ(KeyTarget(key, false, false, {}, {.lines = 0, .columns = 3}), std::nullopt);
    EXPECT_EQ(KeyTarget(key, false, false, {}, {.lines = 3, .columns = 0}), std::nullopt);
  }
}

/// Rows of texts that show themselves anew after every change, as the library's list does.
class TestModel : public ui::GridModel {
 public:
  std::vector<Texts> rows;
  std::size_t width = 5;
  bool gives_rows = true;
  std::u16string refused = u"bloga";
  ui::Grid* grid = nullptr;
  Texts stored;   ///< every text that was to be stored
  Texts pressed;  ///< the cells whose button was pressed, as "row:column"
  std::function<void()> on_press;

  std::size_t RowCount() const override { return rows.size(); }
  std::u16string CellText(std::size_t row, std::size_t column) const override {
    return rows.at(row).at(column);
  }
  bool SetCellText(std::size_t row, std::size_t column, std::u16string_view text) override {
    stored.emplace_back(text);
    if (text == refused) return false;
    rows.at(row).at(column) = text;
    Show(row);
    return true;
  }
  void AppendRow() override {
    if (!gives_rows) return;
    rows.emplace_back(width);
    Show(rows.size() - 1);
  }
  void DeleteRow(std::size_t row) override {
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
    grid->Refresh();
  }
  void PressCellButton(std::size_t row, std::size_t column) override {
    pressed.push_back(FromUtf8(std::to_string(row) + ":" + std::to_string(column)));
    if (on_press) on_press();
  }

 private:
  void Show(std::size_t row) {
    grid->Refresh();
    grid->SetCurrentRow(row);
  }
};

TEST(GridControl, RaisesOutOfMemoryWhereNoWindowCanBeMade) {
  HWND gone = nullptr;  // a child needs a parent
  std::int32_t number = 0;
  try {
    GridControl(gone, 1, u"SpecGrid", kScale);
  } catch (const AutomationError& error) {
    number = error.number();
  }
  EXPECT_EQ(number, kOutOfMemory);
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  EXPECT_FALSE(GetClassInfoExW(OwnModule(), L"QVA_Varnholt.Grid", &description));
}

/// A form with a field, the grid and another field, and the buttons OK and Cancel; and the user before it.
class GridControlTest : public testing::Test {
 protected:
  struct EmptyTemplate {
    DLGTEMPLATE dialog;
    WORD menu = 0;
    WORD window_class = 0;
    WORD title = 0;
  };

  void SetUp() override {
    if (!HasDisplay()) GTEST_SKIP() << "no display";
    Open();
  }
  void TearDown() override { Close(); }

  void Open() {
    EmptyTemplate empty{};
    empty.dialog.style = WS_POPUP | WS_CAPTION | WS_VISIBLE | DS_CONTROL;
    form = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &empty.dialog, nullptr, &Procedure,
                                      reinterpret_cast<LPARAM>(this));
    ASSERT_TRUE(form);
    SetWindowPos(form, nullptr, 50, 50, 500, 300, SWP_NOZORDER);
    before = AddControl(L"EDIT", 10, 0);
    grid = std::make_unique<GridControl>(form, 11, u"SpecGrid", kScale);
    font.emplace(kScale);
    grid->SetFont(font->get());
    MoveWindow(grid->window(), 0, 30, 440, 180, TRUE);
    after = AddControl(L"EDIT", 12, 220);
    AddControl(L"BUTTON", IDOK, 245);
    AddControl(L"BUTTON", IDCANCEL, 265);
    SendMessageW(form, DM_SETDEFID, IDOK, 0);
    grid->SetColumns(
        {{.name = u"Code", .caption = u"Kodas", .width = 90},
         {.name = u"Plan", .caption = u"Planas", .width = 90, .cell_button = true},
         {.name = u"Id", .caption = u"", .width = 0},
         {.name = u"Flag", .caption = u"Biudžeto", .width = 60, .read_only = true, .check_box = true},
         {.name = u"Name", .caption = u"Pavadinimas", .width = 120, .read_only = true}});
    model.grid = grid.get();
    model.rows = {{u"a0", u"b0", u"1", u"True", u"n0"},
                  {u"a1", u"b1", u"2", u"False", u"n1"},
                  {u"a2", u"b2", u"3", u"0", u"n2"}};
    grid->SetModel(&model);
    SetForegroundWindow(form);
    grid->SetFocus();
    Pump();
  }

  void Close() {
    grid.reset();
    if (form) DestroyWindow(form);
    form = nullptr;
    font.reset();
    Pump();
  }

  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, second);
    auto* test = reinterpret_cast<GridControlTest*>(GetWindowLongPtrW(window, DWLP_USER));
    if (message != WM_COMMAND || !test || LOWORD(first) > IDCANCEL) return FALSE;
    test->commands.push_back(LOWORD(first));
    return TRUE;
  }

  HWND AddControl(const wchar_t* window_class, int id, int top) {
    return CreateWindowExW(0, window_class, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, top, 100, 20, form,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  }

  void Pump() const {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (form && IsDialogMessageW(form, &message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }

  void Press(WORD key, const std::vector<WORD>& held = {}) const {
    StrikeKey(key, held);
    Pump();
  }
  void Type(std::u16string_view text) const {
    StrikeText(text);
    Pump();
  }
  void Repeat(int times, WORD key, const std::vector<WORD>& held = {}) const {
    for (int i = 0; i < times; ++i) Press(key, held);
  }

  /// The field over the current cell; null while none is edited.
  HWND Editor() const {
    HWND editor = FindWindowExW(grid->window(), nullptr, L"Edit", nullptr);
    return IsWindowVisible(editor) ? editor : nullptr;
  }
  std::u16string EditorText() const { return TextOfWindow(Editor()); }
  HWND Header() const { return FindWindowExW(grid->window(), nullptr, WC_HEADERW, nullptr); }
  RECT HeaderItem(int item) const {
    RECT area{};
    SendMessageW(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&area));
    return area;
  }
  /// The height of a line, which all lines have.
  int LineHeight() const {
    HDC context = GetDC(nullptr);
    HGDIOBJ old = SelectObject(context, font->get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    SelectObject(context, old);
    ReleaseDC(nullptr, context);
    return static_cast<int>(metrics.tmHeight) + 7;
  }
  /// A place in a cell of a grid that is not scrolled, at its left or right end.
  LPARAM PlaceIn(int line, int item, bool at_right = false) const {
    const RECT heading = HeaderItem(item);
    return MAKELPARAM(at_right ? heading.right - 6 : heading.left + 6,
                      heading.bottom + line * LineHeight() + LineHeight() / 2);
  }
  void Click(LPARAM place, UINT down = WM_LBUTTONDOWN) const {
    SendMessageW(grid->window(), down, MK_LBUTTON, place);
    SendMessageW(grid->window(), WM_LBUTTONUP, 0, place);
    Pump();
  }
  /// The texts of a column.
  Texts Column(std::size_t column) const {
    Texts texts;
    for (const Texts& row : model.rows) texts.push_back(row.at(column));
    return texts;
  }
  /// Writes a mark into the current cell, to see which one it is.
  Texts CellTakenByTyping(std::u16string_view mark) {
    Type(mark);
    Press(VK_RETURN);
    for (std::size_t row = 0; row < model.rows.size(); ++row) {
      for (std::size_t column = 0; column < model.width; ++column) {
        if (model.rows[row][column] == mark) {
          return {FromUtf8(std::to_string(row)), FromUtf8(std::to_string(column))};
        }
      }
    }
    return {};
  }

  TestModel model;
  std::optional<MessageFont> font;
  HWND form = nullptr;
  HWND before = nullptr;
  HWND after = nullptr;
  std::unique_ptr<GridControl> grid;
  std::vector<int> commands;
};

TEST_F(GridControlTest, StartsAtItsFirstCell) {
  EXPECT_EQ(GetFocus(), grid->window());
  EXPECT_EQ(grid->CurrentRow(), 0u);
  EXPECT_EQ(grid->Name(), u"SpecGrid");
  EXPECT_THAT(CellTakenByTyping(u"x"), ElementsAre(u"0", u"0"));
}

TEST_F(GridControlTest, ArrowsGoFromCellToCellAndStopAtTheEnds) {
  Press(VK_UP);
  Press(VK_LEFT);
  EXPECT_EQ(grid->CurrentRow(), 0u);
  Press(VK_DOWN);
  Press(VK_RIGHT);
  EXPECT_EQ(grid->CurrentRow(), 1u);
  EXPECT_THAT(CellTakenByTyping(u"x"), ElementsAre(u"1", u"1"));
  Repeat(2, VK_DOWN);
  EXPECT_EQ(grid->CurrentRow(), std::nullopt) << "the empty line is no row";
  Press(VK_DOWN);
  Press(VK_UP);
  EXPECT_EQ(grid->CurrentRow(), 2u);
}

TEST_F(GridControlTest, HomeAndEndGoToTheEndsOfTheLineAndWithCtrlToTheCorners) {
  Press(VK_END);
  Press(VK_LEFT);
  Press(VK_LEFT);
  EXPECT_THAT(CellTakenByTyping(u"x"), ElementsAre(u"0", u"1"))
      << "two before the last of four shown columns";
  Press(VK_HOME);
  EXPECT_THAT(CellTakenByTyping(u"y"), ElementsAre(u"0", u"0"));
  Press(VK_END, {VK_CONTROL});
  EXPECT_EQ(grid->CurrentRow(), std::nullopt);
  Press(VK_UP);
  Press(VK_HOME, {VK_CONTROL});
  EXPECT_THAT(CellTakenByTyping(u"z"), ElementsAre(u"0", u"0"));
}

TEST_F(GridControlTest, PageKeysGoByWhatIsInSightAndScroll) {
  model.rows.assign(100, Texts(model.width));
  grid->Refresh();
  Press(VK_NEXT);
  const std::size_t page = grid->CurrentRow().value();
  EXPECT_GT(page, 2u);
  EXPECT_LT(page, 15u);
  Press(VK_NEXT);
  EXPECT_EQ(grid->CurrentRow(), 2 * page);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(grid->window(), SB_VERT, &info);
  EXPECT_EQ(info.nMax, 100) << "the empty line, too";
  EXPECT_EQ(info.nPos, static_cast<int>(page) + 1);
  Press(VK_PRIOR);
  Press(VK_PRIOR);
  EXPECT_EQ(grid->CurrentRow(), 0u);
}

TEST_F(GridControlTest, TabGoesCellByCellOverTheHiddenColumnAndIntoTheNextLine) {
  Press(VK_TAB);
  EXPECT_THAT(CellTakenByTyping(u"x"), ElementsAre(u"0", u"1"));
  Repeat(3, VK_TAB);
  EXPECT_THAT(CellTakenByTyping(u"y"), ElementsAre(u"1", u"0")) << "four columns are shown";
  Press(VK_TAB, {VK_SHIFT});
  EXPECT_EQ(grid->CurrentRow(), 0u);
  EXPECT_EQ(GetFocus(), grid->window());
}

TEST_F(GridControlTest, TabLeavesTheGridAtItsEnds) {
  Press(VK_TAB, {VK_SHIFT});
  EXPECT_EQ(GetFocus(), before);
  Press(VK_TAB);
  EXPECT_EQ(GetFocus(), grid->window());
  Press(VK_END, {VK_CONTROL});
  Press(VK_TAB);
  EXPECT_EQ(GetFocus(), after);
}

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

TEST_F(GridControlTest, HeadsTheShownColumnsAlone) {
  EXPECT_EQ(SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0), 5) << "the marker's and four columns";
  wchar_t text[50];
  HDITEMW item{};
  item.mask = HDI_TEXT;
  item.pszText = text;
  item.cchTextMax = 50;
  SendMessageW(Header(), HDM_GETITEMW, 3, reinterpret_cast<LPARAM>(&item));
  EXPECT_STREQ(item.pszText, L"Biudžeto");
}

TEST_F(GridControlTest, TheMouseResizesColumnsDownToALeastWidth) {
  const RECT item = HeaderItem(1);
  const auto drag = [&](int from, int to) {
    SendMessageW(Header(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 5));
    for (int step = 1; step <= 4; ++step) {
      SendMessageW(Header(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(from + (to - from) * step / 4, 5));
    }
    SendMessageW(Header(), WM_LBUTTONUP, 0, MAKELPARAM(to, 5));
    Pump();
  };
  const RECT marker = HeaderItem(0);
  drag(marker.right + 2, marker.right + 30);
  EXPECT_EQ(HeaderItem(0).right, marker.right) << "the marker's width is fixed";
  drag(item.right - 1, item.right + 39);
  EXPECT_EQ(HeaderItem(1).right, item.right + 40);
  drag(item.right + 39, item.left + 1);
  EXPECT_GE(HeaderItem(1).right - HeaderItem(1).left, 16);
}

TEST_F(GridControlTest, ScrollsSidewaysToTheCurrentCell) {
  MoveWindow(grid->window(), 0, 30, 150, 180, TRUE);
  Press(VK_END);
  RECT header;
  GetWindowRect(Header(), &header);
  MapWindowPoints(nullptr, grid->window(), reinterpret_cast<POINT*>(&header), 2);
  EXPECT_LT(header.left, 0);
  RECT inside;
  GetClientRect(grid->window(), &inside);
  EXPECT_LE(HeaderItem(4).right + header.left, inside.right);
  Press(VK_HOME);
  GetWindowRect(Header(), &header);
  MapWindowPoints(nullptr, grid->window(), reinterpret_cast<POINT*>(&header), 2);
  EXPECT_EQ(header.left, 0);
}

TEST_F(GridControlTest, TheWheelScrollsByParts) {
  model.rows.assign(100, Texts(model.width));
  grid->Refresh();
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  const auto turn = [&](int delta) {
    SendMessageW(grid->window(), WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
    return GetScrollPos(grid->window(), SB_VERT);
  };
  EXPECT_EQ(turn(-WHEEL_DELTA), static_cast<int>(lines));
  turn(-WHEEL_DELTA / 2);
  EXPECT_EQ(turn(-WHEEL_DELTA / 2), 2 * static_cast<int>(lines)) << "fine wheels turn in parts of a notch";
  EXPECT_EQ(turn(10 * WHEEL_DELTA), 0);
  EXPECT_EQ(grid->CurrentRow(), 0u) << "scrolling moves nothing";
}

TEST_F(GridControlTest, ScrollBarsFollowTheirButtons) {
  model.rows.assign(100, Texts(model.width));
  grid->Refresh();
  const auto request = [&](int code) {
    SendMessageW(grid->window(), WM_VSCROLL, static_cast<WPARAM>(code), 0);
    return GetScrollPos(grid->window(), SB_VERT);
  };
  EXPECT_EQ(request(SB_LINEDOWN), 1);
  const int page = request(SB_PAGEDOWN) - 1;
  EXPECT_GT(page, 1);
  EXPECT_EQ(request(SB_PAGEUP), 1);
  EXPECT_EQ(request(SB_BOTTOM), 101 - page);
  EXPECT_EQ(request(SB_LINEDOWN), 101 - page);
  EXPECT_EQ(request(SB_TOP), 0);
}

TEST_F(GridControlTest, TheProgramSetsTheCurrentRowAndItComesIntoSight) {
  model.rows.assign(100, Texts(model.width));
  grid->Refresh();
  grid->SetCurrentRow(60);
  EXPECT_EQ(grid->CurrentRow(), 60u);
  EXPECT_GT(GetScrollPos(grid->window(), SB_VERT), 40);
  grid->SetCurrentRow(100);
  EXPECT_EQ(grid->CurrentRow(), 60u) << "there is no such row";
  model.rows.resize(10, Texts(model.width));
  grid->Refresh();
  EXPECT_EQ(grid->CurrentRow(), 9u);
  model.rows.clear();
  grid->Refresh();
  EXPECT_EQ(grid->CurrentRow(), std::nullopt);
  model.rows.assign(2, Texts(model.width));
  grid->Refresh();
  EXPECT_EQ(grid->CurrentRow(), 0u);
}

TEST_F(GridControlTest, RefreshGivesUpWhatIsBeingEdited) {
  Type(u"x");
  model.rows.clear();
  grid->Refresh();
  EXPECT_FALSE(Editor());
  EXPECT_THAT(model.stored, IsEmpty());
  EXPECT_EQ(GetFocus(), grid->window());
}

TEST_F(GridControlTest, WithoutAModelThereIsNothingToDo) {
  Type(u"x");
  grid->SetModel(nullptr);
  EXPECT_EQ(grid->CurrentRow(), std::nullopt);
  for (const WORD key : {VK_DOWN, VK_F2, VK_F4, VK_DELETE, VK_HOME, VK_NEXT}) Press(key);
  Type(u"x ");
  Click(PlaceIn(0, 1));
  EXPECT_FALSE(Editor());
  Press(VK_TAB);
  EXPECT_EQ(GetFocus(), after);
  grid->SetModel(&model);
  EXPECT_EQ(grid->CurrentRow(), 0u);
  grid->SetColumns({});
  for (const WORD key : {VK_DOWN, VK_F2, VK_F4, VK_HOME}) Press(key);
  Click(MAKELPARAM(30, 60));
  EXPECT_FALSE(Editor());
}

TEST_F(GridControlTest, AnErrorOfTheModelDoesNotReachWindows) {
  Press(VK_RIGHT);
  model.on_press = [] { throw AutomationError(kOutOfMemory); };
  Press(VK_F4);
  EXPECT_EQ(model.pressed.size(), 1u);
  model.on_press = [] { throw std::bad_alloc(); };
  Press(VK_F4);
  EXPECT_EQ(model.pressed.size(), 2u);
  Press(VK_DOWN);
  EXPECT_EQ(grid->CurrentRow(), 1u);
}

TEST_F(GridControlTest, DisabledItTakesNothing) {
  Type(u"x");
  grid->SetEnabled(false);
  EXPECT_FALSE(grid->Enabled());
  EXPECT_FALSE(Editor());
  EXPECT_EQ(model.rows[0][0], u"x") << "what was typed is stored";
  grid->SetEnabled(true);
  EXPECT_TRUE(grid->Enabled());
}

TEST_F(GridControlTest, ColumnsGrowWithTheScaleOfTheDisplay) {
  const RECT at_96 = HeaderItem(1);
  grid->Rescale({144});
  const RECT at_144 = HeaderItem(1);
  EXPECT_EQ(at_144.right - at_144.left, (at_96.right - at_96.left) * 3 / 2);
  grid->Rescale({96});
  EXPECT_EQ(HeaderItem(1).right, at_96.right);
}

/// How many points of a part of the grid have a color.
int CountPoints(HWND grid, const RECT& area, COLORREF color) {
  RedrawWindow(grid, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  HDC context = GetDC(grid);
  int count = 0;
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x) count += GetPixel(context, x, y) == color;
  }
  ReleaseDC(grid, context);
  return count;
}

TEST_F(GridControlTest, PaintsTheCurrentCellAsSelectedAndTextsInTheirCells) {
  const RECT heading = HeaderItem(1);
  const auto cell = [&](int line) {
    return RECT{heading.left + 2, heading.bottom + line * LineHeight() + 2, heading.right - 2,
                heading.bottom + (line + 1) * LineHeight() - 2};
  };
  const COLORREF selected = GetSysColor(COLOR_HIGHLIGHT);
  EXPECT_GT(CountPoints(grid->window(), cell(0), selected), 200);
  EXPECT_EQ(CountPoints(grid->window(), cell(1), selected), 0);
  const COLORREF background = GetSysColor(COLOR_WINDOW);
  const RECT area = cell(1);
  EXPECT_LT(CountPoints(grid->window(), area, background),
            (area.right - area.left) * (area.bottom - area.top))
      << "there is a text";
  ::SetFocus(after);
  EXPECT_EQ(CountPoints(grid->window(), cell(0), selected), 0) << "the user is elsewhere";
}

TEST_F(GridControlTest, LooksDisabledWhenItIs) {
  RECT body;
  GetClientRect(grid->window(), &body);
  body.top = body.bottom - 40;  // below the lines
  const int all = static_cast<int>((body.right - body.left) * (body.bottom - body.top));
  EXPECT_EQ(CountPoints(grid->window(), body, GetSysColor(COLOR_WINDOW)), all);
  grid->SetEnabled(false);
  EXPECT_EQ(CountPoints(grid->window(), body, GetSysColor(COLOR_BTNFACE)), all);
}

TEST_F(GridControlTest, LeavesNothingBehindHoweverOftenItComesAndGoes) {
  const auto use = [&] {
    Type(u"x");
    SendMessageW(grid->window(), WM_PAINT, 0, 0);
    RedrawWindow(grid->window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    Close();
    Open();
  };
  for (int i = 0; i < 5; ++i) use();  // what the system keeps for itself
  const HandleCounts before_use;
  for (int i = 0; i < 200; ++i) use();
  ExpectNothingKept(before_use, {});
  Close();
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  EXPECT_FALSE(GetClassInfoExW(OwnModule(), L"QVA_Varnholt.Grid", &description));
}

}  // namespace
}  // namespace qva::windows
