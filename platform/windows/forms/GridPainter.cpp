#include "platform/windows/forms/GridPainter.h"

#include <algorithm>

#include "platform/windows/DeviceContext.h"
#include "platform/windows/WideText.h"

namespace qva::windows {
namespace {

/// A picture in memory of a part of a window, which gets it at the end.
class Buffer {
 public:
  Buffer(HDC target, const RECT& area)
      : target_(target),
        area_(area),
        context_(CreateCompatibleDC(target)),
        bitmap_(CreateCompatibleBitmap(target, area.right - area.left, area.bottom - area.top)),
        selected_(context_.get(), bitmap_.get()) {
    SetViewportOrgEx(context(), -area.left, -area.top, nullptr);
  }
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;
  ~Buffer() {
    if (is_usable()) {
      BitBlt(target_, area_.left, area_.top, area_.right - area_.left, area_.bottom - area_.top, context(),
             area_.left, area_.top, SRCCOPY);
    }
  }

  bool is_usable() const { return context_ && selected_; }
  HDC context() const { return context_.get(); }

 private:
  HDC target_;
  RECT area_;
  MemoryContext context_;
  Bitmap bitmap_;
  Selected selected_;
};

void Fill(HDC context, const RECT& area, int color) {
  FillRect(context, &area, GetSysColorBrush(color));
}

class Painter {
 public:
  Painter(HDC context, const GridPicture& picture) : context_(context), picture_(picture) {
    SetBkMode(context, TRANSPARENT);
  }

  void Paint(const RECT& dirty) const {
    const GridLayout& layout = picture_.layout;
    const RECT body = layout.Body();
    Fill(context_, body, picture_.is_enabled ? COLOR_WINDOW : COLOR_BTNFACE);
    if (picture_.state.columns().empty()) return;
    const std::size_t end = std::min(layout.lines(), layout.top_line() + layout.PageSize() + 1);
    for (std::size_t line = layout.top_line(); line < end; ++line) {
      PaintMarker(line);
      for (std::size_t column = 0; column < picture_.state.columns().size(); ++column) {
        const GridCell cell{line, column};
        const RECT area = layout.CellArea(cell);
        if (area.left < dirty.right && area.right > dirty.left) PaintCell(cell, area);
      }
    }
  }

 private:
  bool IsRow(std::size_t line) const { return line < picture_.state.RowCount(); }

  void Write(std::u16string_view text, RECT area, int color, UINT alignment) const {
    SetTextColor(context_, GetSysColor(color));
    DrawTextW(context_, Wide(text.data()), static_cast<int>(text.size()), &area,
              alignment | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  }

  /// The lines to the right of an area and below it.
  void Separate(const RECT& area) const {
    Fill(context_, {area.right, area.top, area.right + 1, area.bottom + 1}, COLOR_3DLIGHT);
    Fill(context_, {area.left, area.bottom, area.right + 1, area.bottom + 1}, COLOR_3DLIGHT);
  }

  /// A triangle at the current row, a star at the line that has no row yet.
  void PaintMarker(std::size_t line) const {
    const RECT area = picture_.layout.MarkerArea(line);
    Fill(context_, area, COLOR_BTNFACE);
    Separate(area);
    const bool is_current = line == picture_.state.current().line;
    if (!IsRow(line)) {
      Write(u"*", area, COLOR_BTNTEXT, DT_CENTER);
    } else if (is_current) {
      const int size = (area.bottom - area.top) / 4;
      const int left = (area.left + area.right - size) / 2;
      const int middle = (area.top + area.bottom) / 2;
      const POINT corners[] = {{left, middle - size}, {left + size, middle}, {left, middle + size}};
      const Selected brush(context_, GetSysColorBrush(COLOR_BTNTEXT));
      const Selected pen(context_, GetStockObject(NULL_PEN));
      Polygon(context_, corners, 3);
    }
  }

  void PaintCell(GridCell cell, RECT area) const {
    const ShownColumn& column = picture_.state.columns()[cell.column];
    const bool is_current = cell == picture_.state.current();
    const bool is_edited = is_current && picture_.is_edited;
    int text_color = picture_.is_enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT;
    Separate(area);
    if (is_current && picture_.is_enabled && !is_edited) {
      Fill(context_, area, picture_.has_focus ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
      text_color = picture_.has_focus ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT;
    }
    if (is_current && column.description.cell_button) {
      const RECT button = CellButtonArea(area);
      PaintButton(button);
      area.right = button.left;
    }
    if (is_edited) {
      FrameRect(context_, &area, GetSysColorBrush(COLOR_HIGHLIGHT));
      return;
    }
    if (IsRow(cell.line)) {
      const std::u16string text = picture_.state.TextOf(cell);
      if (column.description.check_box) {
        PaintMark(area, IsMarked(text));
      } else {
        Write(text, {area.left + kCellPadding, area.top, area.right - kCellPadding, area.bottom}, text_color,
              DT_LEFT);
      }
    }
    if (is_current && picture_.has_focus) {
      SetTextColor(context_, GetSysColor(COLOR_WINDOWTEXT));
      DrawFocusRect(context_, &area);
    }
  }

  void PaintMark(const RECT& area, bool is_true) const {
    const int size = (area.bottom - area.top) * 3 / 4;
    RECT box{(area.left + area.right - size) / 2, (area.top + area.bottom - size) / 2, 0, 0};
    box.right = box.left + size;
    box.bottom = box.top + size;
    DrawFrameControl(context_, &box, DFC_BUTTON,
                     DFCS_BUTTONCHECK | DFCS_FLAT | (is_true ? DFCS_CHECKED : 0) |
                         (picture_.is_enabled ? 0 : DFCS_INACTIVE));
  }

  void PaintButton(RECT area) const {
    DrawFrameControl(context_, &area, DFC_BUTTON,
                     DFCS_BUTTONPUSH | (picture_.is_button_pressed ? DFCS_PUSHED : 0));
    if (picture_.is_button_pressed) OffsetRect(&area, 1, 1);
    Write(u"…", area, picture_.is_enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT, DT_CENTER);
  }

  HDC context_;
  const GridPicture& picture_;
};

}  // namespace

RECT CellButtonArea(const RECT& cell) {
  const LONG width = std::min(cell.bottom - cell.top, cell.right - cell.left);
  return {cell.right - width, cell.top, cell.right, cell.bottom};
}

void PaintGrid(HDC target, const RECT& dirty, const GridPicture& picture) {
  const Buffer buffer(target, dirty);
  HDC context = buffer.is_usable() ? buffer.context() : target;
  const Selected font(context, picture.font);
  Painter(context, picture).Paint(dirty);
}

}  // namespace qva::windows
