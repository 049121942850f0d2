// The owner of a window that an object stands behind.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Owns a window whose procedure finds the object behind it in GWLP_USERDATA. Make it the object's last
/// member, since all others must outlive the window: what Windows tells while it goes does not reach the
/// object.
struct OwnedWindow {
  HWND handle = nullptr;

  OwnedWindow() = default;
  OwnedWindow(const OwnedWindow&) = delete;
  OwnedWindow& operator=(const OwnedWindow&) = delete;
  ~OwnedWindow() {
    if (!handle) return;
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
    DestroyWindow(handle);
  }
};

}  // namespace qva::windows
