// The screen lock: freezes the screen for as long as an instance lives.
#pragma once

#include "platform/member_table.h"

namespace qva {

/// Has no members; a macro holds an instance and lets it go, also when it leaves through an error. Works on
/// the library's application (Globals::application), on purpose the one of the moment: what was connected
/// when the screen froze is not remembered.
class CLockScreen : public Described<CLockScreen> {
 public:
  static ClassBuilder Describe();

  /// Freezes the screen and shows the wait cursor. Raises 91 without an application, and Excel's errors; the
  /// screen is live then.
  CLockScreen();
  /// Thaws the screen, and gives the cursor and the status bar back to Excel. Each step is tried, whatever
  /// fails, also for want of memory.
  ~CLockScreen() override;
};

}  // namespace qva
