// Controls that are made of cells, and draw the ground on which they stand.
#pragma once

#include "platform/calc/forms/Cells.h"
#include "platform/calc/forms/FormControl.h"
#include "platform/calc/forms/Painter.h"

namespace qva::calc {

/// One of the cells is the current one. The control's focus is that cell's.
class Canvas : public FormControl, public CellOwner {
 public:
  Canvas(FormWindow& form, const ui::ControlDescription& description);
  void TakeFocus() override;
  bool HasFocus() const override { return focused_cell_ || FormControl::HasFocus(); }
  EventTarget& target() override { return *this; }

 protected:
  /// Null where there is none.
  virtual CellWindow* CurrentCell() = 0;
  /// Draws all of the ground.
  virtual void Draw(Painter& painter) = 0;
  /// Beside the cells; the control has the focus.
  virtual void Pressed(const MousePress& press) = 0;
  /// The focus has come to a cell, or has left all of them (null), by the user's doing.
  virtual void FocusMoved(CellWindow* cell) = 0;

  bool has_focused_cell() const { return focused_cell_; }
  /// The cells are no longer there.
  void ForgetCells() { focused_cell_ = nullptr; }
  /// Another cell has become the current one: the focus goes there, if it is in one.
  void FollowCurrentCell();
  void Redraw() const { window().Invalidate(); }
  /// The whole control, in its own pixels.
  css::awt::Rectangle Area() const;
  int Scaled(int length) const;
  static bool Contains(const css::awt::Rectangle& area, int x, int y);

 private:
  void OnPaint() override;
  void OnFocus(bool gained) override;
  void OnMousePressed(const MousePress& press) override;
  void CellFocused(CellWindow& cell, bool gained) override;

  CellWindow* focused_cell_ = nullptr;
};

}  // namespace qva::calc
