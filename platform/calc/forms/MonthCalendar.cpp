#include "platform/calc/forms/MonthCalendar.h"

#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/TextAlign.hpp>

#include <array>
#include <cmath>

#include "platform/calc/Uno.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/GridKeys.h"
#include "platform/date.h"
#include "platform/forms/picker_dates.h"
#include "platform/lithuanian/date_names.h"
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
    : Canvas(form, description), date_(kFirstShownDay), month_(*this, window().peer(), u"") {
  css::awt::FontDescriptor bold;
  bold.Weight = css::awt::FontWeight::BOLD;
  month_.window.SetProperty("FontDescriptor", Any(bold));
  month_.window.SetProperty("Align", Any(sal_Int16{css::awt::TextAlign::CENTER}));
  for (const std::u16string_view weekday : kWeekdays) {
    CellColumn& days =
        weekdays_.emplace_back(*this, window().peer(),
                               ui::GridColumn{.caption = std::u16string(weekday), .read_only = true}, kWeeks);
    days.caption().SetProperty("Align", Any(sal_Int16{css::awt::TextAlign::CENTER}));
    days.caption().SetProperty("TextColor", Any(form.theme().disabled_text));
    days.caption().SetProperty("BackgroundColor", Any(form.theme().field));
    for (std::size_t week = 0; week < kWeeks; ++week) {
      days.CellOf(week).cell = {week, weekdays_.size() - 1};
      days.CellOf(week).SetName(weekday);
      days.CellOf(week).window().SetProperty("Align", Any(sal_Int16{css::awt::TextAlign::CENTER}));
      days.CellOf(week).window().window()->setVisible(true);
    }
  }
  Show();
}

void MonthCalendar::SetValue(Date value) {
  date_ = PickerDay(value);
  Show();
}

void MonthCalendar::Place(const Rectangle& pixels) {
  Canvas::Place(pixels);
  Rectangle heading(Scaled(kHeading), 1, pixels.Width - 2 * Scaled(kHeading), Scaled(kHeading) - 1);
  month_.window.Place(heading);
  for (CellColumn& days : weekdays_) {
    for (std::size_t week = 0; week < kWeeks; ++week) {
      CellWindow& day = days.CellOf(week);
      Rectangle place = DayPlace(day.cell);
      if (week == 0)
        days.caption().Place({place.X + 1, Scaled(kHeading), place.Width - 2, Scaled(kWeekdayRow) - 1});
      day.window().Place({place.X + 1, place.Y + 1, place.Width - 2, place.Height - 2});
    }
  }
}

CellWindow* MonthCalendar::CurrentCell() {
  const auto day = static_cast<std::size_t>(date_.serial - FirstShown().serial);
  return &weekdays_[day % kDays].CellOf(day / kDays);
}

void MonthCalendar::Show() {
  const Theme& theme = form().theme();
  const DateParts shown = PartsOf(date_);
  month_.window.SetCaption(NumberText(shown.year) + u" m. " +
                           LithuanianName(DateName::Month, shown.month - 1));
  for (CellColumn& days : weekdays_) {
    for (std::size_t week = 0; week < kWeeks; ++week) {
      CellWindow& cell = days.CellOf(week);
      const DateParts day = PartsOf(DayOf(cell.cell));
      cell.SetText(NumberText(day.day));
      if (&cell == CurrentCell()) {
        cell.SetColors(theme.highlight, theme.highlight_text);
      } else {
        cell.SetColors(theme.field, day.month == shown.month ? theme.field_text : theme.disabled_text);
      }
    }
  }
  FollowCurrentCell();
  Redraw();
}

bool MonthCalendar::OnKey(const css::awt::KeyEvent& event) {
  namespace key = css::awt::Key;
  const bool control = event.Modifiers & css::awt::KeyModifier::MOD1;
  if (const std::optional<GridKey> grid_key = GridKeyOf(event.KeyCode)) {
    const std::optional<Date> day = KeyTarget(*grid_key, control, date_);
    if (day) SetValue(*day);
    return day.has_value();
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

Date MonthCalendar::DayOf(GridCell cell) const {
  return {FirstShown().serial + static_cast<double>(cell.line * kDays + cell.column)};
}

Rectangle MonthCalendar::DayPlace(GridCell cell) const {
  const Rectangle area = Area();
  const int top = Scaled(kHeading + kWeekdayRow);
  const auto column = static_cast<int>(cell.column);
  const auto row = static_cast<int>(cell.line);
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
    if (Contains(ArrowPlace(forward), press.x, press.y)) SetValue(MovedByMonths(date_, forward ? 1 : -1));
  }
}

void MonthCalendar::CellPressed(CellWindow& cell, int clicks) {
  if (clicks == 1) {
    SetValue(MovedByDays(date_, static_cast<int>(DayOf(cell.cell).serial - date_.serial)));
  } else if (on_day_double_click) {
    // The first press may have turned to another month, where another day stands here; it stays chosen.
    on_day_double_click();
  }
}

void MonthCalendar::Draw(Painter& painter) {
  const Theme& theme = painter.theme();
  const Rectangle area = Area();
  painter.Fill(area, theme.field);
  painter.Fill({0, 0, area.Width, Scaled(kHeading)}, theme.dialog);
  for (const bool forward : {false, true}) {
    const Rectangle place = ArrowPlace(forward);
    const int size = Scaled(4);
    const int x = place.X + place.Width / 2;
    const int y = place.Y + place.Height / 2;
    const int tip = forward ? x + size : x - size;
    const int back = forward ? x - size / 2 : x + size / 2;
    painter.Polygon({{tip, y}, {back, y - size}, {back, y + size}}, theme.dialog_text);
  }
  const int line = Scaled(kHeading + kWeekdayRow) - 1;
  painter.Line(Scaled(4), line, area.Width - Scaled(4), line, theme.shadow);

  const double today = std::floor(GetServices().clock->Now().serial);
  for (CellColumn& days : weekdays_) {
    for (std::size_t week = 0; week < kWeeks; ++week) {
      const GridCell cell = days.CellOf(week).cell;
      if (DayOf(cell).serial == today) painter.Frame(DayPlace(cell), theme.shadow);
    }
  }
  painter.Frame(area, theme.shadow);
}

}  // namespace qva::calc
