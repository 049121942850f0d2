#include "platform/calc/forms/MonthCalendar.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>

#include <array>
#include <cmath>

#include "platform/calc/forms/FormWindow.h"
#include "platform/date.h"
#include "platform/forms/picker_dates.h"
#include "platform/lithuanian_names.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva::calc {

using css::awt::Rectangle;

namespace {

constexpr std::array<std::u16string_view, 7> kWeekdays = {u"Pr", u"An", u"Tr", u"Kt", u"Pn", u"Št", u"Sk"};

constexpr int kDays = 7;
constexpr int kWeeks = 6;
constexpr int kHeading = 26;  ///< height of the month's name, at 100 %
constexpr int kWeekdayRow = 20;
constexpr int kEnter = 13;
constexpr int kEscape = 27;

}  // namespace

MonthCalendar::MonthCalendar(FormWindow& form, const ui::ControlDescription& description)
    : Canvas(form, description), date_(DateFromParts(1900, 1, 1)) {
}

void MonthCalendar::SetValue(Date value) {
  date_ = PickerDay(value);
  Redraw();
}

bool MonthCalendar::OnKey(const css::awt::KeyEvent& event) {
  namespace key = css::awt::Key;
  const bool control = event.Modifiers & css::awt::KeyModifier::MOD1;
  const int months = control ? 12 : 1;
  switch (event.KeyCode) {
    case key::LEFT:
      SetValue(MovedByDays(date_, -1));
      return true;
    case key::RIGHT:
      SetValue(MovedByDays(date_, 1));
      return true;
    case key::UP:
      SetValue(MovedByDays(date_, -kDays));
      return true;
    case key::DOWN:
      SetValue(MovedByDays(date_, kDays));
      return true;
    case key::PAGEUP:
      SetValue(MovedByMonths(date_, -months));
      return true;
    case key::PAGEDOWN:
      SetValue(MovedByMonths(date_, months));
      return true;
    case key::HOME:
      SetValue(FirstOfMonth(date_));
      return true;
    case key::END:
      SetValue(LastOfMonth(date_));
      return true;
    case key::TAB:
      return false;
  }
  const int character = event.KeyCode == key::RETURN   ? kEnter
                        : event.KeyCode == key::ESCAPE ? kEscape
                                                       : static_cast<int>(event.KeyChar);
  if (character == 0) return false;
  if (on_key_press) on_key_press(character);
  return true;
}

Date MonthCalendar::FirstShown() const {
  const Date first = FirstOfMonth(date_);
  return {first.serial - WeekdayOf(first)};
}

Rectangle MonthCalendar::DayPlace(int cell) const {
  const Rectangle area = Area();
  const int top = Scaled(kHeading + kWeekdayRow);
  const int column = cell % kDays;
  const int row = cell / kDays;
  const int left = area.Width * column / kDays;
  const int upper = top + (area.Height - top) * row / kWeeks;
  return {left, upper, area.Width * (column + 1) / kDays - left,
          top + (area.Height - top) * (row + 1) / kWeeks - upper};
}

Rectangle MonthCalendar::ArrowPlace(bool forward) const {
  const int size = Scaled(kHeading);
  return {forward ? Area().Width - size : 0, 0, size, size};
}

void MonthCalendar::Pressed(const MousePress& press) {
  for (const bool forward : {false, true}) {
    if (Contains(ArrowPlace(forward), press.x, press.y)) {
      SetValue(MovedByMonths(date_, forward ? 1 : -1));
      return;
    }
  }
  for (int cell = 0; cell < kWeeks * kDays; ++cell) {
    if (!Contains(DayPlace(cell), press.x, press.y)) continue;
    const Date day{FirstShown().serial + cell};
    if (press.clicks == 1) {
      SetValue(MovedByDays(date_, static_cast<int>(day.serial - date_.serial)));
    } else if (on_day_double_click) {
      // The first press may have turned to another month, where another day stands here; it stays chosen.
      on_day_double_click();
    }
    return;
  }
}

void MonthCalendar::Draw(Painter& painter) {
  const Theme& theme = painter.theme();
  const Rectangle area = Area();
  painter.Fill(area, theme.field);
  const DateParts shown = PartsOf(date_);

  painter.Fill({0, 0, area.Width, Scaled(kHeading)}, theme.dialog);
  painter.SetBold(true);
  painter.Text({0, 0, area.Width, Scaled(kHeading)},
               NumberText(shown.year) + u" m. " + LithuanianName(DateName::Month, shown.month - 1),
               theme.dialog_text, Align::Center);
  painter.SetBold(false);
  for (const bool forward : {false, true}) {
    const Rectangle place = ArrowPlace(forward);
    const int size = Scaled(4);
    const int x = place.X + place.Width / 2;
    const int y = place.Y + place.Height / 2;
    const int tip = forward ? x + size : x - size;
    const int back = forward ? x - size / 2 : x + size / 2;
    painter.Polygon({{tip, y}, {back, y - size}, {back, y + size}}, theme.dialog_text);
  }

  for (int day = 0; day < kDays; ++day) {
    Rectangle place = DayPlace(day);
    place.Y = Scaled(kHeading);
    place.Height = Scaled(kWeekdayRow);
    painter.Text(place, kWeekdays[static_cast<std::size_t>(day)], theme.disabled_text, Align::Center);
  }
  const int line = Scaled(kHeading + kWeekdayRow) - 1;
  painter.Line(Scaled(4), line, area.Width - Scaled(4), line, theme.shadow);

  const double today = std::floor(GetServices().clock->Now().serial);
  for (int cell = 0; cell < kWeeks * kDays; ++cell) {
    const Date day{FirstShown().serial + cell};
    const bool chosen = day == date_;
    Rectangle place = DayPlace(cell);
    const DateParts parts = PartsOf(day);
    if (chosen) painter.Fill(place, theme.highlight);
    if (day.serial == today) painter.Frame(place, theme.shadow);
    painter.Text(place, NumberText(parts.day),
                 chosen                       ? theme.highlight_text
                 : parts.month == shown.month ? theme.field_text
                                              : theme.disabled_text,
                 Align::Center);
  }
  painter.Frame(area, theme.shadow);
}

}  // namespace qva::calc
