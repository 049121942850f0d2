// Where the lines and columns of a grid stand in its window, and how far it is scrolled.
#pragma once

#include <cstddef>
#include <optional>

#include "platform/forms/grid_state.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Lines below each other under a header control, whose first item heads the column of the row marker. Places
/// are pixels of the window's inside.
class GridLayout {
 public:
  /// Both are borrowed; the header is a child of the window.
  void Attach(HWND window, HWND header);

  void SetLineHeight(int height) { line_height_ = height; }
  void SetLines(std::size_t count) { lines_ = count; }
  /// Fits header and scroll bars to the window's size, the columns' widths and the number of lines. Call it
  /// when any of these has changed.
  void Arrange();

  std::size_t lines() const { return lines_; }
  std::size_t columns() const;
  /// The whole lines that the window has room for, at least 1.
  std::size_t PageSize() const;
  /// The first line that is in sight.
  std::size_t top_line() const { return top_line_; }

  /// The cell's inside, without the lines that separate it from its neighbours.
  RECT CellArea(GridCell cell) const;
  /// The same of the marker at the beginning of a line.
  RECT MarkerArea(std::size_t line) const;
  /// All of the window's inside.
  RECT Inside() const;
  /// Everything below the header.
  RECT Body() const;
  /// The line and the column at a place, if there is one.
  std::optional<std::size_t> LineAt(int y) const;
  std::optional<std::size_t> ColumnAt(int x) const;

  /// Scrolls as little as brings the whole cell into sight. True when anything moved.
  bool Show(GridCell cell);
  /// Answers a scroll bar (SB_VERT or SB_HORZ) with a request of its messages (SB_LINEDOWN, SB_THUMBTRACK …).
  void Follow(int bar, int request);
  void ScrollLines(long lines);
  void ScrollColumns(int pixels);

 private:
  RECT ItemArea(int item, std::size_t line) const;
  RECT HeaderItem(int item) const;

  HWND window_ = nullptr;
  HWND header_ = nullptr;
  int header_height_ = 0;
  int line_height_ = 1;
  std::size_t lines_ = 0;
  std::size_t top_line_ = 0;
  int scroll_x_ = 0;
  bool arranging_ = false;
};

}  // namespace qva::windows
