#include "platform/forms/picker_dates.h"

#include <cmath>

#include "platform/date.h"
#include "platform/error.h"

namespace qva {
namespace {

constexpr int kFirstPickerYear = 1753;  // as Windows' own
constexpr int kLastPickerYear = 9999;

}  // namespace

bool IsPickerDay(Date date) {
  const Date day{std::floor(date.serial)};
  return day >= DateFromParts(kFirstPickerYear, 1, 1) && day <= DateFromParts(kLastPickerYear, 12, 31);
}

Date PickerDay(Date date) {
  if (!IsPickerDay(date)) {
    throw AutomationError(kInvalidPropertyValue, u"A date picker cannot show this date");
  }
  return {std::floor(date.serial)};
}

Date MovedByMonths(Date date, int months) {
  const DateParts parts = PartsOf(date);
  const int month = parts.year * 12 + parts.month - 1 + months;
  if (month < kFirstPickerYear * 12 || month >= (kLastPickerYear + 1) * 12) return date;
  return AddMonths(date, months);
}

Date MovedByDays(Date date, int days) {
  const Date moved{date.serial + days};
  return IsPickerDay(moved) ? moved : date;
}

std::optional<Date> KeyTarget(GridKey key, bool control, Date from) {
  const int months = control ? 12 : 1;
  switch (key) {
    case GridKey::Left:
      return MovedByDays(from, -1);
    case GridKey::Right:
      return MovedByDays(from, 1);
    case GridKey::Up:
      return MovedByDays(from, -7);
    case GridKey::Down:
      return MovedByDays(from, 7);
    case GridKey::PageUp:
      return MovedByMonths(from, -months);
    case GridKey::PageDown:
      return MovedByMonths(from, months);
    case GridKey::Home:
      return FirstOfMonth(from);
    case GridKey::End:
      return LastOfMonth(from);
    case GridKey::Tab:
      break;
  }
  return std::nullopt;
}

int WeekdayOf(Date date) {
  // Day 2 of automation's calendar, 1 January 1900, was a Monday.
  const long long days = static_cast<long long>(std::floor(date.serial)) - 2;
  return static_cast<int>((days % 7 + 7) % 7);
}

int DaysInMonthOf(Date date) {
  return PartsOf(LastOfMonth(date)).day;
}

}  // namespace qva
