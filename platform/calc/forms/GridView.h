// A table of cells.
#pragma once

#include <functional>
#include <vector>

#include "platform/calc/forms/Canvas.h"
#include "platform/calc/forms/GridEditor.h"
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

  /// A row was double-clicked in a grid in which nothing can be edited.
  std::function<void()> on_pick;

  void Place(const css::awt::Rectangle& pixels) override;
  bool HasFocus() const override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  bool OnEditorKey(const css::awt::KeyEvent& event);
  bool OnCellKey(const css::awt::KeyEvent& event);
  void MoveTo(GridCell cell);
  /// What the state has become, in sight.
  void Show();
  void BeginEdit(std::u16string_view text, bool marked, bool changed);
  /// False when the model refuses what was typed.
  bool EndEdit(bool store, bool keep_focus = true);
  void PressButton();
  void UpdateBar();

  void Draw(Painter& painter) override;
  void DrawCell(Painter& painter, const GridCell& cell, bool is_new);
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

  GridState state_;
  GridPlaces places_;
  GridEditor editor_;
  Bar bar_;
  bool typed_ = false;  ///< what is edited began with a key, so it differs from the old text
};

}  // namespace qva::calc
