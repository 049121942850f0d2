// The colours, fonts and scale of LibreOffice's windows on this screen.
#pragma once

#include <com/sun/star/awt/FontDescriptor.hpp>

#include "platform/calc/forms/Window.h"
#include "platform/controls.h"

namespace qva::calc {

/// The height of the row of tabs, in pixels at 100 % scale.
constexpr int kTabStripHeight = 26;

struct Theme {
  /// Those of a window of the form.
  explicit Theme(const Window& window);

  int Scaled(int length) const;
  int Unscaled(int pixels) const;
  /// The same along the height of a form.
  int ScaledDown(int length) const;
  int UnscaledDown(int pixels) const;
  /// Edges are scaled, not sizes, so that what touches at 100 % touches at any scale.
  css::awt::Rectangle Scaled(const ui::Bounds& bounds) const;

  double scale = 1;               ///< 1 at 96 dots per inch
  double stretch = 1;             ///< of heights besides, where the desktop's fields are higher than ours
  css::awt::FontDescriptor font;  ///< of fields, its height in the screen's pixels
  sal_Int32 dialog = 0;
  sal_Int32 dialog_text = 0;
  sal_Int32 field = 0;
  sal_Int32 field_text = 0;
  sal_Int32 highlight = 0;
  sal_Int32 highlight_text = 0;
  sal_Int32 disabled_text = 0;
  sal_Int32 shadow = 0;
  sal_Int32 light = 0;
};

}  // namespace qva::calc
