// What the host's form framework does for a dialog: OK and Cancel, and what happens around them.
#pragma once

#include <functional>
#include <string>

#include "platform/controls.h"

namespace qva {

/// Runs a form modally, once. Borrows everything; the form must outlive it.
class HostForm {
 public:
  /// Takes over the clicks of the two buttons. Messages appear under `title`.
  HostForm(ui::Form& form, ui::Button& ok, ui::Button& cancel, std::u16string title);

  std::function<void()> before_show;
  /// Asked before OK closes the form: a verdict (true unless the handler changes it) and the message that
  /// tells why not. With a false verdict the message is shown, unless it is empty, and the form stays open.
  std::function<void(bool& verdict, std::u16string& message)> ok_click;

  /// Shows the form until it is confirmed (true) or left (false). Raises what the form raises.
  bool ShowModal();

 private:
  void Confirm();

  ui::Form& form_;
  std::u16string title_;
  bool confirmed_ = false;
};

}  // namespace qva
