// The window of the date picker.
#pragma once

#include <memory>

#include "platform/controls.h"

namespace qva {

/// A month of days. One window serves the whole library; it is there from the moment that it is asked for
/// until it is unloaded.
class frmDatePic {
 public:
  /// The window, hidden. Raises 400 (Form already displayed) while it is shown already, and what the platform
  /// raises when it has no windows to give.
  static frmDatePic& Load();
  static void Unload();

  /// Raises when the window cannot be shown.
  void ShowModal() { form_->ShowModal(); }
  void Hide() { form_->Hide(); }
  ui::MonthView& MonthView1() const { return ui::Get<ui::MonthView>(*form_, u"MonthView1"); }

 private:
  frmDatePic();

  std::unique_ptr<ui::Form> form_;
};

}  // namespace qva
