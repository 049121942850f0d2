// A table of cells.
#pragma once

#include <functional>
#include <vector>

#include "platform/calc/forms/Canvas.h"
#include "platform/calc/forms/GridEditor.h"
#include "platform/calc/forms/GridPlaces.h"

namespace qva::calc {

/// Arrow keys, Tab and the mouse move from cell to cell, Home and End to the first and last column, with Ctrl
/// to the corners. Typing, F2 or a second click edit a cell, Enter stores, Escape leaves the old text; F4,
/// Alt with Down and the small button in the cell press its button, the blank key turns a mark, Delete
/// deletes the row. The empty last line becomes a row when it is edited, and goes again when nothing is
/// stored in it. A grid in which nothing can be edited has no such line, and marks whole rows, to the first
/// and last of which Home and End go.
class GridView : public Canvas, public ui::Grid {
 public:
  GridView(FormWindow& form, const ui::ControlDescription& description);

  void SetColumns(std::vector<ui::GridColumn> columns) override;
  void SetModel(ui::GridModel* model) override;
  void Refresh() override;
  std::optional<std::size_t> CurrentRow() const override;
  void SetCurrentRow(std::size_t row) override;

  /// A row was double-clicked in a grid in which nothing can be edited.
  std::function<void()> on_pick;
  /// Moves the current row so many lines, as far as there are any.
  void Move(int lines);

  void Place(const css::awt::Rectangle& pixels) override;
  bool HasFocus() const override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  using Cell = GridPlaces::Cell;

  bool HasNewLine() const { return model_ && editable_; }
  std::size_t RowCount() const { return model_ ? model_->RowCount() : 0; }
  const ui::GridColumn* CurrentColumn() const;
  bool OnEditorKey(const css::awt::KeyEvent& event);
  bool OnCellKey(const css::awt::KeyEvent& event);
  /// Whether there was a cell to go to.
  bool MoveToNextCell(bool forward);
  void MoveColumn(int direction);
  /// To the first or last column.
  void MoveToEdge(bool last);
  void MoveTo(Cell cell);
  void BeginEdit(std::u16string_view text, bool marked, bool changed);
  /// False when the model refuses what was typed.
  bool EndEdit(bool store, bool keep_focus = true);
  void TurnMark();
  static bool IsTrue(std::u16string_view text);
  void PressButton();
  /// Makes the empty last line a row, when it is the current one.
  void BeginRow();
  void EndRow(bool keep);
  void UpdateBar();

  void Draw(Painter& painter) override;
  void DrawCell(Painter& painter, const Cell& cell, bool is_new);
  void Pressed(const MousePress& press) override;

  /// The bar for scrolling.
  class Bar : public EventTarget {
   public:
    explicit Bar(GridView& grid);
    Window window;

   private:
    void OnScrolled() override;
    void OnFailure(std::exception_ptr failure) noexcept override { grid_.OnFailure(std::move(failure)); }
    GridView& grid_;
  };

  std::vector<ui::GridColumn> columns_;
  ui::GridModel* model_ = nullptr;
  GridPlaces places_;
  GridEditor editor_;
  Bar bar_;
  Cell current_;
  std::size_t known_rows_ = 0;  ///< at the last Refresh
  bool editable_ = false;
  bool fresh_row_ = false;  ///< the current row was the empty last line a moment ago
  bool typed_ = false;      ///< what is edited began with a key, so it differs from the old text
};

}  // namespace qva::calc
