// Owners of what Windows opens for us.
#pragma once

#include <memory>
#include <string>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Gives a thing back by a function of Windows'.
template <auto Function>
struct GivenBackBy {
  template <class Thing>
  void operator()(Thing* thing) const {
    Function(thing);
  }
};

/// Something that CloseHandle closes; null is none.
using Handle = std::unique_ptr<void, GivenBackBy<CloseHandle>>;
/// A search of FindFirstFile; null is none.
using SearchHandle = std::unique_ptr<void, GivenBackBy<FindClose>>;
using RegistryHandle = std::unique_ptr<HKEY__, GivenBackBy<RegCloseKey>>;
/// A loaded library.
using Module = std::unique_ptr<HINSTANCE__, GivenBackBy<FreeLibrary>>;
/// Memory that Windows allocated.
template <class Type>
using LocalMemory = std::unique_ptr<Type, GivenBackBy<LocalFree>>;

/// Owns the answer of a function for files, which has another word for none.
template <class Owner = Handle>
Owner OwnFileHandle(HANDLE answer) {
  return Owner(answer == INVALID_HANDLE_VALUE ? nullptr : answer);
}

/// Opens a key of the registry. Result: Windows' code; without success there is no key.
inline LSTATUS OpenKey(HKEY hive, const std::wstring& path, REGSAM rights, RegistryHandle& key) {
  HKEY opened = nullptr;
  const LSTATUS code = RegOpenKeyExW(hive, path.c_str(), 0, rights, &opened);
  key.reset(code == ERROR_SUCCESS ? opened : nullptr);
  return code;
}

}  // namespace qva::windows
