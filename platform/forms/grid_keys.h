// Where a key leads in a grid.
#pragma once

#include <optional>

#include "platform/forms/grid_state.h"

namespace qva {

enum class GridKey { Left, Right, Up, Down, PageUp, PageDown, Home, End, Tab };

struct GridExtent {
  std::size_t lines = 0;
  std::size_t columns = 0;
  std::size_t page = 1;  ///< the lines in sight
};

/// The cell that a key leads to from another one. Arrows, pages, Home and End stay within the grid; with
/// Ctrl, Home and End go to its corners. Tab goes cell by cell and line by line, with Shift backwards.
/// Nothing for Tab at either end, for Tab and page keys with Ctrl, which turn a form's pages, and in a grid
/// without cells.
std::optional<GridCell> KeyTarget(GridKey key, bool control, bool shift, GridCell from,
                                  const GridExtent& extent);

}  // namespace qva
