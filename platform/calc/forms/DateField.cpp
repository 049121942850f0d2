#include "platform/calc/forms/DateField.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/Painter.h"
#include "platform/date.h"
#include "platform/forms/picker_dates.h"
#include "platform/text.h"

namespace qva::calc {

using css::awt::XTextComponent;

namespace {

constexpr int kButtonWidth = 17;  // at 100 %

int NumberOf(std::u16string_view digits) {
  int number = 0;
  for (const char16_t digit : digits) number = number * 10 + (digit - u'0');
  return number;
}

}  // namespace

DateField::DateField(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "edit", css::awt::WindowAttribute::BORDER),
      buttons_(*this, form.window().peer(), "window") {
  buttons_.window.peer()->setBackground(form.theme().dialog);
  buttons_.on_paint = [this] { DrawButtons(); };
  buttons_.on_press = [this](const MousePress& press) {
    if (!Enabled()) return;
    if (!HasFocus()) TakeFocus();
    Step(press.y < buttons_.window.Size().Height / 2 ? 1 : -1);
  };
  Show();
}

void DateField::DrawButtons() {
  const Theme& theme = form().theme();
  const css::awt::Size all = buttons_.window.Size();
  Painter painter(buttons_.window, theme);
  painter.Fill({0, 0, all.Width, all.Height}, theme.dialog);
  painter.Frame({0, 0, all.Width, all.Height}, theme.shadow);
  painter.Line(0, all.Height / 2, all.Width - 1, all.Height / 2, theme.shadow);
  const sal_Int32 color = Enabled() ? theme.dialog_text : theme.disabled_text;
  const int x = all.Width / 2;
  const int size = theme.Scaled(3);
  for (const int up : {1, -1}) {
    const int y = all.Height / 2 - up * all.Height / 4;
    painter.Polygon(
        {{x - size, y + up * size / 2}, {x + size, y + up * size / 2}, {x, y - up * (size / 2 + 1)}}, color);
  }
}

void DateField::SetEnabled(bool enabled) {
  FormControl::SetEnabled(enabled);
  buttons_.window.Invalidate();
}

void DateField::SetShown(bool shown) {
  FormControl::SetShown(shown);
  buttons_.window.window()->setVisible(shown);
}

void DateField::Place(const css::awt::Rectangle& pixels) {
  const int width = form().Scaled(kButtonWidth);
  FormControl::Place({pixels.X, pixels.Y, pixels.Width - width, pixels.Height});
  buttons_.window.Place({pixels.X + pixels.Width - width, pixels.Y, width, pixels.Height});
}

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
  Show();
}

void DateField::Change(Date date) {
  if (date == date_) return;
  date_ = date;
  Show();
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
  Show();
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
  Show();
}

void DateField::StoreDigits() {
  if (digits_.empty()) return;
  const int number = NumberOf(std::exchange(digits_, {}));
  const DateParts parts = PartsOf(date_);
  Show();
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
  if (IsDigit(event.KeyChar)) TypeDigit(static_cast<char16_t>(event.KeyChar));
  // Nothing else is typed.
  return event.KeyChar >= u' ' || event.KeyCode == key::BACKSPACE || event.KeyCode == key::HOME ||
         event.KeyCode == key::END;
}

void DateField::OnFocus(bool gained) {
  if (!gained) return StoreDigits();
  // The toolkit marks the whole text, unless a click has put the caret somewhere.
  form().Later([this] {
    const css::awt::Selection marked = window().As<XTextComponent>()->getSelection();
    if (marked.Min != marked.Max) Show();
  });
}

void DateField::OnMousePressed(const MousePress&) {
  StoreDigits();
  const sal_Int32 caret = window().As<XTextComponent>()->getSelection().Max;
  std::size_t end = 0;
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    end += TextOf(part).size();
    if (parts_[part].kind != 0) current_ = part;
    if (static_cast<std::size_t>(caret) <= end) break;
  }
  Show();
}

std::u16string DateField::TextOf(std::size_t part) const {
  if (part == current_ && !digits_.empty()) return digits_;
  return parts_[part].kind == 0 ? parts_[part].text : FormatByWindowsPattern(date_, parts_[part].text);
}

void DateField::Show() {
  std::u16string text;
  css::awt::Selection marked;
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    if (part == current_) marked.Min = static_cast<sal_Int32>(text.size());
    text += TextOf(part);
    if (part == current_) marked.Max = static_cast<sal_Int32>(text.size());
  }
  const auto field = window().As<XTextComponent>();
  if (FromUno(field->getText()) != text) field->setText(ToUno(text));
  field->setSelection(marked);
}

}  // namespace qva::calc
