#include "platform/date.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "platform/error.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr int kDaysToUnixEpoch = 25569;  // 30 December 1899 to 1 January 1970
constexpr int kFirstDay = -657434;       // 1 January 100
constexpr int kLastDay = 2958465;        // 31 December 9999

/// Days since 1 January 1970 of a proleptic Gregorian date (month 1 to 12, any day).
long long DaysFromCivil(long long year, int month, long long day) {
  year -= month <= 2;
  const long long era = (year >= 0 ? year : year - 399) / 400;
  const long long year_of_era = year - era * 400;
  const long long day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5;
  const long long day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468 + day - 1;
}

void CivilFromDays(long long days, DateParts& parts) {
  days += 719468;
  const long long era = (days >= 0 ? days : days - 146096) / 146097;
  const long long day_of_era = days - era * 146097;
  const long long year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const long long day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const long long shifted_month = (5 * day_of_year + 2) / 153;
  parts.day = static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1);
  parts.month = static_cast<int>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
  parts.year = static_cast<int>(year_of_era + era * 400 + (parts.month <= 2));
}

int FullYear(int year) {
  if (year >= 0 && year <= 29) return year + 2000;
  if (year >= 30 && year <= 99) return year + 1900;
  return year;
}

bool IsPatternLetter(char16_t c) {
  return std::u16string_view(u"dMy").find(c) != std::u16string_view::npos;
}

std::u16string Padded(int number, std::size_t width) {
  std::u16string digits = NumberText(number);
  return digits.size() < width ? std::u16string(width - digits.size(), u'0') + digits : digits;
}

/// Reads a run of digits at `i`; its length, 0 when there is none or it is longer than a year.
std::size_t ReadDigits(std::u16string_view text, std::size_t& i, int& number) {
  const std::size_t start = i;
  number = 0;
  while (i < text.size() && IsDigit(text[i]) && i - start < 5) number = number * 10 + (text[i++] - u'0');
  return i - start > 4 ? 0 : i - start;
}

/// "14:05", "14:05:09", "2:05 PM", also with the user's word for the half of the day: the fraction of a day.
std::optional<double> ParseTime(std::u16string_view text, const Locale& locale) {
  int parts[3] = {0, 0, 0};
  int count = 0;
  std::size_t i = 0;
  for (;;) {
    const std::size_t length = ReadDigits(text, i, parts[count]);
    if (length == 0 || length > 2) return std::nullopt;
    ++count;
    if (count == 3 || i >= text.size() || text[i] != u':') break;
    ++i;
  }
  const std::u16string rest = ToLower(Trim(text.substr(i)));
  if (rest.empty()) {
    if (count < 2) return std::nullopt;
  } else {
    const auto names_half = [&](std::u16string_view english, int half) {
      return rest == english || rest == ToLower(locale.NameOf(DateName::HalfOfDay, half));
    };
    const bool is_pm = names_half(u"pm", 1);
    if ((!is_pm && !names_half(u"am", 0)) || parts[0] < 1 || parts[0] > 12) return std::nullopt;
    parts[0] = parts[0] % 12 + (is_pm ? 12 : 0);
  }
  if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return std::nullopt;
  return (parts[0] * 3600 + parts[1] * 60 + parts[2]) / 86400.0;
}

/// 0 for Monday to 6 for Sunday.
int WeekdayOf(const DateParts& parts) {
  // 1 January 1970 was a Thursday.
  const long long day = DaysFromCivil(parts.year, parts.month, parts.day) % 7;
  return static_cast<int>((day + 7 + 3) % 7);
}

/// How many characters from `i` on are the same.
std::size_t RunAt(std::u16string_view pattern, std::size_t i) {
  const std::size_t end = pattern.find_first_not_of(pattern[i], i);
  return (end == pattern.npos ? pattern.size() : end) - i;
}

/// Whether a date pattern has the number of the day, beside which languages inflect the month's name.
bool HasDayNumber(std::u16string_view pattern) {
  bool quoted = false;
  for (std::size_t i = 0; i < pattern.size(); i += RunAt(pattern, i)) {
    const std::size_t run = RunAt(pattern, i);
    if (pattern[i] == u'\'') quoted = quoted != (run % 2 == 1);
    if (!quoted && pattern[i] == u'd' && run <= 2) return true;
  }
  return false;
}

