#include "platform/windows/forms/GridControl.h"

#include "tests/raised_error.h"
#include "tests/windows/grid_test.h"

namespace qva::windows {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(GridControl, RaisesOutOfMemoryWhereNoWindowCanBeMade) {
  HWND gone = nullptr;  // a child needs a parent
  EXPECT_EQ(RaisedBy([&] { GridControl(gone, 1, u"SpecGrid", kScale, {}); }), kOutOfMemory);
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  EXPECT_FALSE(GetClassInfoExW(OwnModule(), L"QVA_Varnholt.Grid", &description));
}

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

TEST_F(GridControlTest, BreaksCaptionsIntoLinesWhereTheirColumnsAreNarrow) {
  const RECT one_line = HeaderItem(1);
  const std::u16string caption = u"Einamojo laikotarpio biudžetas";
  const auto show = [&](int width) {
    grid->SetColumns({{.name = u"Code", .caption = u"Knyga", .width = 60},
                      {.name = u"Doc", .caption = caption, .width = width}});
    return HeaderItem(2);
  };
  EXPECT_EQ(show(400).bottom, one_line.bottom);
  const RECT lines = show(100);
  EXPECT_GE(lines.bottom - one_line.bottom, LineHeight() - 7) << "another line of text";
  EXPECT_EQ(lines.right - lines.left, 100);
  // The first line is above the middle, the last below it.
  const COLORREF color = GetSysColor(COLOR_BTNTEXT);
  const LONG middle = lines.bottom / 2;
  EXPECT_GT(CountPoints(Header(), {lines.left, 0, lines.right, middle}, color), 10);
  EXPECT_GT(CountPoints(Header(), {lines.left, middle, lines.right, lines.bottom}, color), 10);
  Click(PlaceIn(1, 1));
  EXPECT_EQ(grid->CurrentRow(), 1u) << "the rows begin below it";
  show(400);
  EXPECT_EQ(HeaderItem(2).bottom, one_line.bottom);
}

TEST_F(GridControlTest, GivesCaptionsTheLinesThatTheyNeedWhenTheUserResizesAColumn) {
  const RECT one_line = HeaderItem(1);
  HDITEMW item{};
  item.mask = HDI_WIDTH;
  item.cxy = 400;
  grid->SetColumns({{.name = u"Doc", .caption = u"Einamojo laikotarpio biudžetas", .width = 80}});
  EXPECT_GT(HeaderItem(1).bottom, one_line.bottom);
  SendMessageW(Header(), HDM_SETITEMW, 1, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(HeaderItem(1).bottom, one_line.bottom);
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
