#include <windows.h>

#include <cstring>

#include "platform/filesystem/native_file.h"
#include "platform/text.h"

namespace qva {
namespace {

std::wstring Widened(const char* ascii) {
  return {ascii, ascii + std::strlen(ascii)};
}

}  // namespace

std::string PathText(const NativePath& path) {
  return ToUtf8(std::u16string(path.begin(), path.end()));
}

NativePath EnvironmentVariable(const char* name) {
  const std::wstring wide = Widened(name);
  std::wstring value(GetEnvironmentVariableW(wide.c_str(), nullptr, 0), L'\0');
  const auto length = GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size()));
  value.resize(length < value.size() ? length : 0);
  return value;
}

OwnedFile OpenFile(const NativePath& path, const char* mode) {
  return OwnedFile(_wfopen(path.c_str(), Widened(mode).c_str()));
}

// A user's files are the user's alone there.
bool AppendToFile(const NativePath& path, const std::string& text) {
  const OwnedFile file = OpenFile(path, "ab");
  if (!file) return false;
  std::setvbuf(file.get(), nullptr, _IOFBF, text.size() + 1);
  return std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() && std::fflush(file.get()) == 0;
}

}  // namespace qva