/// A part of a Windows pattern as a number: `run` letters, of which a second one asks for leading zeros.
std::u16string NumberOf(const DateParts& parts, char16_t letter, std::size_t run) {
  const std::size_t width = run > 1 ? 2 : 1;
  switch (letter) {
    case u'y':
      return run > 2 ? Padded(parts.year, 4) : Padded(parts.year % 100, width);
    case u'M':
      return Padded(parts.month, width);
    case u'd':
      return Padded(parts.day, width);
    case u'H':
      return Padded(parts.hour, width);
    case u'h':
      return Padded((parts.hour + 11) % 12 + 1, width);
    case u'm':
      return Padded(parts.minute, width);
    default:
      return Padded(parts.second, width);
  }
}

/// A date by a Windows pattern of which the given letters are parts. Without `names` all parts are numbers.
std::u16string Format(const DateParts& parts, std::u16string_view pattern, std::u16string_view letters,
                      const Locale* names) {
  std::u16string out;
  bool quoted = false;
  std::size_t run = 0;
  for (std::size_t i = 0; i < pattern.size(); i += run) {
    const char16_t c = pattern[i];
    run = RunAt(pattern, i);
    if (c == u'\'') {
      quoted = quoted != (run % 2 == 1);
      out.append(run / 2, u'\'');
    } else if (quoted || letters.find(c) == letters.npos) {
      out.append(run, c);
    } else if (names && c == u't') {
      out +=
          names->NameOf(DateName::HalfOfDay, parts.hour / 12).substr(0, run > 1 ? std::u16string::npos : 1);
    } else if (names && c == u'M' && run > 2) {
      out += names->NameOf(run == 3                ? DateName::ShortMonth
                           : HasDayNumber(pattern) ? DateName::MonthOfDate
                                                   : DateName::Month,
                           parts.month - 1);
    } else if (names && c == u'd' && run > 2) {
      out += names->NameOf(run == 3 ? DateName::ShortWeekday : DateName::Weekday, WeekdayOf(parts));
    } else {
      out += NumberOf(parts, c, run);
    }
  }
  return out;
}

/// The order of day, month and year in a short date pattern, as letters.
std::u16string OrderOf(std::u16string_view pattern) {
  std::u16string order;
  for (const char16_t c : pattern) {
    if (IsPatternLetter(c) && order.find(c) == order.npos) order += c;
  }
  return order.size() == 3 ? order : u"yMd";
}

/// The day of year, month and day as they are written; nothing when there is no such day.
std::optional<double> DayOf(int year, int month, int day) {
  if (month < 1 || month > 12 || day < 1) return std::nullopt;
  const int full_year = FullYear(year);
  if (full_year < 100) return std::nullopt;
  const Date date = DateFromParts(full_year, month, day);
  if (PartsOf(date).day != day) return std::nullopt;
  return date.serial;
}

/// Takes the longest of a kind of names off a text, in any letter case; its number, nothing when none fits.
std::optional<int> TakeName(std::u16string_view& text, const Locale& locale, DateName kind, int count) {
  std::optional<int> number;
  std::size_t length = 0;
  for (int n = 0; n < count; ++n) {
    const std::u16string name = locale.NameOf(kind, n);
    if (name.size() <= length || !EqualIgnoringCase(text.substr(0, name.size()), name)) continue;
    number = n;
    length = name.size();
  }
  text.remove_prefix(length);
  return number;
}

/// Takes a number of so many digits off a text.
std::optional<int> TakeNumber(std::u16string_view& text, std::size_t least, std::size_t most) {
  std::size_t length = 0;
  int number = 0;
  while (length < std::min(text.size(), most) && IsDigit(text[length])) {
    number = number * 10 + (text[length++] - u'0');
  }
  if (length < least) return std::nullopt;
  text.remove_prefix(length);
  return number;
}

