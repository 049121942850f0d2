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
