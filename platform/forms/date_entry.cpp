#include "platform/forms/date_entry.h"

#include <utility>

#include "platform/date.h"

namespace qva {

void DateEntry::SetValue(Date value) {
  Change(PickerDay(value));
}

std::vector<DateEntry::Part> DateEntry::PartsOfFormat(std::u16string_view format) {
  std::vector<Part> parts;
  for (const char16_t c : format) {
    const char16_t kind = c == u'y' || c == u'M' || c == u'd' ? c : u'\0';
    if (parts.empty() || parts.back().kind != kind) parts.push_back({kind, {}});
    parts.back().text += c;
  }
  return parts;
}

void DateEntry::SetFormat(std::u16string_view format) {
  parts_ = PartsOfFormat(format);
  current_ = 0;
  digits_.clear();
  if (Kind() == 0) MoveToPart(1);
  Show();
}

DateEntry::MarkedText DateEntry::Text() const {
  MarkedText shown;
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    if (part == current_) shown.from = shown.text.size();
    shown.text += TextOf(part);
    if (part == current_) shown.to = shown.text.size();
  }
  return shown;
}

std::u16string DateEntry::TextOf(std::size_t part) const {
  if (part == current_ && !digits_.empty()) return digits_;
  return parts_[part].kind == 0 ? parts_[part].text : FormatByWindowsPattern(date_, parts_[part].text);
}

void DateEntry::Change(Date date) {
  if (date == date_) return;
  date_ = date;
  Show();
  if (on_change) on_change();
}

void DateEntry::MoveBy(int years_months_or_days) {
  switch (Kind()) {
    case u'y':
      return Change(MovedByMonths(date_, 12 * years_months_or_days));
    case u'M':
      return Change(MovedByMonths(date_, years_months_or_days));
    case u'd':
      return Change(MovedByDays(date_, years_months_or_days));
  }
}

void DateEntry::Step(int direction) {
  StoreDigits();
  MoveBy(direction);
}

void DateEntry::MoveToPart(int direction) {
  StoreDigits();
  for (std::size_t part = current_ + static_cast<std::size_t>(direction); part < parts_.size();
       part += static_cast<std::size_t>(direction)) {
    if (parts_[part].kind == 0) continue;
    current_ = part;
    break;
  }
  Show();
}

void DateEntry::ChoosePartAt(std::size_t caret) {
  std::size_t end = 0;
  std::size_t chosen = current_;
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    end += TextOf(part).size();
    if (parts_[part].kind != 0) chosen = part;
    if (caret <= end) break;
  }
  StoreDigits();
  current_ = chosen;
  Show();
}

void DateEntry::TypeDigit(char16_t digit) {
  const char16_t kind = Kind();
  if (kind == 0) return;
  digits_ += digit;
  // A month that begins with 2 has no second digit, nor has a day that begins with 4.
  const char16_t last_first_digit = kind == u'M' ? u'1' : u'3';
  if (kind == u'y' ? digits_.size() == 4 : digits_.size() == 2 || digit > last_first_digit) {
    StoreDigits();
    if (kind == u'y') MoveToPart(1);
  }
  Show();
}

void DateEntry::StoreDigits() {
  if (digits_.empty()) return;
  int number = 0;
  for (const char16_t digit : std::exchange(digits_, {})) number = number * 10 + (digit - u'0');
  const DateParts parts = PartsOf(date_);
  Show();
  switch (Kind()) {
    case u'y':
      return MoveBy(number - parts.year);
    case u'M':
      if (number >= 1 && number <= 12) MoveBy(number - parts.month);
      break;
    case u'd':
      if (number >= 1 && number <= DaysInMonthOf(date_)) MoveBy(number - parts.day);
      break;
  }
}

}  // namespace qva
