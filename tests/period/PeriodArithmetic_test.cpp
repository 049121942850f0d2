#include "period/PeriodArithmetic.h"

#include <chrono>

#include "platform/date.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

using std::chrono::days;
using std::chrono::month;
using std::chrono::months;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month;

/// The C++ library's own calendar as automation dates.
Date FirstDay(year_month ym) {
  const auto epoch = sys_days(year(1899) / 12 / 30);
  return {static_cast<double>((sys_days(ym / 1) - epoch) / days(1))};
}
Date LastDay(year_month ym) {
  return {FirstDay(ym + months(1)).serial - 1};
}

struct Expected {
  year_month begin;
  int length;  // in months
};

Expected ExpectedPeriod(PeriodKind kind, int y, int q, int m) {
  switch (kind) {
    case PeriodKind::Year:
      return {year(y) / 1, 12};
    case PeriodKind::Quarter:
      return {year(y) / month(static_cast<unsigned>(3 * q - 2)), 3};
    case PeriodKind::Month:
      return {year(y) / month(static_cast<unsigned>(m)), 1};
    case PeriodKind::FirstHalfYear:
      return {year(y) / 1, 6};
    default:
      return {year(y) / 7, 6};
  }
}

TEST(PeriodArithmetic, AgreesWithTheCalendarForEveryKindAndMonthOf1996To2040) {
  int checked = 0;
  for (int y = 1996; y <= 2040; ++y) {
    for (int m = 1; m <= 12; ++m) {
      const int q = (m - 1) / 3 + 1;
      for (int kind = 1; kind <= 5; ++kind) {
        SCOPED_TRACE(testing::Message() << "kind " << kind << ", " << y << "-" << m);
        const CurrentPeriod period = CurrentPeriodOf(PeriodKind{kind}, y, q, m);
        const Expected expected = ExpectedPeriod(PeriodKind{kind}, y, q, m);
        EXPECT_EQ(period.begin, FirstDay(expected.begin));
        EXPECT_EQ(period.end, LastDay(expected.begin + months(expected.length - 1)));
        EXPECT_EQ(period.months_back, -expected.length);
        EXPECT_EQ(PreviousBegin(Date{period.begin.serial - 1}, period.months_back),
                  FirstDay(expected.begin - months(expected.length)));
        ++checked;
      }
    }
  }
  EXPECT_EQ(checked, 45 * 12 * 5);
}

TEST(PeriodArithmetic, CarriesQuartersAndMonthsBeyondTheYear) {
  EXPECT_EQ(CurrentPeriodOf(PeriodKind::Quarter, 2024, 5, 1).begin, DateFromParts(2025, 1, 1));
  EXPECT_EQ(CurrentPeriodOf(PeriodKind::Month, 2024, 1, 0).end, DateFromParts(2023, 12, 31));
}

TEST(PeriodArithmetic, ReadsTwoDigitYearsAsThePlatformDoes) {
  EXPECT_EQ(CurrentPeriodOf(PeriodKind::Year, 29, 1, 1).begin, DateFromParts(2029, 1, 1));
  EXPECT_EQ(CurrentPeriodOf(PeriodKind::Month, 30, 1, 1).begin, DateFromParts(1930, 1, 1));
}

TEST(PeriodArithmetic, HasNoPeriodForNoKindAndTheUsersOwn) {
  EXPECT_EQ(RaisedBy([] { CurrentPeriodOf(PeriodKind::None, 2024, 1, 1); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([] { CurrentPeriodOf(PeriodKind::User, 2024, 1, 1); }), kInvalidProcedureCall);
}

TEST(LeadingNumber, ReadsTheNumberThatATextBeginsWith) {
  EXPECT_EQ(LeadingNumber(u"12x"), 12);
  EXPECT_EQ(LeadingNumber(u""), 0);
  EXPECT_EQ(LeadingNumber(u"x12"), 0);
  EXPECT_EQ(LeadingNumber(u" 20 24 metai"), 2024);
  EXPECT_EQ(LeadingNumber(u"+7"), 7);
  EXPECT_EQ(LeadingNumber(u"-3"), -3);
  EXPECT_EQ(LeadingNumber(u"1,5"), 1);
  EXPECT_EQ(LeadingNumber(u"1.5"), 1.5);
  EXPECT_EQ(LeadingNumber(u"2\t0\n24"), 2024);
  EXPECT_EQ(LeadingNumber(u"1D2"), 100);
  EXPECT_EQ(LeadingNumber(u"1d2"), 100);
  EXPECT_EQ(LeadingNumber(u"1e999"), 0);
  EXPECT_EQ(LeadingNumber(u"-"), 0);
  EXPECT_EQ(LeadingNumber(u"inf"), 0);
  EXPECT_EQ(LeadingNumber(u"12ž"), 12);
  EXPECT_EQ(LeadingNumber(u"12ž3"), 12);
}

}  // namespace
}  // namespace qva
