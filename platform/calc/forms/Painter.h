// Drawing into a window.
#pragma once

#include <com/sun/star/awt/XGraphics.hpp>
#include <utility>
#include <vector>

#include "platform/calc/Uno.h"
#include "platform/calc/forms/Theme.h"

namespace qva::calc {

/// Draws into a window from within its OnPaint. Places are the window's pixels.
class Painter {
 public:
  Painter(const Window& window, const Theme& theme);

  const Theme& theme() const { return theme_; }
  void Fill(const css::awt::Rectangle& area, sal_Int32 color);
  void Frame(const css::awt::Rectangle& area, sal_Int32 color);
  void Line(int x1, int y1, int x2, int y2, sal_Int32 color);
  void Polygon(const std::vector<std::pair<int, int>>& points, sal_Int32 color);
  void Ellipse(const css::awt::Rectangle& area, sal_Int32 color);

 private:
  const Theme& theme_;
  Reference<css::awt::XGraphics> graphics_;
};

}  // namespace qva::calc