/// Takes a character that stands for itself off a text. Of blanks there may be any number, or none.
bool TakeLiteral(std::u16string_view& text, char16_t c) {
  if (c == u' ') {
    text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
    return true;
  }
  if (!EqualIgnoringCase(text.substr(0, 1), std::u16string_view(&c, 1))) return false;
  text.remove_prefix(1);
  return true;
}

/// The day of a text that Format wrote by the pattern; nothing when it is another one, or lacks a part.
std::optional<double> ParseByPattern(std::u16string_view text, std::u16string_view pattern,
                                     const Locale& locale) {
  std::optional<int> year, month, day;
  bool quoted = false;
  std::size_t run = 0;
  for (std::size_t i = 0; i < pattern.size(); i += run) {
    const char16_t c = pattern[i];
    run = RunAt(pattern, i);
    if (c == u'\'') {
      quoted = quoted != (run % 2 == 1);
      for (std::size_t n = 0; n < run / 2; ++n) {
        if (!TakeLiteral(text, c)) return std::nullopt;
      }
    } else if (quoted || !IsPatternLetter(c)) {
      for (std::size_t n = 0; n < run; ++n) {
        if (!TakeLiteral(text, c)) return std::nullopt;
      }
    } else if (c == u'd' && run > 2) {
      if (!TakeName(text, locale, run == 3 ? DateName::ShortWeekday : DateName::Weekday, 7)) {
        return std::nullopt;
      }
    } else if (c == u'M' && run > 2) {
      month = TakeName(text, locale,
                       run == 3                ? DateName::ShortMonth
                       : HasDayNumber(pattern) ? DateName::MonthOfDate
                                               : DateName::Month,
                       12);
      if (!month) return std::nullopt;
      ++*month;
    } else {
      const std::size_t width = c == u'y' && run > 2 ? 4 : 2;
      const auto number = TakeNumber(text, run > 1 ? width : 1, width);
      if (!number) return std::nullopt;
      (c == u'y' ? year : c == u'M' ? month : day) = number;
    }
  }
  if (!text.empty() || !year || !month || !day) return std::nullopt;
  return DayOf(*year, *month, *day);
}

std::optional<double> ParseDay(std::u16string_view text, const Locale& locale) {
  const std::u16string pattern = locale.ShortDatePattern();
  if (const auto day = ParseByPattern(text, pattern, locale)) return day;
  const DateSeparators separators = SeparatorsOf(pattern);
  int numbers[3];
  std::size_t lengths[3];
  std::size_t i = 0;
  for (int n = 0; n < 3; ++n) {
    lengths[n] = ReadDigits(text, i, numbers[n]);
    if (lengths[n] == 0) return std::nullopt;
    const std::size_t separator_start = i;
    // The regional separator first: it may begin with one of the others and go on ("m. ").
    const std::u16string_view regional = n == 0 ? separators.first : separators.second;
    if (n < 2 && text.substr(i).starts_with(regional)) i += regional.size();
    while (i < text.size() && std::u16string_view(u".-/ ").find(text[i]) != std::u16string_view::npos) ++i;
    if (n < 2 && i == separator_start) return std::nullopt;
  }
  if (i != text.size()) return std::nullopt;

  const std::u16string order = lengths[0] == 4 ? u"yMd" : OrderOf(pattern);
  int year = 0, month = 0, day = 0;
  for (std::size_t n = 0; n < 3; ++n) (order[n] == u'y' ? year : order[n] == u'M' ? month : day) = numbers[n];
  return DayOf(year, month, day);
}

}  // namespace

Date DateFromParts(int year, int month, int day) {
  const long long months = static_cast<long long>(FullYear(year)) * 12 + month - 1;
  const long long whole_year = months >= 0 ? months / 12 : (months - 11) / 12;
  const int whole_month = static_cast<int>(months - whole_year * 12) + 1;
  const long long days = DaysFromCivil(whole_year, whole_month, day) + kDaysToUnixEpoch;
  if (days < kFirstDay || days > kLastDay) throw AutomationError(kInvalidProcedureCall);
  return {static_cast<double>(days)};
}

Date AddMonths(Date date, int months) {
  const DateParts parts = PartsOf(date);
  const Date first = DateFromParts(parts.year, parts.month + months, 1);
  return {first.serial + std::min(parts.day, PartsOf(LastOfMonth(first)).day) - 1};
}

