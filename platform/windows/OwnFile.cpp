#include "platform/windows/OwnFile.h"

#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

std::u16string OwnFile() {
  HMODULE module = nullptr;
  constexpr DWORD kByAddress =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!GetModuleHandleExW(kByAddress, reinterpret_cast<LPCWSTR>(&OwnFile), &module)) return {};
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return TextOf(path.data(), length);
    path.resize(path.size() * 2);
  }
}

std::u16string OwnFolder() {
  const std::u16string file = OwnFile();
  const std::size_t end = file.rfind(u'\\');
  return end == file.npos ? std::u16string() : file.substr(0, end);
}

}  // namespace qva::windows
