// Where a window comes up.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// The part of a display that windows may cover: of the display that `window` stands on, of the first one for
/// null.
RECT WorkArea(HWND window);

/// Gives a window an outer size in the middle of the owner, where there is one to be seen, otherwise in the
/// middle of the owner's display. All of it is to be seen; what is larger than the display begins at its
/// upper left corner. The order of windows and the active one stay as they are.
void PlaceAbove(HWND owner, HWND window, SIZE size);

/// The same in the middle of the owner's display.
void PlaceOnDisplayOf(HWND owner, HWND window, SIZE size);

}  // namespace qva::windows
