#include "platform/windows/forms/GridHeader.h"

#include <uxtheme.h>
#include <vsstyle.h>

#include <algorithm>
#include <iterator>
#include <memory>

#include "platform/windows/DeviceContext.h"
#include "platform/windows/forms/GridPainter.h"
#include "platform/windows/forms/LateFunctions.h"

namespace qva::windows {
namespace {

constexpr UINT kFormat = DT_LEFT | DT_WORDBREAK | DT_NOPREFIX;

/// A header's caption and the room for it.
struct Caption {
  Caption(HWND header, WPARAM number) {
    HDITEMW item{};
    item.mask = HDI_TEXT | HDI_WIDTH;
    item.pszText = text;
    item.cchTextMax = static_cast<int>(std::size(text));
    SendMessageW(header, HDM_GETITEMW, number, reinterpret_cast<LPARAM>(&item));
    width = std::max(item.cxy - 2 * kCellPadding, 1);
  }

  int Height(HDC context) const {
    RECT area{0, 0, width, 0};
    return DrawTextW(context, text, -1, &area, kFormat | DT_CALCRECT);
  }

  wchar_t text[300] = L"";
  int width;
};

HFONT FontOf(HWND window) {
  return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

/// As the system does it for a heading that is no button.
void PaintBackground(HWND header, HDC context, RECT area) {
  struct Close {
    void operator()(void* theme) const { late::CloseThemeData(theme); }
  };
  if (const std::unique_ptr<void, Close> theme{late::OpenThemeData(header, L"Header")}) {
    late::DrawThemeBackground(theme.get(), context, HP_HEADERITEM, HIS_NORMAL, &area, nullptr);
  } else {
    FillRect(context, &area, GetSysColorBrush(COLOR_BTNFACE));
    DrawEdge(context, &area, EDGE_ETCHED, BF_RIGHT | BF_BOTTOM);
  }
}

}  // namespace

int HeaderHeight(HWND header, int one_line) {
  const WindowContext context(header);
  const Selected font(context.get(), FontOf(header));
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  int more = 0;
  const auto count = static_cast<WPARAM>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
  for (WPARAM i = 0; i < count; ++i) {
    more = std::max(more, Caption(header, i).Height(context.get()) - static_cast<int>(metrics.tmHeight));
  }
  return one_line + more;
}

LRESULT DrawHeader(const NMCUSTOMDRAW& draw) {
  if (draw.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  HWND header = draw.hdr.hwndFrom;
  const Caption caption(header, draw.dwItemSpec);
  const Selected font(draw.hdc, FontOf(header));
  PaintBackground(header, draw.hdc, draw.rc);
  const LONG top = (draw.rc.top + draw.rc.bottom - caption.Height(draw.hdc)) / 2;
  RECT area{draw.rc.left + kCellPadding, top, draw.rc.left + kCellPadding + caption.width, draw.rc.bottom};
  SetBkMode(draw.hdc, TRANSPARENT);
  SetTextColor(draw.hdc, GetSysColor(COLOR_BTNTEXT));
  DrawTextW(draw.hdc, caption.text, -1, &area, kFormat | DT_END_ELLIPSIS);
  return CDRF_SKIPDEFAULT;
}

}  // namespace qva::windows
