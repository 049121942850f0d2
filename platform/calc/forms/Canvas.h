// Controls that draw themselves.
#pragma once

#include "platform/calc/forms/FormControl.h"
#include "platform/calc/forms/Painter.h"

namespace qva::calc {

class Canvas : public FormControl {
 public:
  Canvas(FormWindow& form, const ui::ControlDescription& description);

 protected:
  /// Draws all of the control.
  virtual void Draw(Painter& painter) = 0;
  void Redraw() const { window().Invalidate(); }
  bool focused() const { return focused_; }
  /// The whole control, in its own pixels.
  css::awt::Rectangle Area() const;
  int Scaled(int length) const;

  void OnPaint() override;
  void OnFocus(bool gained) override;
  /// Takes the focus; what the press means comes after it.
  void OnMousePressed(const MousePress& press) override;
  virtual void Pressed(const MousePress& press) = 0;

  static bool Contains(const css::awt::Rectangle& area, int x, int y);

 private:
  bool focused_ = false;
};

}  // namespace qva::calc
