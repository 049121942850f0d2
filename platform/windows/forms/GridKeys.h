// Where a key leads in a grid.
#pragma once

#include <optional>

#include "platform/windows/forms/GridLayout.h"

namespace qva::windows {

struct GridExtent {
  std::size_t lines = 0;
  std::size_t columns = 0;
  std::size_t page = 1;  ///< the lines in sight
};

/// The cell that a key (VK_LEFT, VK_HOME, VK_TAB …) leads to from another one. Arrows, pages, Home and End
/// stay within the grid; with Ctrl, Home and End go to its corners. Tab goes cell by cell and line by line,
/// with Shift backwards. Nothing for a key that does not move, for Tab at either end, for Tab and page keys
/// with Ctrl, which turn a form's pages, and in a grid without cells.
std::optional<GridCell> KeyTarget(UINT key, bool control, bool shift, GridCell from,
                                  const GridExtent& extent);

}  // namespace qva::windows
