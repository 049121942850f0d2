// Drawing into a window.
#pragma once

#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/awt/XFont.hpp>
#include <com/sun/star/awt/XGraphics.hpp>
#include <string_view>
#include <vector>

#include "platform/calc/forms/Theme.h"

namespace qva::calc {

enum class Align { Left, Center, Right };

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
  /// One line of text in the middle of the area's height. What does not fit ends in an ellipsis.
  void Text(css::awt::Rectangle area, std::u16string_view text, sal_Int32 color, Align align = Align::Left);
  /// The same on two lines where one is too narrow.
  void Caption(const css::awt::Rectangle& area, std::u16string_view text, sal_Int32 color);
  void SetBold(bool bold);
  int TextWidth(std::u16string_view text) const;

 private:
  const Theme& theme_;
  css::uno::Reference<css::awt::XDevice> device_;
  css::uno::Reference<css::awt::XGraphics> graphics_;
  css::uno::Reference<css::awt::XFont> font_;
};

}  // namespace qva::calc
