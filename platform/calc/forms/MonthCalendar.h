// A month of days.
#pragma once

#include <deque>

#include "platform/calc/forms/Canvas.h"

namespace qva::calc {

/// Weeks run from Monday to Sunday; days of the months before and after fill them up and can be chosen, too.
/// Arrow keys go by days and weeks, Home and End to the first and last day, Page Up and Page Down by months,
/// with Ctrl by years; so do the arrows beside the month's name with the mouse.
class MonthCalendar : public Canvas, public ui::MonthView {
 public:
  MonthCalendar(FormWindow& form, const ui::ControlDescription& description);
  Date Value() const override { return date_; }
  void SetValue(Date value) override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  void Draw(Painter& painter) override;
  void Pressed(const MousePress& press) override;
  void Place(const css::awt::Rectangle& pixels) override;
  void FocusMoved(CellWindow*) override {}
  void CellPressed(CellWindow& cell, int clicks) override;
  void CellChanged(CellWindow&) override {}
  CellWindow* CurrentCell() override;
  void Show();
  css::awt::Rectangle DayPlace(GridCell cell) const;
  css::awt::Rectangle ArrowPlace(bool forward) const;
  Date FirstShown() const;
  Date DayOf(GridCell cell) const;

  Date date_;
  Caption month_;
  std::deque<CellColumn> weekdays_;
};

}  // namespace qva::calc
