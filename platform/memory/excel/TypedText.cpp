#include "platform/memory/excel/TypedText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "platform/clock.h"
#include "platform/date.h"
#include "platform/memory/excel/NumberFormats.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::u16string_view kDigits = u"0123456789";
constexpr std::array<std::u16string_view, 12> kMonths = {u"jan", u"feb", u"mar", u"apr", u"may", u"jun",
                                                         u"jul", u"aug", u"sep", u"oct", u"nov", u"dec"};

/// A whole number of up to four digits, which is all of the text.
std::optional<int> WholeNumber(std::u16string_view text) {
  if (text.empty() || text.size() > 4 || text.find_first_not_of(kDigits) != text.npos) return std::nullopt;
  int number = 0;
  for (const char16_t c : text) number = number * 10 + (c - u'0');
  return number;
}

/// The parts between the separators.
std::vector<std::u16string_view> Split(std::u16string_view text, char16_t separator) {
  std::vector<std::u16string_view> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == text.npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<double> DayOf(int year, int month, int day) {
  if (year < 1900 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const Date date = DateFromParts(year, month, day);
  if (PartsOf(date).day != day) return std::nullopt;  // 30 February and its like are no dates
  return date.serial;
}

/// The year as it is written, which may be with two digits; 0 where it is none.
int YearOf(std::u16string_view text) {
  const auto year = WholeNumber(text);
  if (!year || (text.size() != 2 && text.size() != 4)) return 0;
  return text.size() == 4 ? *year : PartsOf(DateFromParts(*year, 1, 1)).year;
}

int ThisYear() {
  return PartsOf(GetServices().clock->Now()).year;
}

std::optional<TypedNumber> ReadDate(std::u16string_view text) {
  const char16_t separator = text.find(u'/') != text.npos ? u'/' : u'-';
  const auto parts = Split(text, separator);
  if (parts.size() != 2 && parts.size() != 3) return std::nullopt;
  const auto dated = [](const std::optional<double>& day, std::u16string_view format) {
    return day ? std::optional(TypedNumber{*day, std::u16string(format)}) : std::nullopt;
  };
  const auto named = std::ranges::find(kMonths, ToLower(parts[1]));
  if (named != kMonths.end() && separator == u'-') {
    const int month = static_cast<int>(named - kMonths.begin()) + 1;
    const int day = WholeNumber(parts[0]).value_or(0);
    if (parts.size() == 2) return dated(DayOf(ThisYear(), month, day), u"d-mmm");
    return dated(DayOf(YearOf(parts[2]), month, day), u"d-mmm-yy");
  }
  std::array<int, 3> numbers = {};
  for (std::size_t i = 0; i < parts.size(); ++i) numbers[i] = WholeNumber(parts[i]).value_or(0);
  if (parts.size() == 2) return dated(DayOf(ThisYear(), numbers[0], numbers[1]), u"d-mmm");
  if (parts[0].size() == 4) return dated(DayOf(numbers[0], numbers[1], numbers[2]), u"m/d/yyyy");
  return dated(DayOf(YearOf(parts[2]), numbers[0], numbers[1]), u"m/d/yyyy");
}

std::optional<TypedNumber> ReadTime(std::u16string_view text) {
  std::u16string format = u"h:mm";
  std::optional<bool> is_afternoon;
  if (const std::size_t blank = text.find(u' '); blank != text.npos) {
    const std::u16string half = ToLower(text.substr(blank + 1));
    if (half != u"a" && half != u"p" && half != u"am" && half != u"pm") return std::nullopt;
    is_afternoon = half.front() == u'p';
    text = text.substr(0, blank);
  }
  const auto parts = Split(text, u':');
  if (parts.size() != 2 && parts.size() != 3) return std::nullopt;
  std::array<int, 3> numbers = {};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto number = WholeNumber(parts[i]);
    if (!number || (i > 0 && *number > 59)) return std::nullopt;
    numbers[i] = *number;
  }
  if (parts.size() == 3) format += u":ss";
  if (is_afternoon) {
    if (numbers[0] > 12) return std::nullopt;
    numbers[0] = numbers[0] % 12 + (*is_afternoon ? 12 : 0);
    format += u" AM/PM";
  } else if (numbers[0] >= 24) {
    format = u"[h]:mm:ss";
  }
  return TypedNumber{(numbers[0] * 3600.0 + numbers[1] * 60 + numbers[2]) / 86400, format};
}

std::optional<TypedNumber> ReadDateAndTime(std::u16string_view text) {
  const std::size_t blank = text.find(u' ');
  if (blank == text.npos) return std::nullopt;
  const auto date = ReadDate(text.substr(0, blank));
  const auto time = ReadTime(text.substr(blank + 1));
  if (!date || !time || time->number >= 1) return std::nullopt;
  return TypedNumber{date->number + time->number, u"m/d/yyyy h:mm"};
}

/// "0 1/2", which without the 0 would be a date.
std::optional<TypedNumber> ReadFraction(std::u16string_view text) {
  const std::size_t blank = text.find(u' ');
  const std::size_t stroke = text.find(u'/');
  if (blank == text.npos || stroke == text.npos || stroke < blank) return std::nullopt;
  const auto whole = WholeNumber(text.substr(0, blank));
  const auto above = WholeNumber(text.substr(blank + 1, stroke - blank - 1));
  const auto below = WholeNumber(text.substr(stroke + 1));
  if (!whole || !above || below.value_or(0) == 0) return std::nullopt;
  return TypedNumber{*whole + static_cast<double>(*above) / *below, *below < 10 ? u"# ?/?" : u"# ?\?/?\?"};
}

std::optional<TypedNumber> ReadNumber(std::u16string_view text) {
  const bool has_decimals = text.find(u'.') != text.npos;
  const bool is_exponential = text.find_first_of(u"eE") != text.npos;
  double sign = 1;
  if (text.starts_with(u'(') && text.ends_with(u')')) {
    text = text.substr(1, text.size() - 2);
    if (text.starts_with(u'-') || text.starts_with(u'+')) return std::nullopt;
    sign = -1;
  }
  std::u16string plain(text);
  const std::size_t currency = plain.find(u'$');
  const bool is_amount = currency == 0 || (currency == 1 && (plain[0] == u'-' || plain[0] == u'+'));
  if (is_amount) plain.erase(currency, 1);
  const auto number = ParseExcelNumber(plain);
  if (!number) return std::nullopt;
  const auto format = [&]() -> std::u16string_view {
    if (is_amount) return has_decimals ? u"$#,##0.00_);[Red]($#,##0.00)" : u"$#,##0_);[Red]($#,##0)";
    if (plain.ends_with(u'%')) return has_decimals ? u"0.00%" : u"0%";
    if (is_exponential) return u"0.00E+00";
    if (plain.find(u',') != plain.npos) return has_decimals ? u"#,##0.00" : u"#,##0";
    return kGeneralFormat;
  }();
  return TypedNumber{sign * *number, std::u16string(format)};
}

}  // namespace

