// What dialogs share that make their controls when they know their font and scale.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// A dialog template without controls.
struct EmptyDialog {
  DLGTEMPLATE dialog;
  WORD menu = 0;
  WORD window_class = 0;
  WORD title = 0;
};

// In pixels at 100 %, as Windows' own message boxes have them.
constexpr int kDialogMargin = 12;
constexpr int kDialogGap = 8;

}  // namespace qva::windows
