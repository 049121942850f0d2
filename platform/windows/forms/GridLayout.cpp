#include "platform/windows/forms/GridLayout.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "platform/windows/forms/GridHeader.h"
#include "platform/windows/forms/UiScale.h"

namespace qva::windows {
namespace {

void SetBar(HWND window, int bar, int last, int page, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = last;
  info.nPage = static_cast<UINT>(page);
  info.nPos = position;
  SetScrollInfo(window, bar, &info, TRUE);
}

}  // namespace

void GridLayout::Attach(HWND window, HWND header) {
  window_ = window;
  header_ = header;
}

void GridLayout::Arrange() {
  if (arranging_) return;  // a bar that comes or goes resizes the window
  arranging_ = true;
  const PerDisplayPixels pixels;
  RECT inside = Inside();
  WINDOWPOS place{};
  HDLAYOUT header{&inside, &place};
  if (SendMessageW(header_, HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(&header))) {
    const int height_before = std::exchange(header_height_, HeaderHeight(header_, place.cy));
    if (height_before != header_height_) InvalidateRect(header_, nullptr, FALSE);
  }

  const int width = columns() > 0 ? static_cast<int>(HeaderItem(static_cast<int>(columns())).right) : 0;
  // Each bar takes room that the other one is reckoned with.
  for (int pass = 0; pass < 2; ++pass) {
    const std::size_t page = PageSize();
    top_line_ = std::min(top_line_, lines_ > page ? lines_ - page : 0);
    SetBar(window_, SB_VERT, static_cast<int>(lines_) - 1, static_cast<int>(page),
           static_cast<int>(top_line_));
    const int room = static_cast<int>(Inside().right);
    scroll_x_ = std::clamp(scroll_x_, 0, std::max(width - room, 0));
    SetBar(window_, SB_HORZ, width - 1, room, scroll_x_);
  }
  SetWindowPos(header_, nullptr, -scroll_x_, 0, Inside().right + scroll_x_, header_height_,
               SWP_NOZORDER | SWP_NOACTIVATE);
  InvalidateRect(window_, nullptr, FALSE);
  arranging_ = false;
}

std::size_t GridLayout::columns() const {
  const LRESULT items = SendMessageW(header_, HDM_GETITEMCOUNT, 0, 0);
  return items > 1 ? static_cast<std::size_t>(items - 1) : 0;
}

std::size_t GridLayout::PageSize() const {
  const RECT body = Body();
  return static_cast<std::size_t>(std::max<long>((body.bottom - body.top) / line_height_, 1));
}

RECT GridLayout::HeaderItem(int item) const {
  RECT area{};
  SendMessageW(header_, HDM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&area));
  return area;
}

RECT GridLayout::ItemArea(int item, std::size_t line) const {
  const RECT heading = HeaderItem(item);
  const int top = header_height_ + (static_cast<int>(line) - static_cast<int>(top_line_)) * line_height_;
  return {heading.left - scroll_x_, top, heading.right - scroll_x_ - 1, top + line_height_ - 1};
}

RECT GridLayout::CellArea(GridCell cell) const {
  return ItemArea(static_cast<int>(cell.column) + 1, cell.line);
}

RECT GridLayout::MarkerArea(std::size_t line) const {
  return ItemArea(0, line);
}

RECT GridLayout::Inside() const {
  RECT inside{};
  GetClientRect(window_, &inside);
  return inside;
}

RECT GridLayout::Body() const {
  RECT body = Inside();
  body.top = std::min<LONG>(header_height_, body.bottom);
  return body;
}

std::optional<std::size_t> GridLayout::LineAt(int y) const {
  if (y < header_height_) return std::nullopt;
  const std::size_t line = top_line_ + static_cast<std::size_t>((y - header_height_) / line_height_);
  if (line >= lines_) return std::nullopt;
  return line;
}

std::optional<std::size_t> GridLayout::ColumnAt(int x) const {
  for (std::size_t column = 0; column < columns(); ++column) {
    const RECT heading = HeaderItem(static_cast<int>(column) + 1);
    if (x >= heading.left - scroll_x_ && x < heading.right - scroll_x_) return column;
  }
  return std::nullopt;
}

bool GridLayout::Show(GridCell cell) {
  const PerDisplayPixels pixels;
  const std::size_t top_before = top_line_;
  const int x_before = scroll_x_;
  const std::size_t page = PageSize();
  if (cell.line < top_line_) top_line_ = cell.line;
  if (cell.line >= top_line_ + page) top_line_ = cell.line - page + 1;

  const int room = static_cast<int>(Inside().right);
  const RECT heading = HeaderItem(static_cast<int>(cell.column) + 1);
  scroll_x_ = std::max<int>(scroll_x_, heading.right - room);
  // The beginning of a column that is wider than the window counts more than its end; the marker stands
  // before the first one.
  scroll_x_ = std::min<int>(scroll_x_, cell.column == 0 ? 0 : heading.left);
  if (top_line_ == top_before && scroll_x_ == x_before) return false;
  Arrange();
  return true;
}

void GridLayout::Follow(int bar, int request) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(window_, bar, &info);
  const int step = bar == SB_VERT ? 1 : line_height_;
  int position = info.nPos;
  switch (request) {
    case SB_LINEUP:
      position -= step;
      break;
    case SB_LINEDOWN:
      position += step;
      break;
    case SB_PAGEUP:
      position -= static_cast<int>(info.nPage);
      break;
    case SB_PAGEDOWN:
      position += static_cast<int>(info.nPage);
      break;
    case SB_TOP:
      position = info.nMin;
      break;
    case SB_BOTTOM:
      position = info.nMax;
      break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      position = info.nTrackPos;
      break;
    default:
      return;
  }
  if (bar == SB_VERT) {
    ScrollLines(position - info.nPos);
  } else {
    ScrollColumns(position - info.nPos);
  }
}

void GridLayout::ScrollLines(long lines) {
  top_line_ = static_cast<std::size_t>(std::max(static_cast<long>(top_line_) + lines, 0L));
  Arrange();  // which knows the greatest one
}

void GridLayout::ScrollColumns(int pixels) {
  scroll_x_ += pixels;
  Arrange();
}

}  // namespace qva::windows
