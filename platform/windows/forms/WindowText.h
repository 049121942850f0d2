// The texts of windows.
#pragma once

#include <string>
#include <string_view>

#include "platform/text.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

inline std::u16string TextOfWindow(HWND window) {
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, Wide(text.data()), static_cast<int>(text.size()))));
  return text;
}

/// A caption as it is to be read: an ampersand would otherwise mark the letter behind it.
inline std::wstring PlainCaption(std::u16string_view caption) {
  return WideText(ReplaceAll(std::u16string(caption), u"&", u"&&"));
}

}  // namespace qva::windows
