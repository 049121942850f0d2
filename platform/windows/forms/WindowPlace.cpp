#include "platform/windows/forms/WindowPlace.h"

#include <algorithm>

namespace qva::windows {
namespace {

void PlaceInTheMiddle(const RECT& middle, const RECT& work, HWND window, SIZE size) {
  const auto start = [](LONG from, LONG to, LONG length, LONG least, LONG most) {
    return std::max(least, std::min((from + to - length) / 2, most - length));
  };
  SetWindowPos(window, nullptr, start(middle.left, middle.right, size.cx, work.left, work.right),
               start(middle.top, middle.bottom, size.cy, work.top, work.bottom), size.cx, size.cy,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

RECT WorkArea(HWND window) {
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &screen);
  return screen.rcWork;
}

void PlaceAbove(HWND owner, HWND window, SIZE size) {
  const RECT work = WorkArea(owner);
  RECT middle = work;
  if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &middle);
  PlaceInTheMiddle(middle, work, window, size);
}

void PlaceOnDisplayOf(HWND owner, HWND window, SIZE size) {
  const RECT work = WorkArea(owner);
  PlaceInTheMiddle(work, work, window, size);
}

}  // namespace qva::windows
