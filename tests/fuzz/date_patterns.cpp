// Dates by the user's patterns, whatever these are: what was written is read as the same.
#include <cmath>

#include "platform/date.h"
#include "platform/memory/MemoryPlatform.h"
#include "tests/fuzz/fuzz.h"

namespace qva {
namespace {

constexpr double kFirstDay = -657434;
constexpr double kLastDay = 2958465;

bool IsDate(Date date) {
  return date.serial > kFirstDay - 1 && date.serial < kLastDay + 1;
}

bool IsSameMoment(Date one, Date other) {
  const DateParts a = PartsOf(one);
  const DateParts b = PartsOf(other);
  return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
         a.minute == b.minute && a.second == b.second;
}

/// A pattern with year, month and day in any order, as regional settings have them.
std::u16string PatternFrom(FuzzInput& input) {
  using Text = std::u16string_view;
  const Text year = input.PickValueInArray<Text>({u"yyyy", u"yy"});
  const Text month = input.PickValueInArray<Text>({u"M", u"MM", u"MMM", u"MMMM"});
  const Text day = input.PickValueInArray<Text>({u"d", u"dd"});
  const auto separator = [&] {
    return std::u16string(input.PickValueInArray<Text>(
        {u".", u"-", u"/", u" ", u". ", u" m. ", u", ", u"' de '", u"'d'", u"''"}));
  };
  const Text orders[][3] = {{year, month, day}, {day, month, year}, {month, day, year}};
  const auto& order = orders[input.ConsumeIntegralInRange(0, 2)];
  std::u16string pattern;
  if (input.ConsumeBool()) {
    pattern.append(input.ConsumeBool() ? u"dddd" : u"ddd").append(u", ");
  }
  pattern.append(order[0]) += separator();
  pattern.append(order[1]) += separator();
  return pattern.append(order[2]).append(input.ConsumeBool() ? u"." : u"");
}

void CheckText(std::u16string_view text, const Locale& locale) {
  if (const auto date = ParseDate(text, locale)) {
    Require(IsDate(*date), "a date lies between the years 100 and 9999");
    Require(text.back() != u':', "a time has an end");
  }
}

void CheckRoundTrip(FuzzInput& input, MemoryLocale& locale) {
  locale.short_date_pattern = PatternFrom(input);
  locale.long_time_pattern =
      input.PickValueInArray<std::u16string_view>({u"HH:mm:ss", u"H:mm:ss", u"h:mm:ss tt", u"hh:mm:ss tt"});
  const double day = input.ConsumeIntegralInRange<int>(kFirstDay, kLastDay);
  const double time = input.ConsumeIntegralInRange<int>(0, 86399) / 86400.0;
  const Date date{day < 0 ? day - time : day + time};
  const int year = PartsOf(date).year;
  const bool is_whole_year = locale.short_date_pattern.find(u"yyy") != std::u16string::npos;
  if (!is_whole_year && (year < 1930 || year > 2029)) return;
  const std::u16string text = Value(date).ToText();
  Require(IsSameMoment(Value(text).ToDate(), date), "a date is read as it was written");
  CheckText(text + TextFrom(input, 1), locale);
}

void CheckAnyPattern(FuzzInput& input, MemoryLocale& locale) {
  const std::u16string pattern = TextFrom(input, 20);
  locale.short_date_pattern = pattern;
  const std::u16string text = TextFrom(input, 30);
  CheckText(text, locale);
  const Date date{static_cast<double>(input.ConsumeIntegralInRange<int>(kFirstDay, kLastDay))};
  SeparatorsOf(pattern);
  ShortDateText(date, locale);
  FormatDate(date, pattern, locale);
  if (pattern.find_first_of(u"yMdHhms'") == pattern.npos) {
    Require(FormatByWindowsPattern(date, pattern) == pattern, "other characters stand for themselves");
  }
  std::u16string quoted = u"'" + ReplaceAll(pattern, u"'", u"''") + u"'";
  // Quotation marks beside the enclosing ones count with them.
  if (!pattern.starts_with(u'\'') && !pattern.ends_with(u'\'') && !pattern.empty()) {
    Require(FormatByWindowsPattern(date, quoted) == pattern, "what is quoted stands for itself");
  }
}

void CheckParts(FuzzInput& input) {
  const auto year = input.ConsumeIntegral<int>();
  const auto month = input.ConsumeIntegral<int>();
  const auto day = input.ConsumeIntegral<int>();
  Date date;
  const std::int32_t error = RaisedBy([&] { date = DateFromParts(year, month, day); });
  Require(error == 0 || error == kInvalidProcedureCall, "errors are 5");
  Require(IsDate(date), "a date lies between the years 100 and 9999");
  const int whole_year = input.ConsumeIntegralInRange(100, 9999);
  const int whole_month = input.ConsumeIntegralInRange(1, 12);
  const int whole_day = input.ConsumeIntegralInRange(1, 28);
  const DateParts parts = PartsOf(DateFromParts(whole_year, whole_month, whole_day));
  Require(parts.year == whole_year && parts.month == whole_month && parts.day == whole_day,
          "parts make their date");
}

}  // namespace
}  // namespace qva

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  static MemoryPlatform platform;
  InstallServices(platform.services());
  FuzzInput input(data, size);
  CheckRoundTrip(input, platform.locale);
  CheckParts(input);
  CheckAnyPattern(input, platform.locale);
  return 0;
}
