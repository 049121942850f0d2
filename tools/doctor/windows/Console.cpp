#include "tools/doctor/windows/Console.h"

#include <algorithm>
#include <iterator>

#include "platform/text.h"
#include "platform/windows/Error.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::doctor {

void Write(std::u16string_view text) {
  const std::u16string lines = ReplaceAll(text, u"\n", u"\r\n");
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  DWORD written = 0;
  if (GetConsoleMode(output, &mode)) {
    // Older consoles take no long texts at once.
    constexpr std::size_t kPiece = 4096;
    for (std::size_t at = 0; at < lines.size(); at += kPiece) {
      const auto length = static_cast<DWORD>(std::min(kPiece, lines.size() - at));
      WriteConsoleW(output, windows::Wide(lines.data() + at), length, &written, nullptr);
    }
  } else {
    const std::string bytes = ToUtf8(lines);
    WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  }
}

void WaitForReader(Language language) {
  DWORD processes[2];
  DWORD mode = 0;
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  const bool is_own = GetConsoleProcessList(processes, std::size(processes)) == 1;
  if (!is_own || !GetConsoleMode(input, &mode)) return;
  Write(language == Language::Lithuanian ? u"\nSpauskite „Enter“.\n" : u"\nPress Enter.\n");
  wchar_t key = 0;
  DWORD read = 0;
  ReadConsoleW(input, &key, 1, &read, nullptr);
}

Language UsersLanguage() {
  return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_LITHUANIAN ? Language::Lithuanian
                                                                      : Language::English;
}

std::u16string SystemWords(std::uint32_t code) {
  std::u16string words = windows::SystemWords(code);
  words.erase(words.find_last_not_of(u" .") + 1);
  return words.empty() ? u"?" : words;
}

}  // namespace qva::doctor
