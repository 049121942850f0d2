#include "platform/calc/forms/Theme.h"

#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>

#include <algorithm>
#include <cmath>

namespace qva::calc {
namespace {

constexpr double kMetersPerInch = 0.0254;
constexpr double kPointsPerInch = 72;
constexpr double kFullScale = 96;  // dots per inch at 100 %

int Part(sal_Int32 color, int shift) {
  return (color >> shift) & 0xFF;
}

/// Whether a text of one colour can be told from a ground of the other: by a fifth of what black and white
/// differ by.
bool CanBeRead(sal_Int32 text, sal_Int32 ground) {
  const auto brightness = [](sal_Int32 color) {
    return 0.3 * Part(color, 16) + 0.59 * Part(color, 8) + 0.11 * Part(color, 0);
  };
  return std::abs(brightness(text) - brightness(ground)) > 255 / 5.0;
}

sal_Int32 Between(sal_Int32 one, sal_Int32 other) {
  sal_Int32 color = 0;
  for (const int shift : {16, 8, 0}) color |= (Part(one, shift) + Part(other, shift)) / 2 << shift;
  return color;
}

}  // namespace

Theme::Theme(const Window& window) {
  const double dots_per_inch = window.As<css::awt::XDevice>()->getInfo().PixelPerMeterX * kMetersPerInch;
  scale = std::max(dots_per_inch / kFullScale, 0.5);
  const auto settings = window.As<css::awt::XStyleSettingsSupplier>()->getStyleSettings();
  font = settings->getFieldFont();
  font.Height = static_cast<sal_Int16>(std::lround(font.Height * scale * kFullScale / kPointsPerInch));
  dialog = settings->getDialogColor();
  dialog_text = settings->getDialogTextColor();
  field = settings->getFieldColor();
  field_text = settings->getFieldTextColor();
  highlight = settings->getHighlightColor();
  highlight_text = settings->getHighlightTextColor();
  disabled_text = settings->getDisableColor();
  // LibreOffice 25.2 takes white for it from some themes of GTK whose fields are white.
  if (!CanBeRead(disabled_text, field)) disabled_text = Between(field_text, field);
  shadow = settings->getShadowColor();
  light = settings->getLightColor();
}

int Theme::Scaled(int length) const {
  return static_cast<int>(std::lround(length * scale));
}

int Theme::Unscaled(int pixels) const {
  return static_cast<int>(std::lround(pixels / scale));
}

int Theme::ScaledDown(int length) const {
  return static_cast<int>(std::lround(length * scale * stretch));
}

int Theme::UnscaledDown(int pixels) const {
  return static_cast<int>(std::lround(pixels / (scale * stretch)));
}

css::awt::Rectangle Theme::Scaled(const ui::Bounds& bounds) const {
  const int left = Scaled(bounds.left);
  const int top = ScaledDown(bounds.top);
  return {left, top, Scaled(bounds.left + bounds.width) - left, ScaledDown(bounds.top + bounds.height) - top};
}

}  // namespace qva::calc
