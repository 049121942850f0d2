// The captions above a grid's columns.
#pragma once

#include "platform/windows/WindowsApi.h"

#include <commctrl.h>

namespace qva::windows {

/// The height of a header control whose captions go on in another line where their columns are too narrow.
/// `one_line` is the height that the control asks for itself.
int HeaderHeight(HWND header, int one_line);

/// The answer to a header's NM_CUSTOMDRAW that writes its captions so.
LRESULT DrawHeader(const NMCUSTOMDRAW& draw);

}  // namespace qva::windows
