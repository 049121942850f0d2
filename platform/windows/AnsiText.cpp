#include "platform/windows/AnsiText.h"

#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

std::string ToAnsi(std::u16string_view text) {
  if (text.empty()) return {};
  // Where the code page is UTF-8 nothing is lacking, and Windows refuses both of these.
  const bool is_utf8 = GetACP() == CP_UTF8;
  const DWORD flags = is_utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const char* replacement = is_utf8 ? nullptr : "?";
  const auto convert = [&](std::string& bytes) {
    return WideCharToMultiByte(CP_ACP, flags, Wide(text.data()), static_cast<int>(text.size()), bytes.data(),
                               static_cast<int>(bytes.size()), replacement, nullptr);
  };
  std::string bytes;
  bytes.resize(static_cast<std::size_t>(convert(bytes)));
  convert(bytes);
  return bytes;
}

std::u16string FromAnsi(std::string_view bytes) {
  if (bytes.empty()) return {};
  const auto convert = [&](std::u16string& text) {
    return MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), Wide(text.data()),
                               static_cast<int>(text.size()));
  };
  std::u16string text;
  text.resize(static_cast<std::size_t>(convert(text)));
  convert(text);
  return text;
}

}  // namespace qva::windows
