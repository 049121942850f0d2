#include "platform/filesystem/native_file.h"

#include <algorithm>

#include "platform/text.h"

namespace qva {
std::optional<std::string> ReadWholeFile(const NativePath& path) {
  const OwnedFile file = OpenFile(path, "rb");
  if (!file) return std::nullopt;
  std::string content;
  char buffer[4096];
  while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
    content.append(buffer, count);
  if (std::ferror(file.get())) return std::nullopt;  // a folder, for one
  return content;
}

std::optional<std::vector<std::u16string>> ReadLines(const NativePath& path) {
  const auto content = ReadWholeFile(path);
  if (!content) return std::nullopt;
  const std::u16string text = ReplaceAll(FromUtf8(*content), u"\r\n", u"\n");
  std::u16string_view rest = text;
  if (rest.starts_with(u'\uFEFF')) rest.remove_prefix(1);
  std::vector<std::u16string> lines;
  while (!rest.empty()) {
    const std::u16string_view line = rest.substr(0, rest.find(u'\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    lines.emplace_back(Trim(line));
  }
  return lines;
}

void AppendToLog(const NativePath& path, const std::string& text) {
  if (!path.empty() && AppendToFile(path, text)) return;
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

}  // namespace qva
