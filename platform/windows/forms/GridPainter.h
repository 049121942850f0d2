// How a grid looks.
#pragma once

#include <vector>

#include "platform/controls.h"
#include "platform/windows/forms/GridLayout.h"

namespace qva::windows {

/// Pixels between a cell's edges and its text, at every scale.
constexpr int kCellPadding = 3;

/// A column that is shown.
struct ShownColumn {
  ui::GridColumn description;
  std::size_t model_column = 0;  ///< its number among all columns
};

/// What is to be seen. All of it is borrowed.
struct GridPicture {
  const GridLayout& layout;
  const std::vector<ShownColumn>& columns;
  const ui::GridModel* model;  ///< null for an empty grid
  HFONT font;
  GridCell current;
  bool is_enabled = true;
  bool has_focus = false;          ///< the grid itself or its editor
  bool is_edited = false;          ///< the editor stands over the current cell
  bool is_button_pressed = false;  ///< that of the current cell
};

/// The part of the current cell that is its button.
RECT CellButtonArea(const RECT& cell);

/// Whether the text of a Boolean says True; a text that is none does not.
bool IsTrue(std::u16string_view text);

/// Paints all below the header that lies in `dirty`, in one go, so that nothing flickers.
void PaintGrid(HDC target, const RECT& dirty, const GridPicture& picture);

}  // namespace qva::windows
