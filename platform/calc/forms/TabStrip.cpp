#include "platform/calc/forms/TabStrip.h"

#include <com/sun/star/awt/Key.hpp>

#include "platform/calc/forms/FormWindow.h"

namespace qva::calc {

using css::awt::Rectangle;

TabStrip::TabStrip(FormWindow& form, const ui::ControlDescription& description) : Canvas(form, description) {
  window().SetProperty("Tabstop", css::uno::Any(false));
}

int TabStrip::Page() const {
  return form().page();
}

void TabStrip::SetPage(int page) {
  form().SetPage(page);
}

void TabStrip::Place(const Rectangle& pixels) {
  Rectangle strip = pixels;
  strip.Height = Scaled(kTabStripHeight);
  Canvas::Place(strip);
}

bool TabStrip::OnKey(const css::awt::KeyEvent& event) {
  if (event.KeyCode == css::awt::Key::LEFT) {
    SetPage(Page() - 1);
  } else if (event.KeyCode == css::awt::Key::RIGHT) {
    SetPage(Page() + 1);
  } else {
    return false;
  }
  return true;
}

void TabStrip::Pressed(const MousePress& press) {
  for (std::size_t i = 0; i < tabs_.size(); ++i) {
    if (Contains(tabs_[i], press.x, press.y)) SetPage(static_cast<int>(i));
  }
}

void TabStrip::Draw(Painter& painter) {
  const Theme& theme = painter.theme();
  const Rectangle area = Area();
  const int bottom = area.Height - 1;
  painter.Fill(area, theme.dialog);
  painter.Line(0, bottom, area.Width - 1, bottom, theme.shadow);
  tabs_.clear();
  int left = 0;
  const std::vector<std::u16string>& captions = form().description().pages;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    const bool front = static_cast<int>(i) == Page();
    const int top = front ? 0 : Scaled(2);
    const Rectangle tab(left, top, painter.TextWidth(captions[i]) + Scaled(20), area.Height - top);
    painter.Fill(tab, front ? theme.light : theme.dialog);
    painter.Frame(tab, theme.shadow);
    if (front) {
      // Open towards its page.
      painter.Line(left + 1, bottom, left + tab.Width - 2, bottom, theme.dialog);
      painter.Fill({left + 1, 1, tab.Width - 2, Scaled(2)}, theme.highlight);
    }
    const Rectangle text(left + Scaled(10), top, tab.Width - Scaled(20), tab.Height);
    painter.Text(text, captions[i], theme.dialog_text);
    if (front && focused()) {
      painter.Frame({left + Scaled(5), Scaled(5), tab.Width - Scaled(10), tab.Height - Scaled(9)},
                    theme.shadow);
    }
    tabs_.push_back(tab);
    left += tab.Width - 1;
  }
}

}  // namespace qva::calc
