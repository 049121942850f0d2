// The toolkit's codes of the keys that lead from cell to cell.
#pragma once

#include <com/sun/star/awt/Key.hpp>

#include <utility>

#include "platform/calc/Uno.h"
#include "platform/forms/grid_keys.h"

namespace qva::calc {

inline constexpr std::pair<sal_Int16, GridKey> kGridKeys[] = {
    {css::awt::Key::LEFT, GridKey::Left},     {css::awt::Key::RIGHT, GridKey::Right},
    {css::awt::Key::UP, GridKey::Up},         {css::awt::Key::DOWN, GridKey::Down},
    {css::awt::Key::PAGEUP, GridKey::PageUp}, {css::awt::Key::PAGEDOWN, GridKey::PageDown},
    {css::awt::Key::HOME, GridKey::Home},     {css::awt::Key::END, GridKey::End},
    {css::awt::Key::TAB, GridKey::Tab}};

/// Nothing for any other key.
inline std::optional<GridKey> GridKeyOf(sal_Int16 code) {
  for (const auto& [known, grid_key] : kGridKeys) {
    if (known == code) return grid_key;
  }
  return std::nullopt;
}

}  // namespace qva::calc
