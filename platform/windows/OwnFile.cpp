#include "platform/windows/OwnFile.h"

#include "platform/windows/WideText.h"

namespace qva::windows {

HINSTANCE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&OwnModule), &module);
  return module;
}

std::u16string OwnFile() {
  const HINSTANCE module = OwnModule();
  if (!module) return {};
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
