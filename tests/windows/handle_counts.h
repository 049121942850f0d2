// How many of the system's objects this process uses, by which tests tell whether windows leave any behind.
#pragma once

#include <algorithm>
#include <vector>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// How many handles of a kind are in use, but for a constant: more than can be free are made, so that the
/// last ones lie behind all that are in use.
template <class Handle>
int HandlesInUse(Handle (*make)(), BOOL (*destroy)(Handle)) {
  std::vector<Handle> made(5000);
  int last = 0;
  for (Handle& handle : made) {
    handle = make();
    last = std::max<int>(last, LOWORD(reinterpret_cast<ULONG_PTR>(handle)));
  }
  for (Handle handle : made) destroy(handle);
  return last;
}

/// What the system counts of this process, and, since not every one does, what its handles tell.
struct HandleCounts {
  HandleCounts() {
    graphics = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    windows = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    graphics_handles = HandlesInUse<HPEN>([] { return CreatePen(PS_SOLID, 1, RGB(1, 2, 3)); },
                                          [](HPEN pen) { return DeleteObject(pen); });
    window_handles =
        HandlesInUse<HMENU>([] { return CreateMenu(); }, [](HMENU menu) { return DestroyMenu(menu); });
  }
  DWORD graphics;
  DWORD windows;
  int graphics_handles;
  int window_handles;
};

}  // namespace qva::windows
