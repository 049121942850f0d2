#include "platform/date.h"

#include <limits>
#include <tuple>

#include "platform/error.h"
#include "tests/platform/core_test.h"

namespace qva {
namespace {

class DateTest : public CoreTest {
 protected:
  static std::string Iso(Date date) { return ToUtf8(FormatByWindowsPattern(date, u"yyyy-MM-dd HH:mm:ss")); }

  /// Separators of a pattern as "first|second".
  static std::string Separators(std::u16string_view pattern) {
    const DateSeparators separators = SeparatorsOf(pattern);
    return ToUtf8(separators.first + u"|" + separators.second);
  }

  /// What the text means under the short date pattern, or "none".
  std::string Parsed(std::u16string_view text, std::u16string_view pattern = u"yyyy-MM-dd") {
    platform.locale.short_date_pattern = pattern;
    const auto date = ParseDate(text, platform.locale);
    return date ? Iso(*date) : "none";
  }
};

TEST_F(DateTest, CountsDaysFrom30December1899) {
  EXPECT_EQ(DateFromParts(1899, 12, 30).serial, 0);
  EXPECT_EQ(DateFromParts(1899, 12, 29).serial, -1);
  EXPECT_EQ(DateFromParts(1900, 1, 1).serial, 2);
  EXPECT_EQ(DateFromParts(1900, 3, 1).serial, 61);
  EXPECT_EQ(DateFromParts(2000, 2, 29).serial, 36585);
  EXPECT_EQ(DateFromParts(2024, 6, 12).serial, 45455);
}

TEST_F(DateTest, CarriesMonthsAndDays) {
  EXPECT_EQ(DateFromParts(2024, 3, 0), DateFromParts(2024, 2, 29));
  EXPECT_EQ(DateFromParts(2023, 3, 0), DateFromParts(2023, 2, 28));
  EXPECT_EQ(DateFromParts(1900, 3, 0), DateFromParts(1900, 2, 28));
  EXPECT_EQ(DateFromParts(2024, 13, 1), DateFromParts(2025, 1, 1));
  EXPECT_EQ(DateFromParts(2024, 13, 0), DateFromParts(2024, 12, 31));
  EXPECT_EQ(DateFromParts(2024, 0, 1), DateFromParts(2023, 12, 1));
  EXPECT_EQ(DateFromParts(2024, -11, 1), DateFromParts(2023, 1, 1));
  EXPECT_EQ(DateFromParts(2024, -12, 1), DateFromParts(2022, 12, 1));
  EXPECT_EQ(DateFromParts(2024, 25, 32), DateFromParts(2026, 2, 1));
  EXPECT_EQ(DateFromParts(2024, 1, 366), DateFromParts(2024, 12, 31));
  EXPECT_EQ(DateFromParts(2024, 1, -30), DateFromParts(2023, 12, 1));
}

TEST_F(DateTest, TwoDigitYearsReachFrom1930To2029) {
  EXPECT_EQ(PartsOf(DateFromParts(0, 1, 1)).year, 2000);
  EXPECT_EQ(PartsOf(DateFromParts(29, 12, 31)).year, 2029);
  EXPECT_EQ(PartsOf(DateFromParts(30, 1, 1)).year, 1930);
  EXPECT_EQ(PartsOf(DateFromParts(99, 12, 31)).year, 1999);
  // The year is completed before the month carries.
  EXPECT_EQ(PartsOf(DateFromParts(99, 13, 1)).year, 2000);
  EXPECT_EQ(PartsOf(DateFromParts(100, 1, 1)).year, 100);
}

TEST_F(DateTest, YearsBeyond100To9999Raise5) {
  EXPECT_EQ(DateFromParts(100, 1, 1).serial, -657434);
  EXPECT_EQ(DateFromParts(9999, 12, 31).serial, 2958465);
  EXPECT_EQ(RaisedBy([] { DateFromParts(100, 1, 0); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([] { DateFromParts(9999, 12, 32); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([] { DateFromParts(10000, 1, 1); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([] { DateFromParts(-1, 1, 1); }), kInvalidProcedureCall);
  const int most = std::numeric_limits<int>::max();
  const int least = std::numeric_limits<int>::min();
  EXPECT_EQ(RaisedBy([=] { DateFromParts(most, most, most); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([=] { DateFromParts(least, least, least); }), kInvalidProcedureCall);
}

TEST_F(DateTest, MovesADayThatTheMonthLacksToItsLastOne) {
  EXPECT_EQ(AddMonths(DateFromParts(2024, 3, 31), -1), DateFromParts(2024, 2, 29));
  EXPECT_EQ(AddMonths(DateFromParts(2023, 12, 31), 2), DateFromParts(2024, 2, 29));
  EXPECT_EQ(AddMonths(DateFromParts(2024, 1, 15), -13), DateFromParts(2022, 12, 15));
}

TEST_F(DateTest, KnowsTheEndsOfTheMonth) {
  EXPECT_EQ(FirstOfMonth(DateFromParts(2024, 2, 17)), DateFromParts(2024, 2, 1));
  EXPECT_EQ(LastOfMonth(DateFromParts(2024, 2, 17)), DateFromParts(2024, 2, 29));
  EXPECT_EQ(LastOfMonth(DateFromParts(9999, 12, 1)), DateFromParts(9999, 12, 31));
}

TEST_F(DateTest, PartsComeBackForEveryDay) {
  int year = 100, month = 1, day = 1;
  for (int serial = -657434; serial <= 2958465; serial += 37) {
    const DateParts parts = PartsOf(Date{static_cast<double>(serial)});
    const Date again = DateFromParts(parts.year, parts.month, parts.day);
    ASSERT_EQ(again.serial, serial);
    ASSERT_GE(std::tie(parts.year, parts.month, parts.day), std::tie(year, month, day));
    std::tie(year, month, day) = std::tie(parts.year, parts.month, parts.day);
  }
}

TEST_F(DateTest, TimeCountsForwardFromMidnightAlsoBefore1899) {
  EXPECT_EQ(Iso(Date{1.25}), "1899-12-31 06:00:00");
  EXPECT_EQ(Iso(Date{0.25}), "1899-12-30 06:00:00");
  EXPECT_EQ(Iso(Date{-0.25}), "1899-12-30 06:00:00");
  EXPECT_EQ(Iso(Date{-1.25}), "1899-12-29 06:00:00");
  EXPECT_EQ(Iso(Date{-1.75}), "1899-12-29 18:00:00");
}

TEST_F(DateTest, TimesRoundToTheSecondAndMayReachTheNextDay) {
  const double second = 1.0 / 86400;
  EXPECT_EQ(Iso(Date{45455 + 0.4 * second}), "2024-06-12 00:00:00");
  EXPECT_EQ(Iso(Date{45455 + 0.6 * second}), "2024-06-12 00:00:01");
  EXPECT_EQ(Iso(Date{45456 - 0.6 * second}), "2024-06-12 23:59:59");
  EXPECT_EQ(Iso(Date{45456 - 0.4 * second}), "2024-06-13 00:00:00");
  EXPECT_EQ(Iso(Date{-2 + 0.4 * second}), "1899-12-30 00:00:00");
}

TEST_F(DateTest, NoTimeReachesBeyondTheLastDay) {
  EXPECT_EQ(Iso(Date{DateFromParts(9999, 12, 31).serial + 0.999999}), "9999-12-31 23:59:59");
}

TEST_F(DateTest, SeparatorsAreThoseBetweenThePartsOfThePattern) {
  EXPECT_EQ(Separators(u"yyyy-MM-dd"), "-|-");
  EXPECT_EQ(Separators(u"yyyy. MM. dd."), ". |. ");
  EXPECT_EQ(Separators(u"d/M/yyyy"), "/|/");
  EXPECT_EQ(Separators(u"dd.MM.yy"), ".|.");
  EXPECT_EQ(Separators(u"d. MMMM/yyyy"), ". |/");
  EXPECT_EQ(Separators(u"yyyy 'm.' MM 'mėn.' dd"), " m. | mėn. ");
  EXPECT_EQ(Separators(u"ddMMyyyy"), "|");
  EXPECT_EQ(Separators(u"MM/yyyy"), "/|");
  EXPECT_EQ(Separators(u""), "|");
}

TEST_F(DateTest, FormatsByBasicsPattern) {
  const Date date = DateFromParts(2024, 6, 5);
  EXPECT_EQ(FormatDate(date, u"yyyy/mm/dd", platform.locale), u"2024-06-05");
  EXPECT_EQ(FormatDate(date, u"yy.m.d", platform.locale), u"24.6.5");
  EXPECT_EQ(FormatDate(date, u"yyyymmdd", platform.locale), u"20240605");
  EXPECT_EQ(FormatDate(date, u"(yyyy)", platform.locale), u"(2024)");
  EXPECT_EQ(FormatDate(DateFromParts(2005, 11, 25), u"yy/m/d", platform.locale), u"05-11-25");
}

TEST_F(DateTest, SlashesBecomeTheFirstAndThenTheSecondSeparator) {
  const Date date = DateFromParts(2010, 11, 12);
  platform.locale.short_date_pattern = u"d. MMMM/yyyy";
  EXPECT_EQ(FormatDate(date, u"yyyy/mm/dd", platform.locale), u"2010. 11/12");
  platform.locale.short_date_pattern = u"yyyy. MM. dd.";
  EXPECT_EQ(FormatDate(date, u"yyyy/mm/dd", platform.locale), u"2010. 11. 12");
}

TEST_F(DateTest, FormatsByWindowsPattern) {
  const Date date{DateFromParts(2024, 6, 5).serial + (14 * 3600 + 7 * 60 + 9) / 86400.0};
  const std::pair<const char16_t*, const char*> formats[] = {
      {u"yyyy-MM-dd HH:mm:ss", "2024-06-05 14:07:09"},
      {u"d.M.yy", "5.6.24"},
      {u"H:m:s", "14:7:9"},
      {u"h:m", "2:7"},
      {u"hh tt", "02 tt"},
      {u"yyyy 'm.' MM 'mėn.' dd 'd.'", "2024 m. 06 mėn. 05 d."},
      {u"d''M", "5'6"},
      {u"'d'", "d"},
      {u"'o''clock'", "o'clock"},
      {u"y", "24"},
  };
  for (const auto& [pattern, text] : formats) {
    EXPECT_EQ(ToUtf8(FormatByWindowsPattern(date, pattern)), text) << ToUtf8(pattern);
  }
  EXPECT_EQ(FormatByWindowsPattern(DateFromParts(2005, 1, 1), u"y yy yyy"), u"5 05 2005");
  EXPECT_EQ(FormatByWindowsPattern(DateFromParts(100, 1, 1), u"yyyy"), u"0100");
}

TEST_F(DateTest, ShortDatesHaveTheUsersNames) {
  const Date friday = DateFromParts(2010, 11, 12);
  const std::pair<const char16_t*, const char*> formats[] = {
      {u"yyyy.MM.dd", "2010.11.12"},
      {u"d MMM yy", "12 lapkr. 10"},
      {u"yyyy 'm.' MMMM d 'd.'", "2010 m. lapkričio 12 d."},
      {u"MMMM yyyy", "lapkritis 2010"},
      {u"dddd, MMMM", "penktadienis, lapkritis"},
      {u"'d' MMMM", "d lapkritis"},
      {u"ddd d/M/y", "pn 12/11/10"},
      {u"yyyy-MM-dd h:m:s tt", "2010-11-12 h:m:s tt"},
  };
  for (const auto& [pattern, text] : formats) {
    platform.locale.short_date_pattern = pattern;
    EXPECT_EQ(ToUtf8(ShortDateText(friday, platform.locale)), text) << ToUtf8(pattern);
  }
}

TEST_F(DateTest, WeekdaysAreRightBeforeAndAfter1970) {
  platform.locale.short_date_pattern = u"dddd";
  EXPECT_EQ(ShortDateText(DateFromParts(1970, 1, 1), platform.locale), u"ketvirtadienis");
  EXPECT_EQ(ShortDateText(DateFromParts(1899, 12, 31), platform.locale), u"sekmadienis");
  EXPECT_EQ(ShortDateText(DateFromParts(2024, 6, 17), platform.locale), u"pirmadienis");
  EXPECT_EQ(ShortDateText(Date{DateFromParts(2024, 6, 16).serial + 0.9999999}, platform.locale),
            u"pirmadienis")
      << "rounded to midnight";
}

TEST_F(DateTest, LongTimesHaveTheUsersHalvesOfTheDay) {
  const std::pair<const char16_t*, const char*> formats[] = {
      {u"HH:mm:ss", "14:05:09"},     {u"H.m.s", "14.5.9"}, {u"h:mm:ss tt", "2:05:09 popiet"},
      {u"hh 'val.' t", "02 val. p"}, {u"tth", "popiet2"},  {u"d.M.y HH", "d.M.y 14"},
  };
  const Date afternoon{(14 * 3600 + 5 * 60 + 9) / 86400.0};
  for (const auto& [pattern, text] : formats) {
    platform.locale.long_time_pattern = pattern;
    EXPECT_EQ(ToUtf8(LongTimeText(afternoon, platform.locale)), text) << ToUtf8(pattern);
  }
  platform.locale.am = u"AM";
  platform.locale.pm = u"";
  platform.locale.long_time_pattern = u"h tt";
  EXPECT_EQ(LongTimeText(Date{0}, platform.locale), u"12 AM");
  EXPECT_EQ(LongTimeText(Date{0.5}, platform.locale), u"12 ");
  platform.locale.long_time_pattern = u"ht";
  EXPECT_EQ(LongTimeText(Date{0.25}, platform.locale), u"6A");
  EXPECT_EQ(LongTimeText(Date{0.75}, platform.locale), u"6");
}

TEST_F(DateTest, ReadsDatesWithEverySeparator) {
  for (const char16_t* text : {u"2024-06-12", u"2024.06.12", u"2024/6/12", u"2024 06 12", u" 2024-06-12 ",
                               u"2024. 06. 12.", u"2024. 6/12"}) {
    EXPECT_EQ(Parsed(text), "2024-06-12 00:00:00") << ToUtf8(text);
  }
  EXPECT_EQ(Parsed(u"2024 m. 06 mėn. 12", u"yyyy 'm.' MM 'mėn.' dd"), "2024-06-12 00:00:00");
  EXPECT_EQ(Parsed(u"2024_06_12"), "none");
  EXPECT_EQ(Parsed(u"2024_06_12", u"yyyy_MM_dd"), "2024-06-12 00:00:00");
}

TEST_F(DateTest, ReadsWhatTheShortDateWrites) {
  for (const char16_t* pattern :
       {u"yyyy-MM-dd", u"yyyy 'm.' MMMM d 'd.'", u"yyyy 'm.' MMM d 'd.'", u"d. MMMM/yyyy",
        u"dd'd'MM'M'yyyy'y'", u"'dMy' dd/MM/yyyy", u"dddd, d MMMM yyyy", u"ddd d.M.yy", u"MMMM d, yyyy",
        u"ddMMyyyy", u"yyyyMMdd", u"d''M''yyyy", u"' 'yyyy. MM. dd.' '", u"dd-MMM-yy", u"yyyy'年'M'月'd'日'",
        u"M/d/y"}) {
    platform.locale.short_date_pattern = pattern;
    for (int day = 0; day < 366; day += 5) {
      const Date date = DateFromParts(2009, 1, 1 + day);
      const std::u16string text = ShortDateText(date, platform.locale);
      EXPECT_EQ(Parsed(text, pattern), Iso(date)) << ToUtf8(pattern);
      EXPECT_EQ(Parsed(ToLower(text) + u" 14:05", pattern).substr(10), " 14:05:00") << ToUtf8(text);
    }
  }
  EXPECT_EQ(Parsed(u"2010 m. lapkričio 31 d.", u"yyyy 'm.' MMMM d 'd.'"), "none") << "no such day";
  EXPECT_EQ(Parsed(u"2010 m. lapkričio", u"yyyy 'm.' MMMM"), "none") << "no day at all";
}

TEST_F(DateTest, OrderOfThePartsIsTheRegionalOneUnlessTheYearLeads) {
  EXPECT_EQ(Parsed(u"12.6.2024", u"dd.MM.yyyy"), "2024-06-12 00:00:00");
  EXPECT_EQ(Parsed(u"6/12/2024", u"M/d/yyyy"), "2024-06-12 00:00:00");
  EXPECT_EQ(Parsed(u"24-06-12", u"yyyy-MM-dd"), "2024-06-12 00:00:00");
  EXPECT_EQ(Parsed(u"12.06.99", u"dd.MM.yyyy"), "1999-06-12 00:00:00");
  EXPECT_EQ(Parsed(u"2024.06.12", u"dd.MM.yyyy"), "2024-06-12 00:00:00");
}

TEST_F(DateTest, ReadsTimesAloneAndBehindADate) {
  EXPECT_EQ(Parsed(u"14:05"), "1899-12-30 14:05:00");
  EXPECT_EQ(Parsed(u"14:05:09"), "1899-12-30 14:05:09");
  EXPECT_EQ(Parsed(u"2:05 PM"), "1899-12-30 14:05:00");
  EXPECT_EQ(Parsed(u"12:00 am"), "1899-12-30 00:00:00");
  EXPECT_EQ(Parsed(u"12 pm"), "1899-12-30 12:00:00");
  EXPECT_EQ(Parsed(u"2024-06-12 14:05"), "2024-06-12 14:05:00");
  EXPECT_EQ(Parsed(u"2024-06-12 2:05:09 PM"), "2024-06-12 14:05:09");
  EXPECT_EQ(Parsed(u"2024-06-12 2:05:09 popiet"), "2024-06-12 14:05:09");
  EXPECT_EQ(Parsed(u"12:05 Priešpiet"), "1899-12-30 00:05:00");
  EXPECT_EQ(Parsed(u"1850-06-12 06:00"), "1850-06-12 06:00:00");
}

TEST_F(DateTest, WhatIsNoDateIsNone) {
  for (const char16_t* text : {u"",
                               u" ",
                               u"abc",
                               u"2024",
                               u"2024-06",
                               u"2024-13-01",
                               u"2024-00-01",
                               u"2024-06-31",
                               u"2023-02-29",
                               u"2024-06-00",
                               u"2024-06-12x",
                               u"20240612",
                               u"12345-06-12",
                               u"24:00",
                               u"12:60",
                               u"12:00:60",
                               u"13:00 PM",
                               u"0:30 AM",
                               u"14:",
                               u":05",
                               u"14",
                               u"2024-06-12 25:00",
                               u"x 14:05",
                               u"2024-06-12T14:05",
                               u"14:05:09:",
                               u"2:05:09:PM"}) {
    EXPECT_EQ(Parsed(text), "none") << ToUtf8(text);
  }
}

}  // namespace
}  // namespace qva
