// A field for a date.
#pragma once

#include "platform/calc/forms/FormControl.h"
#include "platform/calc/forms/InnerWindow.h"
#include "platform/forms/date_entry.h"

namespace qva::calc {

/// Shows a date by a format of its own, which the toolkit's date field cannot. Its parts - year, month, day -
/// are chosen by a click or the arrow keys Left and Right, and changed by Up and Down, by digits or by the
/// two small buttons.
class DateField : public FormControl, public DateEntry {
 public:
  DateField(FormWindow& form, const ui::ControlDescription& description);
  void SetEnabled(bool enabled) override;
  void SetShown(bool shown) override;
  void Place(const css::awt::Rectangle& pixels) override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  void OnFocus(bool gained) override;
  void OnMousePressed(const MousePress& press) override;
  void OnTextChanged() override { Show(); }
  void Show() final;
  void DrawButtons();

  /// Drawn: the toolkit's own do not fit into a field in every look, and keys do the same.
  InnerWindow buttons_;
};

}  // namespace qva::calc
