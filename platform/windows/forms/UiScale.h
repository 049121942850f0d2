// The scale of a display: measures are stated in pixels at 100 % and turned into the display's own.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Dots per inch, of which 96 are 100 %.
struct UiScale {
  int dpi = USER_DEFAULT_SCREEN_DPI;

  int operator()(int at_100_percent) const { return MulDiv(at_100_percent, dpi, USER_DEFAULT_SCREEN_DPI); }
  /// The way back: pixels of the display as pixels at 100 %.
  int At100Percent(int pixels) const { return MulDiv(pixels, USER_DEFAULT_SCREEN_DPI, dpi); }
};

/// The scale of the display that a window stands on; where Windows does not tell displays apart, of them all.
UiScale ScaleOf(HWND window);

/// The outer size of a window of this style at this scale whose inside has the size `inner`.
SIZE WithFrame(SIZE inner, DWORD style, DWORD extended_style, UiScale scale);

/// While this lives, windows that the thread creates tell displays apart, and their places are real pixels,
/// whatever the process says of itself; it stays as it is. Put one around all that creates, places or
/// measures a window. A window's own procedure is called so already. Does nothing where Windows knows no such
/// thing.
class PerDisplayPixels {
 public:
  PerDisplayPixels();
  PerDisplayPixels(const PerDisplayPixels&) = delete;
  PerDisplayPixels& operator=(const PerDisplayPixels&) = delete;
  ~PerDisplayPixels();

 private:
  HANDLE before_ = nullptr;
};

}  // namespace qva::windows
