#include "platform/calc/forms/Painter.h"

#include <com/sun/star/awt/XDevice.hpp>

#include "platform/calc/Uno.h"

namespace qva::calc {

using css::awt::Rectangle;

namespace {

constexpr sal_Int32 kNone = -1;  // as a colour: nothing is drawn

}  // namespace

Painter::Painter(const Window& window, const Theme& theme)
    : theme_(theme), graphics_(window.As<css::awt::XDevice>()->createGraphics()) {
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
  Sequence<sal_Int32> xs(static_cast<sal_Int32>(points.size()));
  Sequence<sal_Int32> ys(xs.getLength());
  for (sal_Int32 i = 0; i < xs.getLength(); ++i) {
    xs.getArray()[i] = points[static_cast<std::size_t>(i)].first;
    ys.getArray()[i] = points[static_cast<std::size_t>(i)].second;
  }
  graphics_->setLineColor(kNone);  // GTK's look draws the edge of a polygon in another place than its inside
  graphics_->setFillColor(color);
  graphics_->drawPolygon(xs, ys);
}

void Painter::Ellipse(const Rectangle& area, sal_Int32 color) {
  graphics_->setLineColor(color);
  graphics_->setFillColor(color);
  graphics_->drawEllipse(area.X, area.Y, area.Width, area.Height);
}

}  // namespace qva::calc
