#include "platform/calc/forms/TabStrip.h"

#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XSimpleTabController.hpp>

#include <algorithm>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/text.h"

namespace qva::calc {

using css::accessibility::XAccessible;
using css::accessibility::XAccessibleComponent;
using css::awt::Rectangle;
using css::awt::XSimpleTabController;

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
  FormControl::Place(pixels);
  if (tabs_.empty()) return;
  // Desktops have tabs of many heights, and fill what is left below them with an edge of their own.
  constexpr int kEdge = 4;
  const Reference<XAccessible> all(window().peer(), UNO_QUERY_THROW);
  const Reference<XAccessibleComponent> tab(
      all->getAccessibleContext()->getAccessibleChild(0)->getAccessibleContext(), UNO_QUERY_THROW);
  const Rectangle place = tab->getBounds();
  const int height = place.Y + place.Height + kEdge;
  const int bottom = pixels.Y + form().theme().ScaledDown(kTabStripHeight) - 1;
  FormControl::Place({pixels.X, bottom - height, pixels.Width, height});
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
