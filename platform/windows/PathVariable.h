// Paths that environment variables hold.
#pragma once

#include <string>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// The path that an environment variable of this process holds; empty when there is none.
inline std::wstring PathVariable(const wchar_t* name) {
  std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  const auto length = GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
  value.resize(length < value.size() ? length : 0);
  return value;
}

}  // namespace qva::windows
