#include "platform/calc/forms/MessageWindow.h"

#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/awt/XFont.hpp>

#include <algorithm>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/Painter.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

// In pixels at 100 %.
constexpr int kMargin = 16;
constexpr int kTextWidth = 420;
constexpr int kIcon = 36;
constexpr int kButtonHeight = 28;
constexpr int kLeastButtonWidth = 88;
constexpr int kGap = 8;

/// How wide and high texts become, in pixels at 100 %.
class Measure {
 public:
  Measure() : probe_({}) {
    const auto device = probe_.window().As<css::awt::XDevice>();
    font_ = device->getFont(probe_.theme().font);
    const css::awt::SimpleFontMetric metric = font_->getFontMetric();
    line_ = probe_.theme().Unscaled(metric.Ascent + metric.Descent) + 1;
  }
  int Width(std::u16string_view text) const {
    return probe_.theme().Unscaled(font_->getStringWidth(ToUno(text))) + 1;
  }
  int line() const { return line_; }

 private:
  FormWindow probe_;
  Reference<css::awt::XFont> font_;
  int line_ = 0;
};

/// The text in lines that are not too wide; a word that is stands alone.
std::vector<std::u16string> Lines(const Measure& measure, std::u16string_view text) {
  std::vector<std::u16string> lines;
  const std::u16string whole = ReplaceAll(text, u"\r\n", u"\n");
  std::u16string_view rest = whole;
  for (bool more = true; more;) {
    const std::size_t end = rest.find(u'\n');
    std::u16string_view paragraph = rest.substr(0, end);
    more = end != rest.npos;
    if (more) rest.remove_prefix(end + 1);
    std::u16string line;
    while (!paragraph.empty()) {
      const std::size_t blank = paragraph.find(u' ');
      const std::u16string_view word = paragraph.substr(0, blank);
      const std::u16string longer = line.empty() ? std::u16string(word) : line + u" " + std::u16string(word);
      if (!line.empty() && measure.Width(longer) > kTextWidth) {
        lines.push_back(std::exchange(line, std::u16string(word)));
      } else {
        line = longer;
      }
      paragraph.remove_prefix(blank == paragraph.npos ? paragraph.size() : blank + 1);
    }
    lines.push_back(line);
  }
  return lines;
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
  ui::FormDescription form;
  form.name = u"MessageBox";
  form.caption = title;
  std::vector<int> widths;
  int text_width = 0;
  int text_height = 0;
  std::u16string shown;
  {
    const Measure measure;
    for (const std::u16string& line : Lines(measure, text)) {
      if (text_height > 0) shown += u'\n';
      shown += line;
      text_width = std::max(text_width, measure.Width(line) + 4);
      text_height += measure.line();
    }
    for (const std::u16string& caption : captions) {
      widths.push_back(std::max(kLeastButtonWidth, measure.Width(caption) + 32));
    }
  }
  const int text_left = kMargin + (is_stop ? kIcon + kMargin : 0);
  int buttons_width = -kGap;
  for (const int width : widths) buttons_width += width + kGap;
  const int inner_height = std::max(text_height, is_stop ? kIcon : 0);
  form.width = std::max({text_left + text_width + kMargin, buttons_width + 2 * kMargin, 240});
  form.height = inner_height + kButtonHeight + 3 * kMargin;
  form.controls.push_back({ui::ControlKind::Label,
                           u"Text",
                           shown,
                           {text_left, kMargin + (inner_height - text_height) / 2, text_width, text_height},
                           u"",
                           0});
  int left = (form.width - buttons_width) / 2;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    const std::u16string name = u"Button" + NumberText(static_cast<long long>(i) + 1);
    form.controls.push_back({ui::ControlKind::Button,
                             name,
                             captions[i],
                             {left, inner_height + 2 * kMargin, widths[i], kButtonHeight},
                             u"",
                             0});
    left += widths[i] + kGap;
    if (i == 0) form.default_button = name;
    form.cancel_button = name;
  }

  MessageForm window(form, is_stop);
  auto pressed = static_cast<std::int32_t>(captions.size());
  for (std::size_t i = 0; i < captions.size(); ++i) {
    auto& button = ui::Get<ui::Button>(window, u"Button" + NumberText(static_cast<long long>(i) + 1));
    button.on_click = [&window, &pressed, i] {
      pressed = static_cast<std::int32_t>(i) + 1;
      window.Hide();
    };
    if (i == 0) button.SetFocus();
  }
  window.ShowModal();
  return pressed;
}

}  // namespace qva::calc
