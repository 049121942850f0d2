#include "platform/calc/forms/TabStrip.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XSimpleTabController.hpp>

#include <algorithm>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/text.h"

namespace qva::calc {

using css::awt::XSimpleTabController;
using css::uno::Any;

TabStrip::TabStrip(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "tabcontrol", 0) {
  window().SetProperty("Tabstop", Any(false));
  const auto tabs = window().As<XSimpleTabController>();
  for (const std::u16string& caption : form.description().pages) {
    tabs_.push_back(tabs->insertTab());
    const css::beans::NamedValue title("Title", Any(ToUno(ReplaceAll(caption, u"~", u"~~"))));
    tabs->setTabProps(tabs_.back(), {&title, 1});
  }
}

int TabStrip::Page() const {
  return form().page();
}

void TabStrip::SetPage(int page) {
  form().SetPage(page);
}

void TabStrip::ShowPage() {
  if (!tabs_.empty())
    window().As<XSimpleTabController>()->activateTab(tabs_.at(static_cast<std::size_t>(Page())));
}

void TabStrip::OnTabActivated() {
  const auto tab = std::ranges::find(tabs_, window().As<XSimpleTabController>()->getActiveTabID());
  const auto page = static_cast<int>(tab - tabs_.begin());
  if (tab == tabs_.end() || page == Page()) return;
  SetPage(page);
  TakeFocus();
}

void TabStrip::Place(const css::awt::Rectangle& pixels) {
  // Above the edge of its pages. A desktop with high fields has high tabs, too.
  const Theme& theme = form().theme();
  const int top = theme.stretch > 1 ? theme.Scaled(2) : pixels.Y;
  FormControl::Place({pixels.X, top, pixels.Width, pixels.Y + theme.ScaledDown(kTabStripHeight) - 1 - top});
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

}  // namespace qva::calc
