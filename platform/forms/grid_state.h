// What a grid knows before it has a window: what it shows, where its user is, and what becomes of what he
// does.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"

namespace qva {

/// A cell by its line and its column, both from 0; columns count without the hidden ones.
struct GridCell {
  std::size_t line = 0;
  std::size_t column = 0;
  bool operator==(const GridCell&) const = default;
};

/// A column that is shown.
struct ShownColumn {
  ui::GridColumn description;
  std::size_t model_column = 0;  ///< its number among all columns
};

/// Whether the text of a Boolean says True; a text that is none does not.
bool IsMarked(std::u16string_view text);

/// Below the rows of a grid that can be edited stands an empty line; what is done there first makes a row,
/// which goes again when nothing came of it. The model's own changes come by Refresh, as ui::GridModel says,
/// also from within an operation here. None raises but what the model raises.
class GridState {
 public:
  /// As ui::Grid's. Columns without width are not shown.
  void SetColumns(std::vector<ui::GridColumn> columns);
  void SetModel(ui::GridModel* model);
  void Refresh();
  std::optional<std::size_t> CurrentRow() const;

  const std::vector<ShownColumn>& columns() const { return columns_; }
  ui::GridModel* model() const { return model_; }
  /// How many rows the model has now.
  std::size_t RowCount() const { return model_ ? model_->RowCount() : 0; }
  /// How many lines stand below each other since the last Refresh, the empty one among them.
  std::size_t lines() const;
  /// Whether a cell of some column can be changed.
  bool can_edit() const { return can_edit_; }

  GridCell current() const { return current_; }
  /// The cell becomes the current one. It is one of the lines and columns that there are.
  void MoveTo(GridCell cell) { current_ = cell; }
  /// Null where there is no column or no line.
  const ShownColumn* CurrentColumn() const;
  /// Where a line stands, as assistive technology tells it: "2 / 5".
  std::u16string PlaceOf(std::size_t line) const;
  /// What stands in a cell of a column that there is; empty on the empty line.
  std::u16string TextOf(GridCell cell) const;
  std::u16string CurrentText() const { return CurrentColumn() ? TextOf(current_) : std::u16string(); }
  /// Whether a text can be typed into the current cell.
  bool TakesText() const;
  /// Whether the current cell has a button.
  bool HasButton() const;

  /// Has a row to write into, where need be a new one. False when the model gives none.
  bool BeginRow();
  /// Stores a text in the current cell. False when the model refused it.
  bool Store(std::u16string_view text);
  /// Nothing is stored: a row that was begun goes.
  void GiveUp();
  /// Turns the mark of the current cell over, if it has one that can be changed.
  void TurnMark();
  /// Presses the current cell's button, if it has one. A row that was begun for it goes when it put nothing
  /// in.
  void PressButton();
  void DeleteCurrentRow();

 private:
  /// Takes away the last row and goes back to the empty line.
  void DropRow(std::size_t row);

  std::vector<ShownColumn> columns_;
  ui::GridModel* model_ = nullptr;
  bool can_edit_ = false;
  std::size_t shown_rows_ = 0;  ///< those at the last refresh
  GridCell current_;
  std::optional<std::size_t> new_row_;  ///< begun, without anything in it yet
};

}  // namespace qva
