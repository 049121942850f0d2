// Controls that show a date.
#pragma once

#include "platform/windows/forms/NativeControl.h"

namespace qva::windows {

class NativeDatePicker : public NativeControl, public ui::DatePicker {
 public:
  NativeDatePicker(FormWindow& form, const ui::ControlDescription& description);
  Date Value() const override { return date_; }
  void SetValue(Date value) override;
  void SetFormat(std::u16string_view format) override;
  void OnNotify(const NMHDR& notice) override;
  void Dress(HFONT font, UiScale scale) override;
  void Place(const RECT& place) override { NativeControl::Place(FieldIn(place)); }

 private:
  void DressCalendar() const;

  Date date_;
  bool is_calendar_dressed_ = false;
};

class NativeMonthView : public NativeControl, public ui::MonthView {
 public:
  NativeMonthView(FormWindow& form, const ui::ControlDescription& description);
  Date Value() const override;
  void SetValue(Date value) override;
  std::optional<SIZE> NaturalSize() const override;

 private:
  LRESULT Handle(UINT message, WPARAM first, LPARAM second) override;
  std::optional<Date> DayAt(LPARAM place) const;
  void PressDay(bool is_double, LPARAM place);

  std::optional<Date> pressed_day_;  ///< by the last press of the mouse, at this time
  LONG pressed_at_ = 0;
  bool is_picking_ = false;  ///< the second press of a double click was on the same day
};

}  // namespace qva::windows
