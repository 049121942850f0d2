// The row of tabs of a form's pages.
#pragma once

#include <vector>

#include "platform/calc/Uno.h"
#include "platform/calc/forms/FormControl.h"

namespace qva::calc {

/// Pages go by a click, by the arrow keys on the tabs, and from everywhere by Ctrl with Page Up, Page Down or
/// Tab.
class TabStrip : public FormControl, public ui::TabControl {
 public:
  TabStrip(FormWindow& form, const ui::ControlDescription& description);
  /// From now on Tab stops here. LibreOffice gives the focus to the first control that it stops at when a
  /// dialog opens, which is to be a field.
  void TakeTab() { window().SetProperty("Tabstop", Any(true)); }
  int Page() const override;
  void SetPage(int page) override;
  /// Shows which page is in front.
  void ShowPage();
  void Place(const css::awt::Rectangle& pixels) override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  void OnTabActivated() override;

  std::vector<sal_Int32> tabs_;  ///< by LibreOffice's numbers
};

}  // namespace qva::calc
