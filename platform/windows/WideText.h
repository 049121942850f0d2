// Windows' wide characters and the seam's UTF-16, which are the same units under two type names.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace qva::windows {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows' wide characters are UTF-16");

/// The characters of a text as Windows takes them. Only for handing over; the library reads its own type.
inline const wchar_t* Wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}
inline wchar_t* Wide(char16_t* text) {
  return reinterpret_cast<wchar_t*>(text);
}
/// A terminated copy, for functions that take no length.
inline std::wstring WideText(std::u16string_view text) {
  return std::wstring(text.begin(), text.end());
}

/// A text that Windows gave. A null pointer is the empty text.
inline std::u16string TextOf(const wchar_t* text, std::size_t length) {
  std::u16string copy(text ? length : 0, u'\0');
  if (!copy.empty()) std::memcpy(copy.data(), text, copy.size() * sizeof(char16_t));
  return copy;
}
inline std::u16string TextOf(const wchar_t* terminated) {
  return TextOf(terminated, terminated ? std::wcslen(terminated) : 0);
}

}  // namespace qva::windows
