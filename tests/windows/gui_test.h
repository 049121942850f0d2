// What tests of windows share: whether there is a display, a user at the keyboard, and what is left behind.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/WindowPlace.h"
#include "tests/windows/handle_counts.h"

namespace qva::windows {

/// Whether windows can be opened here at all; a run without a display proves nothing about them.
inline bool HasDisplay() {
  HWND window =
      CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
  if (window) DestroyWindow(window);
  return window != nullptr;
}

/// A window stands in the middle of an area, but for half a pixel, or as near to it as the display lets it.
/// To be called where PerDisplayPixels lives, as it does while a window is shown.
inline void ExpectInTheMiddle(HWND window, const RECT& area) {
  RECT place;
  GetWindowRect(window, &place);
  const RECT work = WorkArea(window);
  const auto nearest = [](LONG middle_twice, LONG length, LONG first, LONG last) {
    return std::max(first, std::min((middle_twice - length) / 2, last - length));
  };
  EXPECT_NEAR(place.left, nearest(area.left + area.right, place.right - place.left, work.left, work.right),
              1);
  EXPECT_NEAR(place.top, nearest(area.top + area.bottom, place.bottom - place.top, work.top, work.bottom), 1);
}

/// Waits, with a bound for slow machines, until something has become so.
inline bool Becomes(const std::function<bool()>& condition) {
  for (int i = 0; i < 1000; ++i) {
    if (condition()) return true;
    Sleep(10);
  }
  return false;
}

/// Presses a key on the keyboard, together with those that are held meanwhile.
inline void StrikeKey(WORD key, const std::vector<WORD>& held = {}) {
  std::vector<WORD> keys = held;
  keys.push_back(key);
  std::vector<INPUT> inputs;
  const auto add = [&](WORD code, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    const bool is_extended = (code >= VK_PRIOR && code <= VK_DOWN) || code == VK_DELETE;
    input.ki.dwFlags = (up ? KEYEVENTF_KEYUP : 0) | (is_extended ? KEYEVENTF_EXTENDEDKEY : 0);
    inputs.push_back(input);
  };
  for (auto code = keys.begin(); code != keys.end(); ++code) add(*code, false);
  for (auto code = keys.rbegin(); code != keys.rend(); ++code) add(*code, true);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

/// Types a text on the keyboard.
inline void StrikeText(std::u16string_view text) {
  for (const char16_t character : text) {
    for (const DWORD up : {0, KEYEVENTF_KEYUP}) {
      INPUT input{};
      input.type = INPUT_KEYBOARD;
      input.ki.wScan = character;
      input.ki.dwFlags = KEYEVENTF_UNICODE | up;
      SendInput(1, &input, sizeof input);
    }
  }
}

/// Nothing was kept of something that was done 200 times. The system itself keeps a few objects.
inline void ExpectNothingKept(const HandleCounts& before, const HandleCounts& after) {
  EXPECT_LE(after.graphics, before.graphics + 50);
  EXPECT_LE(after.windows, before.windows + 50);
  EXPECT_LE(after.graphics_handles, before.graphics_handles + 50);
  EXPECT_LE(after.window_handles, before.window_handles + 50);
}

}  // namespace qva::windows
