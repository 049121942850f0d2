// What windows alone need of Windows - common controls, themes, accessibility - and what costs ten times more
// to load than the library itself: each of its libraries is loaded by the first call of one of these
// functions.
#pragma once

#include <atomic>

#include "platform/error.h"
#include "platform/windows/WindowsApi.h"

#include <commctrl.h>
#include <oleacc.h>
#include <uxtheme.h>

namespace qva::windows::late {

/// A function of a library that is loaded by the first call and stays. The linker's own delayed imports are
/// no help: newer ones put their table where it cannot be written.
template <class Function>
class LateFunction {
 public:
  constexpr LateFunction(const wchar_t* library, const char* name) : library_(library), name_(name) {}
  LateFunction(const LateFunction&) = delete;
  LateFunction& operator=(const LateFunction&) = delete;

  /// Raises 7 (Out of memory) when the library cannot be loaded.
  template <class... Arguments>
  auto operator()(Arguments... arguments) {
    Function* function = function_;
    if (!function) function_ = function = Load();
    return function(arguments...);
  }

 private:
  Function* Load() const {
    const HMODULE library = LoadLibraryW(library_);
    const FARPROC address = library ? GetProcAddress(library, name_) : nullptr;
    if (!address) throw AutomationError(kOutOfMemory);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
  }

  const wchar_t* library_;
  const char* name_;
  std::atomic<Function*> function_ = nullptr;
};

// The first call of one of comctl32 must come where VisualStyles chooses the look: there are two of that
// library.
inline constinit LateFunction<decltype(::InitCommonControlsEx)> InitCommonControlsEx(L"comctl32.dll",
                                                                                     "InitCommonControlsEx");
inline constinit LateFunction<decltype(::SetWindowSubclass)> SetWindowSubclass(L"comctl32.dll",
                                                                               "SetWindowSubclass");
inline constinit LateFunction<decltype(::RemoveWindowSubclass)> RemoveWindowSubclass(L"comctl32.dll",
                                                                                     "RemoveWindowSubclass");
inline constinit LateFunction<decltype(::DefSubclassProc)> DefSubclassProc(L"comctl32.dll",
                                                                           "DefSubclassProc");

inline constinit LateFunction<decltype(::OpenThemeData)> OpenThemeData(L"uxtheme.dll", "OpenThemeData");
inline constinit LateFunction<decltype(::CloseThemeData)> CloseThemeData(L"uxtheme.dll", "CloseThemeData");
inline constinit LateFunction<decltype(::DrawThemeBackground)> DrawThemeBackground(L"uxtheme.dll",
                                                                                   "DrawThemeBackground");

inline constinit LateFunction<decltype(::LresultFromObject)> LresultFromObject(L"oleacc.dll",
                                                                               "LresultFromObject");
inline constinit LateFunction<decltype(::AccessibleObjectFromWindow)> AccessibleObjectFromWindow(
    L"oleacc.dll", "AccessibleObjectFromWindow");

}  // namespace qva::windows::late
