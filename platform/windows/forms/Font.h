// The user's font for messages, in which all of the library's windows are written.
#pragma once

#include <memory>

#include "platform/windows/Handle.h"
#include "platform/windows/forms/UiScale.h"

namespace qva::windows {

/// Owns the font at one scale. A window that was given it must be gone, or have another one, before this
/// ends.
class MessageFont {
 public:
  /// No font at all: Windows' oldest one is used for it.
  MessageFont() = default;
  explicit MessageFont(UiScale scale);

  /// Null when Windows has no font to give.
  HFONT get() const { return font_.get(); }

 private:
  std::unique_ptr<HFONT__, GivenBackBy<DeleteObject>> font_;
};

/// The height of a line of text in a font.
int TextHeight(HWND window, HFONT font);

/// Hands a window its font; it is drawn anew.
inline void SetFont(HWND window, HFONT font) {
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

}  // namespace qva::windows
