#include "platform/calc/forms/Canvas.h"

#include "platform/calc/Uno.h"
#include "platform/calc/forms/FormWindow.h"

namespace qva::calc {

Canvas::Canvas(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "window", css::awt::VclWindowPeerAttribute::CLIPCHILDREN) {
  window().SetProperty("Tabstop", Any(true));
  window().peer()->setBackground(form.theme().dialog);
}

css::awt::Rectangle Canvas::Area() const {
  const css::awt::Size size = window().Size();
  return {0, 0, size.Width, size.Height};
}

int Canvas::Scaled(int length) const {
  return form().Scaled(length);
}

void Canvas::OnPaint() {
  Painter painter(window(), form().theme());
  Draw(painter);
}

void Canvas::TakeFocus() {
  const CellWindow* cell = CurrentCell();
  (cell ? cell->window() : window()).window()->setFocus();
}

void Canvas::OnFocus(bool gained) {
  Redraw();
  if (!gained) return;
  form().Later([this] {
    if (FormControl::HasFocus()) TakeFocus();
  });
}

void Canvas::CellFocused(CellWindow& cell, bool gained) {
  if (gained == (focused_cell_ == &cell)) return;  // on its way from cell to cell
  focused_cell_ = gained ? &cell : nullptr;
  FocusMoved(focused_cell_);
}

void Canvas::FollowCurrentCell() {
  CellWindow* cell = CurrentCell();
  if (!focused_cell_ || !cell || cell == focused_cell_) return;
  focused_cell_ = cell;
  TakeFocus();
}

void Canvas::OnMousePressed(const MousePress& press) {
  if (!Enabled()) return;
  if (!HasFocus()) TakeFocus();
  Pressed(press);
}

bool Canvas::Contains(const css::awt::Rectangle& area, int x, int y) {
  return x >= area.X && x < area.X + area.Width && y >= area.Y && y < area.Y + area.Height;
}

}  // namespace qva::calc
