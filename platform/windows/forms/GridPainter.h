// How a grid looks.
#pragma once

#include "platform/controls.h"
#include "platform/windows/forms/GridLayout.h"

namespace qva::windows {

/// Pixels between a cell's edges and its text, at every scale.
constexpr int kCellPadding = 3;

/// What is to be seen. All of it is borrowed.
struct GridPicture {
  const GridLayout& layout;
  const GridState& state;
  HFONT font;
  bool is_enabled = true;
  bool has_focus = false;          ///< the grid itself or its editor
  bool is_edited = false;          ///< the editor stands over the current cell
  bool is_button_pressed = false;  ///< that of the current cell
};

/// The part of the current cell that is its button.
RECT CellButtonArea(const RECT& cell);

/// Paints all below the header that lies in `dirty`, in one go, so that nothing flickers.
void PaintGrid(HDC target, const RECT& dirty, const GridPicture& picture);

}  // namespace qva::windows
