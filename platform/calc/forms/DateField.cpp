#include "platform/calc/forms/DateField.h"

#include <com/sun/star/awt/Key.hpp>

#include "platform/calc/forms/FormWindow.h"
#include "platform/date.h"
#include "platform/forms/picker_dates.h"
#include "platform/text.h"

namespace qva::calc {

using css::awt::Rectangle;

namespace {

constexpr int kButtonWidth = 17;
constexpr int kFieldMargin = 4;

int NumberOf(std::u16string_view digits) {
  int number = 0;
  for (const char16_t digit : digits) number = number * 10 + (digit - u'0');
  return number;
}

}  // namespace

void DateField::SetValue(Date value) {
  Change(PickerDay(value));
}

std::vector<DateField::Part> DateField::PartsOfFormat(std::u16string_view format) {
  std::vector<Part> parts;
  for (const char16_t c : format) {
    const char16_t kind = c == u'y' || c == u'M' || c == u'd' ? c : u'\0';
    if (parts.empty() || parts.back().kind != kind) parts.push_back({kind, {}});
    parts.back().text += c;
  }
  return parts;
}

void DateField::SetFormat(std::u16string_view format) {
  parts_ = PartsOfFormat(format);
  current_ = 0;
  digits_.clear();
  if (!parts_.empty() && parts_[0].kind == 0) MoveToPart(1);
  Redraw();
}

void DateField::Change(Date date) {
  if (date == date_) return;
  date_ = date;
  Redraw();
  if (on_change) on_change();
}

void DateField::Step(int direction) {
  if (parts_.empty()) return;
  StoreDigits();
  switch (parts_[current_].kind) {
    case u'y':
      return Change(MovedByMonths(date_, 12 * direction));
    case u'M':
      return Change(MovedByMonths(date_, direction));
    case u'd':
      return Change(MovedByDays(date_, direction));
  }
}

void DateField::MoveToPart(int direction) {
  StoreDigits();
  for (std::size_t part = current_ + static_cast<std::size_t>(direction); part < parts_.size();
       part += static_cast<std::size_t>(direction)) {
    if (parts_[part].kind == 0) continue;
    current_ = part;
    break;
  }
  Redraw();
}

void DateField::TypeDigit(char16_t digit) {
  if (parts_.empty()) return;
  digits_ += digit;
  const char16_t kind = parts_[current_].kind;
  // A month that begins with 2 has no second digit, nor has a day that begins with 4.
  const int last_first_digit = kind == u'M' ? 1 : 3;
  if (kind == u'y' ? digits_.size() == 4 : digits_.size() == 2 || digit - u'0' > last_first_digit) {
    StoreDigits();
    if (kind == u'y') MoveToPart(1);
  }
  Redraw();
}

void DateField::StoreDigits() {
  if (digits_.empty()) return;
  const int number = NumberOf(std::exchange(digits_, {}));
  const DateParts parts = PartsOf(date_);
  Redraw();
  switch (parts_[current_].kind) {
    case u'y':
      if (number >= kFirstPickerYear) Change(MovedByMonths(date_, 12 * (number - parts.year)));
      break;
    case u'M':
      if (number >= 1 && number <= 12) Change(MovedByMonths(date_, number - parts.month));
      break;
    case u'd':
      if (number >= 1 && number <= DaysInMonthOf(date_)) Change(MovedByDays(date_, number - parts.day));
      break;
  }
}

bool DateField::OnKey(const css::awt::KeyEvent& event) {
  namespace key = css::awt::Key;
  if (event.Modifiers != 0) return false;
  switch (event.KeyCode) {
    case key::UP:
    case key::ADD:
      Step(1);
      return true;
    case key::DOWN:
    case key::SUBTRACT:
      Step(-1);
      return true;
    case key::LEFT:
      MoveToPart(-1);
      return true;
    case key::RIGHT:
      MoveToPart(1);
      return true;
    case key::RETURN:
      StoreDigits();
      return false;
  }
  if (!IsDigit(event.KeyChar)) return false;
  TypeDigit(static_cast<char16_t>(event.KeyChar));
  return true;
}

void DateField::OnFocus(bool gained) {
  if (!gained) StoreDigits();
  Canvas::OnFocus(gained);
}

Rectangle DateField::Buttons() const {
  const Rectangle area = Area();
  const int width = Scaled(kButtonWidth);
  return {area.Width - width - 1, 1, width, area.Height - 2};
}

void DateField::Pressed(const MousePress& press) {
  const Rectangle buttons = Buttons();
  if (Contains(buttons, press.x, press.y)) {
    Step(press.y < buttons.Y + buttons.Height / 2 ? 1 : -1);
    return;
  }
  for (std::size_t part = 0; part < places_.size(); ++part) {
    if (parts_[part].kind == 0 || !Contains(places_[part], press.x, press.y)) continue;
    StoreDigits();
    current_ = part;
  }
  Redraw();
}

void DateField::Draw(Painter& painter) {
  const Theme& theme = painter.theme();
  const Rectangle area = Area();
  painter.Fill(area, Enabled() ? theme.field : theme.dialog);
  painter.Frame(area, theme.shadow);

  places_.clear();
  int left = Scaled(kFieldMargin);
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    const Part& part = parts_[i];
    std::u16string text = part.kind == 0 ? part.text : FormatByWindowsPattern(date_, part.text);
    const bool is_current = i == current_ && focused() && Enabled();
    if (is_current && !digits_.empty()) text = digits_;
    const Rectangle place(left, Scaled(2), painter.TextWidth(text) + 1, area.Height - 2 * Scaled(2));
    if (is_current) painter.Fill(place, theme.highlight);
    painter.Text(place, text,
                 !Enabled()   ? theme.disabled_text
                 : is_current ? theme.highlight_text
                              : theme.field_text);
    places_.push_back(place);
    left += place.Width;
  }

  const Rectangle buttons = Buttons();
  painter.Fill(buttons, theme.dialog);
  painter.Line(buttons.X, buttons.Y, buttons.X, buttons.Y + buttons.Height - 1, theme.shadow);
  const int middle = buttons.Y + buttons.Height / 2;
  painter.Line(buttons.X, middle, buttons.X + buttons.Width - 1, middle, theme.shadow);
  const sal_Int32 color = Enabled() ? theme.dialog_text : theme.disabled_text;
  const int x = buttons.X + buttons.Width / 2;
  const int size = Scaled(3);
  const int up = buttons.Y + buttons.Height / 4;
  const int down = buttons.Y + buttons.Height * 3 / 4;
  painter.Polygon({{x - size, up + size / 2}, {x + size, up + size / 2}, {x, up - size / 2 - 1}}, color);
  painter.Polygon({{x - size, down - size / 2}, {x + size, down - size / 2}, {x, down + size / 2 + 1}},
                  color);
}

}  // namespace qva::calc
