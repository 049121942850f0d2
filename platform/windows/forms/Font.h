// The user's font for messages, in which all of the library's windows are written.
#pragma once

#include <utility>

#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/UiScale.h"

namespace qva::windows {

/// Owns the font at one scale. A window that was given it must be gone, or have another one, before this
/// ends.
class MessageFont {
 public:
  /// No font at all: Windows' oldest one is used for it.
  MessageFont() = default;
  explicit MessageFont(UiScale scale);
  MessageFont(MessageFont&& other) noexcept : font_(std::exchange(other.font_, nullptr)) {}
  MessageFont& operator=(MessageFont&& other) noexcept {
    std::swap(font_, other.font_);
    return *this;
  }
  ~MessageFont() {
    if (font_) DeleteObject(font_);
  }

  /// Null when Windows has no font to give.
  HFONT get() const { return font_; }

 private:
  HFONT font_ = nullptr;
};

/// The height of a line of text in a font.
int TextHeight(HWND window, HFONT font);

/// Hands a window its font; it is drawn anew.
inline void SetFont(HWND window, HFONT font) {
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

}  // namespace qva::windows
