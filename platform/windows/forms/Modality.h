// What makes a window modal: whom it stands above, and what cannot be used meanwhile.
#pragma once

#include <vector>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Whether somebody can see the windows of this process.
bool HasVisibleDesktop();

/// The window that a new one stands above: the one that the user is working in, if it is one of this
/// thread's, otherwise the thread's active one or the first that can be used - Excel's. Null when there is
/// none.
HWND OwnerWindow();

/// While this lives, no other window of the thread takes the user's input: not the owner alone, since Excel
/// has a window for each workbook. Those that this has disabled are enabled again at its end; let it end
/// before the modal window goes, or Windows brings another program to the front.
class OthersDisabled {
 public:
  /// `modal` is the one window that is spared; null spares none.
  explicit OthersDisabled(HWND modal);
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;
  ~OthersDisabled();

 private:
  std::vector<HWND> disabled_;
};

}  // namespace qva::windows
