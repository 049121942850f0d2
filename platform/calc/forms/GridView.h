// A table of cells.
#pragma once

#include <deque>
#include <vector>

#include "platform/calc/forms/Canvas.h"
#include "platform/calc/forms/GridPlaces.h"
#include "platform/forms/grid_state.h"

namespace qva::calc {

/// Keys move as KeyTarget says. Typing, F2 or a second click edit a cell, Enter stores, Escape leaves the old
/// text; F4, Alt with Down and the small button in the cell press its button, the blank key turns a mark,
/// Delete deletes the row. A grid in which nothing can be edited marks whole rows, to the first and last of
/// which Home and End go.
class GridView : public Canvas, public ui::Grid {
 public:
  GridView(FormWindow& form, const ui::ControlDescription& description);

  void SetColumns(std::vector<ui::GridColumn> columns) override;
  void SetModel(ui::GridModel* model) override;
  void Refresh() override;
  std::optional<std::size_t> CurrentRow() const override { return state_.CurrentRow(); }
  void SetCurrentRow(std::size_t row) override;

  void Place(const css::awt::Rectangle& pixels) override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  bool OnEditorKey(const css::awt::KeyEvent& event);
  bool OnCellKey(const css::awt::KeyEvent& event);
  void MoveTo(GridCell cell);
  /// What the state has become, the current cell in sight.
  void Show();
  void ShowLines();
  void ShowCell(GridCell cell, CellWindow& window);
  bool IsMarkedOut(GridCell cell) const;
  /// Makes the windows of the cells that are in sight at once.
  void MakeCells();
  CellWindow* CurrentCell() override;
  /// Has the text of the current cell changed by the user from now on. False where he cannot.
  bool BeginEdit();
  /// False when the model refuses what was typed.
  bool EndEdit(bool store);
  void PressButton();

  void Draw(Painter& painter) override;
  void Pressed(const MousePress& press) override;
  void Press(GridCell cell, int clicks);
  void FocusMoved(CellWindow* cell) override;
  void CellPressed(CellWindow& cell, int clicks) override { Press(cell.cell, clicks); }
  void CellChanged(CellWindow& cell) override;

  GridState state_;
  GridPlaces places_;
  InnerWindow bar_;     ///< for scrolling
  InnerWindow button_;  ///< the current cell's
  std::deque<CellColumn> columns_;
  std::size_t cell_lines_ = 0;  ///< how many cells each column has
  bool is_editing_ = false;     ///< the current cell's text is the user's
  bool is_changed_ = false;     ///< and he has changed it
  bool came_by_click_ = false;  ///< the current cell has become so since the mouse was pressed
};

}  // namespace qva::calc
