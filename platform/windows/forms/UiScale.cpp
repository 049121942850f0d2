#include "platform/windows/forms/UiScale.h"

#include "platform/windows/DeviceContext.h"

namespace qva::windows {
namespace {

// The numbers of DPI_AWARENESS_CONTEXT, newest first: the first one that this Windows knows is used.
constexpr INT_PTR kPerMonitorAwareV2 = -4;
constexpr INT_PTR kPerMonitorAware = -3;

/// A function of user32 that older releases of Windows do not have; null there.
template <class Function>
Function* UserFunction(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

HANDLE SetThreadContext(HANDLE context) {
  auto* set = UserFunction<HANDLE WINAPI(HANDLE)>("SetThreadDpiAwarenessContext");
  return set ? set(context) : nullptr;
}

}  // namespace

UiScale ScaleOf(HWND window) {
  if (auto* dpi_of = UserFunction<UINT WINAPI(HWND)>("GetDpiForWindow")) {
    if (const UINT dpi = dpi_of(window)) return {static_cast<int>(dpi)};
  }
  const int dpi = GetDeviceCaps(WindowContext(nullptr).get(), LOGPIXELSY);
  return {dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI};
}

SIZE WithFrame(SIZE inner, DWORD style, DWORD extended_style, UiScale scale) {
  RECT area{0, 0, inner.cx, inner.cy};
  auto* adjust = UserFunction<BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
  if (!adjust || !adjust(&area, style, FALSE, extended_style, static_cast<UINT>(scale.dpi))) {
    AdjustWindowRectEx(&area, style, FALSE, extended_style);
  }
  return {area.right - area.left, area.bottom - area.top};
}

PerDisplayPixels::PerDisplayPixels()
    : before_(SetThreadContext(reinterpret_cast<HANDLE>(kPerMonitorAwareV2))) {
  if (!before_) before_ = SetThreadContext(reinterpret_cast<HANDLE>(kPerMonitorAware));
}

PerDisplayPixels::~PerDisplayPixels() {
  if (before_) SetThreadContext(before_);
}

}  // namespace qva::windows
