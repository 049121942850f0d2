#include "platform/calc/forms/MessageWindow.h"

#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/awt/XFont.hpp>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/Painter.h"
#include "platform/forms/button_form.h"

namespace qva::calc {
namespace {

// In pixels at 100 %.
constexpr int kMargin = 16;
constexpr int kIcon = 36;

ui::FormDescription Describe(std::u16string_view text, std::u16string_view title,
                             std::span<const std::u16string> captions, bool is_stop) {
  const FormWindow probe({});
  const Theme& theme = probe.theme();
  const auto font = probe.window().As<css::awt::XDevice>()->getFont(theme.font);
  const css::awt::SimpleFontMetric metric = font->getFontMetric();
  ButtonFormLook look;
  // What LibreOffice draws is a little wider than it says.
  look.width_of = [&](std::u16string_view line) {
    return theme.Unscaled(font->getStringWidth(ToUno(line))) + 5;
  };
  look.line_height = theme.Unscaled(metric.Ascent + metric.Descent) + 1;
  look.margin = kMargin;
  look.greatest_text = 424;
  look.least_width = 240;
  look.least_button = 88;
  look.button_padding = 14;
  look.button_height = 28;
  look.sign = is_stop ? kIcon : 0;
  return ButtonForm(text, title, captions, look);
}

class MessageForm : public FormWindow {
 public:
  MessageForm(const ui::FormDescription& description, bool is_stop)
      : FormWindow(description), is_stop_(is_stop) {}

 private:
  void OnPaint() override {
    if (!is_stop_) return;
    constexpr sal_Int32 kRed = 0xC0202B;
    constexpr sal_Int32 kWhite = 0xFFFFFF;
    Painter painter(window(), theme());
    const int left = Scaled(kMargin);
    const int size = Scaled(kIcon);
    painter.Ellipse({left, left, size, size}, kRed);
    const int from = left + size * 3 / 10;
    const int to = left + size * 7 / 10;
    const int thick = Scaled(2);
    painter.Polygon({{from - thick, from}, {from, from - thick}, {to + thick, to}, {to, to + thick}}, kWhite);
    painter.Polygon({{to, from - thick}, {to + thick, from}, {from, to + thick}, {from - thick, to}}, kWhite);
  }

  bool is_stop_;
};

}  // namespace

std::int32_t ShowMessage(std::u16string_view text, std::u16string_view title,
                         std::span<const std::u16string> captions, bool is_stop) {
  MessageForm form(Describe(text, title, captions, is_stop), is_stop);
  return PressedButton(form);
}

}  // namespace qva::calc