Date FirstOfMonth(Date date) {
  const DateParts parts = PartsOf(date);
  return DateFromParts(parts.year, parts.month, 1);
}

Date LastOfMonth(Date date) {
  const DateParts parts = PartsOf(date);
  return DateFromParts(parts.year, parts.month + 1, 0);
}

DateParts PartsOf(Date date) {
  DateParts parts;
  // Before day 0 the fraction counts forward from midnight of the truncated day.
  double day = date.serial < 0 ? std::ceil(date.serial) : std::floor(date.serial);
  long long seconds = std::llround(std::abs(date.serial - day) * 86400);
  if (seconds == 86400 && day == kLastDay) {
    --seconds;  // there is no next day
  } else if (seconds == 86400) {
    seconds = 0;
    day += 1;
  }
  CivilFromDays(static_cast<long long>(day) - kDaysToUnixEpoch, parts);
  parts.hour = static_cast<int>(seconds / 3600);
  parts.minute = static_cast<int>(seconds / 60 % 60);
  parts.second = static_cast<int>(seconds % 60);
  return parts;
}

DateSeparators SeparatorsOf(std::u16string_view pattern) {
  std::array<std::u16string, 2> separators;
  std::size_t part = 0;  // number of date parts seen
  char16_t last = 0;
  bool quoted = false;
  for (const char16_t c : pattern) {
    if (c == u'\'') {
      quoted = !quoted;
    } else if (!quoted && IsPatternLetter(c)) {
      if (c != last) ++part;
      last = c;
    } else if (part == 1 || part == 2) {
      separators[part - 1] += c;
      last = 0;
    }
  }
  if (part < 3) separators[1].clear();
  return {separators[0], separators[1]};
}

std::u16string FormatDate(Date date, std::u16string_view pattern, const Locale& locale) {
  const DateParts parts = PartsOf(date);
  const DateSeparators separators = SeparatorsOf(locale.ShortDatePattern());
  std::u16string out;
  int slashes = 0;
  for (std::size_t i = 0; i < pattern.size();) {
    const char16_t c = pattern[i];
    std::size_t run = 1;
    while (i + run < pattern.size() && pattern[i + run] == c) ++run;
    if (c == u'y') {
      out += run > 2 ? Padded(parts.year, 4) : Padded(parts.year % 100, 2);
    } else if (c == u'm' || c == u'd') {
      out += Padded(c == u'm' ? parts.month : parts.day, run > 1 ? 2 : 1);
    } else if (c == u'/') {
      for (std::size_t n = 0; n < run; ++n) out += slashes++ == 0 ? separators.first : separators.second;
    } else {
      out.append(run, c);
    }
    i += run;
  }
  return out;
}

std::u16string FormatByWindowsPattern(Date date, std::u16string_view pattern) {
  return Format(PartsOf(date), pattern, u"yMdHhms", nullptr);
}

std::u16string ShortDateText(Date date, const Locale& locale) {
  return Format(PartsOf(date), locale.ShortDatePattern(), u"yMd", &locale);
}

std::u16string LongTimeText(Date date, const Locale& locale) {
  return Format(PartsOf(date), locale.LongTimePattern(), u"Hhmst", &locale);
}

std::optional<Date> ParseDate(std::u16string_view text, const Locale& locale) {
  text = Trim(text);
  if (text.empty()) return std::nullopt;
  if (const auto time = ParseTime(text, locale)) return Date{*time};
  if (const auto day = ParseDay(text, locale)) return Date{*day};
  // A date and a time, parted by the blank before the time's first colon.
  const std::size_t colon = text.find(u':');
  if (colon == text.npos || colon == 0) return std::nullopt;
  const std::size_t blank = text.rfind(u' ', colon);
  if (blank == text.npos) return std::nullopt;
  const auto day = ParseDay(Trim(text.substr(0, blank)), locale);
  const auto time = ParseTime(text.substr(blank + 1), locale);
  if (!day || !time) return std::nullopt;
  return Date{*day < 0 ? *day - *time : *day + *time};
}

}  // namespace qva
