#include "platform/windows/forms/Modality.h"

namespace qva::windows {
namespace {

bool CanBeUsed(HWND window) {
  return IsWindowVisible(window) && IsWindowEnabled(window);
}

BOOL CALLBACK FindFirst(HWND window, LPARAM result) {
  const bool found = CanBeUsed(window) && !GetWindow(window, GW_OWNER) &&
                     (GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
  if (found) *reinterpret_cast<HWND*>(result) = window;
  return !found;
}

struct Others {
  HWND modal;
  std::vector<HWND>& windows;
};

BOOL CALLBACK FindOthers(HWND window, LPARAM parameter) {
  auto& others = *reinterpret_cast<Others*>(parameter);
  if (window != others.modal && CanBeUsed(window)) others.windows.push_back(window);
  return others.windows.size() < others.windows.capacity();
}

}  // namespace

bool HasVisibleDesktop() {
  USEROBJECTFLAGS flags{};
  return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) &&
         (flags.dwFlags & WSF_VISIBLE);
}

HWND OwnerWindow() {
  HWND foreground = GetForegroundWindow();
  if (foreground && GetWindowThreadProcessId(foreground, nullptr) == GetCurrentThreadId()) return foreground;
  if (HWND active = GetActiveWindow()) return active;
  HWND first = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), &FindFirst, reinterpret_cast<LPARAM>(&first));
  return first;
}

OthersDisabled::OthersDisabled(HWND modal) {
  disabled_.reserve(64);  // ample, and nothing can be raised through Windows' own function
  Others others{modal, disabled_};
  EnumThreadWindows(GetCurrentThreadId(), &FindOthers, reinterpret_cast<LPARAM>(&others));
  for (HWND window : disabled_) EnableWindow(window, FALSE);
}

OthersDisabled::~OthersDisabled() {
  for (HWND window : disabled_) EnableWindow(window, TRUE);
}

}  // namespace qva::windows
