#include "platform/windows/forms/Font.h"

#include "platform/windows/DeviceContext.h"

namespace qva::windows {

MessageFont::MessageFont(UiScale scale) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return;
  // They are those of the system's scale, which a window's own display need not have.
  LOGFONTW& font = metrics.lfMessageFont;
  font.lfHeight = MulDiv(font.lfHeight, scale.dpi, ScaleOf(nullptr).dpi);
  font.lfWidth = 0;
  font_.reset(CreateFontIndirectW(&font));
}

int TextHeight(HWND window, HFONT font) {
  const WindowContext context(window);
  const Selected selected(context.get(), font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  return static_cast<int>(metrics.tmHeight);
}

}  // namespace qva::windows
