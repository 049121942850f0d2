// The keyboard as it was when the message that is being handled was sent, and its codes of keys.
#pragma once

#include <utility>

#include "platform/forms/grid_keys.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

inline bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

inline constexpr std::pair<WPARAM, GridKey> kGridKeys[] = {
    {VK_LEFT, GridKey::Left}, {VK_RIGHT, GridKey::Right},  {VK_UP, GridKey::Up},
    {VK_DOWN, GridKey::Down}, {VK_PRIOR, GridKey::PageUp}, {VK_NEXT, GridKey::PageDown},
    {VK_HOME, GridKey::Home}, {VK_END, GridKey::End},      {VK_TAB, GridKey::Tab}};

/// Nothing for any other key.
inline std::optional<GridKey> GridKeyOf(WPARAM key) {
  for (const auto& [known, grid_key] : kGridKeys) {
    if (known == key) return grid_key;
  }
  return std::nullopt;
}

}  // namespace qva::windows
