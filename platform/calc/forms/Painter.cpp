#include "platform/calc/forms/Painter.h"

#include <com/sun/star/awt/FontWeight.hpp>

#include "platform/calc/UnoText.h"

namespace qva::calc {

using css::awt::Rectangle;

namespace {

constexpr sal_Int32 kNone = -1;  // as a colour: nothing is drawn

}  // namespace

Painter::Painter(const Window& window, const Theme& theme)
    : theme_(theme), device_(window.As<css::awt::XDevice>()), graphics_(device_->createGraphics()) {
  SetBold(false);
}

void Painter::SetBold(bool bold) {
  css::awt::FontDescriptor font = theme_.font;
  if (bold) font.Weight = css::awt::FontWeight::BOLD;
  font_ = device_->getFont(font);
  graphics_->setFont(font_);
}

void Painter::Fill(const Rectangle& area, sal_Int32 color) {
  if (area.Width <= 0 || area.Height <= 0) return;
  graphics_->setLineColor(kNone);
  graphics_->setFillColor(color);
  graphics_->drawRect(area.X, area.Y, area.Width, area.Height);
}

void Painter::Frame(const Rectangle& area, sal_Int32 color) {
  const int right = area.X + area.Width - 1;
  const int bottom = area.Y + area.Height - 1;
  Line(area.X, area.Y, right, area.Y, color);
  Line(right, area.Y, right, bottom, color);
  Line(area.X, bottom, right, bottom, color);
  Line(area.X, area.Y, area.X, bottom, color);
}

void Painter::Line(int x1, int y1, int x2, int y2, sal_Int32 color) {
  graphics_->setLineColor(color);
  graphics_->drawLine(x1, y1, x2, y2);
}

void Painter::Polygon(const std::vector<std::pair<int, int>>& points, sal_Int32 color) {
  css::uno::Sequence<sal_Int32> xs(static_cast<sal_Int32>(points.size()));
  css::uno::Sequence<sal_Int32> ys(xs.getLength());
  for (sal_Int32 i = 0; i < xs.getLength(); ++i) {
    xs.getArray()[i] = points[static_cast<std::size_t>(i)].first;
    ys.getArray()[i] = points[static_cast<std::size_t>(i)].second;
  }
  graphics_->setLineColor(color);
  graphics_->setFillColor(color);
  graphics_->drawPolygon(xs, ys);
}

void Painter::Ellipse(const Rectangle& area, sal_Int32 color) {
  graphics_->setLineColor(color);
  graphics_->setFillColor(color);
  graphics_->drawEllipse(area.X, area.Y, area.Width, area.Height);
}

int Painter::TextWidth(std::u16string_view text) const {
  return font_->getStringWidth(ToUno(text));
}

void Painter::Text(Rectangle area, std::u16string_view text, sal_Int32 color, Align align) {
  std::u16string shown(text);
  if (TextWidth(shown) > area.Width) {
    while (!text.empty() && TextWidth(shown = std::u16string(text) + u"…") > area.Width)
      text.remove_suffix(1);
  }
  const int blank = area.Width - TextWidth(shown);
  if (align == Align::Center) area.X += blank / 2;
  if (align == Align::Right) area.X += blank;
  const css::awt::SimpleFontMetric metric = font_->getFontMetric();
  graphics_->setTextColor(color);
  graphics_->drawText(area.X, area.Y + (area.Height - metric.Ascent - metric.Descent) / 2, ToUno(shown));
}

void Painter::Caption(const Rectangle& area, std::u16string_view text, sal_Int32 color) {
  std::size_t blank = text.npos;
  if (TextWidth(text) > area.Width) {
    // At the last blank up to which the text fits.
    for (std::size_t at = text.find(u' '); at != text.npos; at = text.find(u' ', at + 1)) {
      if (blank != text.npos && TextWidth(text.substr(0, at)) > area.Width) break;
      blank = at;
    }
  }
  if (blank == text.npos) {
    Text(area, text, color);
    return;
  }
  Rectangle half = area;
  half.Height /= 2;
  Text(half, text.substr(0, blank), color);
  half.Y += half.Height;
  Text(half, text.substr(blank + 1), color);
}

}  // namespace qva::calc