std::optional<TypedNumber> ReadTypedText(std::u16string_view text) {
  text = Trim(text);
  for (const auto read : {ReadNumber, ReadFraction, ReadDate, ReadTime, ReadDateAndTime}) {
    if (auto typed = read(text)) return typed;
  }
  return std::nullopt;
}

std::optional<double> ParseExcelNumber(std::u16string_view text) {
  text = Trim(text);
  bool is_negative = false;
  if (!text.empty() && (text[0] == u'+' || text[0] == u'-')) {
    is_negative = text[0] == u'-';
    text.remove_prefix(1);
  }
  double scale = is_negative ? -1 : 1;
  if (text.ends_with(u'%')) {
    scale /= 100;
    text.remove_suffix(1);
  }
  // A comma stands before each group of three digits of the whole part, or nowhere.
  std::string plain;
  const std::size_t whole_end = std::min(text.find_first_of(u".eE"), text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u',' && i > 0 && i < whole_end && (whole_end - i) % 4 == 0) continue;
    const bool after_e = i > 0 && (text[i - 1] == u'e' || text[i - 1] == u'E');
    const bool belongs = IsDigit(text[i]) || text[i] == u'.' || text[i] == u'e' || text[i] == u'E' ||
                         (after_e && (text[i] == u'-' || text[i] == u'+'));
    if (!belongs) return std::nullopt;
    if (text[i] == u'+') continue;  // of an exponent; the parser below knows no plus sign
    plain += static_cast<char>(text[i]);
  }
  double number = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (error != std::errc() || end != plain.data() + plain.size()) return std::nullopt;
  return number * scale;
}

}  // namespace qva::memory
