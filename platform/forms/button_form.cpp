#include "platform/forms/button_form.h"

#include <algorithm>

#include "platform/text.h"

namespace qva {
namespace {

constexpr int kGap = 8;  // between buttons

std::u16string NameOfButton(std::int32_t number) {
  return u"Button" + NumberText(number);
}

std::u16string InLines(std::u16string_view text, const ButtonFormLook& look) {
  std::u16string lines = ReplaceAll(ReplaceAll(std::u16string(text), u"\r\n", u"\n"), u"\r", u"\n");
  std::size_t start = 0;  // of the line
  std::size_t blank = 0;  // the last one in it
  for (std::size_t i = 0; i <= lines.size(); ++i) {
    const bool is_end = i == lines.size() || lines[i] == u'\n';
    if (!is_end && lines[i] != u' ') continue;
    const std::u16string_view line = std::u16string_view(lines).substr(start, i - start);
    if (blank > start && look.width_of(line) > look.greatest_text) {
      lines[blank] = u'\n';
      start = blank + 1;
    }
    blank = i;
    if (is_end) start = i + 1;
  }
  return lines;
}

}  // namespace

ui::FormDescription ButtonForm(std::u16string_view text, std::u16string_view title,
                               std::span<const std::u16string> captions, const ButtonFormLook& look) {
  const std::u16string lines = InLines(text, look);
  ui::Bounds place{look.margin + (look.sign > 0 ? look.sign + look.margin : 0), look.margin, 0, 0};
  for (std::size_t start = 0, end = 0; end != lines.npos; start = end + 1) {
    end = lines.find(u'\n', start);
    place.width = std::max(place.width, look.width_of(std::u16string_view(lines).substr(start, end - start)));
    place.height += look.line_height;
  }
  const int inner_height = std::max(place.height, look.sign);
  place.top += (inner_height - place.height) / 2;

  ui::FormDescription form;
  form.name = u"MessageBox";
  form.caption = title;
  form.controls.push_back({ui::ControlKind::Label, u"Text", lines, place, u"", 0});
  ui::Bounds button{0, inner_height + 2 * look.margin, 0, look.button_height};
  for (const std::u16string& caption : captions) {
    button.width = std::max(look.least_button, look.width_of(caption) + 2 * look.button_padding);
    const std::u16string name = NameOfButton(static_cast<std::int32_t>(form.controls.size()));
    form.controls.push_back({ui::ControlKind::Button, name, caption, button, u"", 0});
    button.left += button.width + kGap;
  }
  form.default_button = form.controls[1].name;
  form.cancel_button = form.controls.back().name;
  const int row = button.left - kGap;
  form.width = std::max({place.left + place.width + look.margin, row + 2 * look.margin, look.least_width});
  form.height = button.top + look.button_height + look.margin;
  for (std::size_t i = 1; i < form.controls.size(); ++i)
    form.controls[i].bounds.left += (form.width - row) / 2;
  return form;
}

std::int32_t PressedButton(ui::Form& form) {
  std::int32_t pressed = 0;
  std::int32_t number = 0;
  while (auto* button = dynamic_cast<ui::Button*>(form.Find(NameOfButton(++number)))) {
    if (number == 1) button->SetFocus();
    button->on_click = [&form, &pressed, number] {
      pressed = number;
      form.Hide();
    };
  }
  form.ShowModal();
  return pressed;
}

}  // namespace qva
