#include "platform/filesystem/native_file.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#ifndef _WIN32
#include <filesystem>
#endif

#include "platform/text.h"

namespace qva {
namespace {

// The C library's files: streams would double the size of the Windows DLL.
struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File Open(const NativePath& path, const char* mode) {
#ifdef _WIN32
  const std::wstring wide_mode(mode, mode + std::strlen(mode));
  return File(_wfopen(path.c_str(), wide_mode.c_str()));
#else
  return File(std::fopen(path.c_str(), mode));
#endif
}

}  // namespace

std::string PathText(const NativePath& path) {
#ifdef _WIN32
  return ToUtf8(std::u16string(path.begin(), path.end()));
#else
  return path;
#endif
}

std::optional<std::string> ReadWholeFile(const NativePath& path) {
  const File file = Open(path, "rb");
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

bool AppendToFile(const NativePath& path, const std::string& text) {
  const bool is_new = !Open(path, "rb");
  const File file = Open(path, "ab");
  if (!file) return false;
#ifndef _WIN32
  if (is_new) {
    using enum std::filesystem::perms;
    std::error_code ignored;
    std::filesystem::permissions(path, owner_read | owner_write, ignored);
  }
#else
  (void)is_new;  // a user's files are the user's there
#endif
  std::setvbuf(file.get(), nullptr, _IOFBF, text.size() + 1);
  return std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() && std::fflush(file.get()) == 0;
}

void AppendToLog(const NativePath& path, const std::string& text) {
  if (!path.empty() && AppendToFile(path, text)) return;
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

}  // namespace qva
