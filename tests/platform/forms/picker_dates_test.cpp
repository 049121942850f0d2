#include "platform/forms/picker_dates.h"

#include <gtest/gtest.h>

#include "platform/date.h"
#include "platform/error.h"
#include "tests/raised_error.h"

namespace qva {
namespace {

const Date kFirst = DateFromParts(1753, 1, 1);
const Date kLast = DateFromParts(9999, 12, 31);

TEST(PickerDates, AreWholeDays) {
  EXPECT_EQ(PickerDay({DateFromParts(2024, 2, 29).serial + 0.75}), DateFromParts(2024, 2, 29));
}

TEST(PickerDates, EndWhereWindowsPickersEnd) {
  EXPECT_EQ(PickerDay(kFirst), kFirst);
  EXPECT_EQ(PickerDay({kLast.serial + 0.5}), kLast);
  for (const double serial : {kFirst.serial - 0.25, kLast.serial + 1}) {
    EXPECT_EQ(RaisedBy([&] { PickerDay({serial}); }), kInvalidPropertyValue) << serial;
  }
}

TEST(PickerDates, ADayThatTheMonthLacksBecomesItsLastOne) {
  EXPECT_EQ(MovedByMonths(DateFromParts(2024, 1, 31), 1), DateFromParts(2024, 2, 29));
  EXPECT_EQ(MovedByMonths(DateFromParts(2024, 3, 31), -1), DateFromParts(2024, 2, 29));
  EXPECT_EQ(MovedByMonths(DateFromParts(2024, 2, 29), 12), DateFromParts(2025, 2, 28));
  EXPECT_EQ(MovedByMonths(DateFromParts(2024, 12, 31), 2), DateFromParts(2025, 2, 28));
  EXPECT_EQ(MovedByMonths(DateFromParts(2024, 11, 15), 1), DateFromParts(2024, 12, 15));
}

TEST(PickerDates, StayWhereAStepWouldLeaveTheCalendar) {
  EXPECT_EQ(MovedByDays(kFirst, -1), kFirst);
  EXPECT_EQ(MovedByDays(kFirst, 1), DateFromParts(1753, 1, 2));
  EXPECT_EQ(MovedByDays(kLast, 1), kLast);
  EXPECT_EQ(MovedByMonths(DateFromParts(1753, 1, 31), -1), DateFromParts(1753, 1, 31));
  EXPECT_EQ(MovedByMonths(DateFromParts(1753, 2, 15), -1), DateFromParts(1753, 1, 15));
  EXPECT_EQ(MovedByMonths(kLast, 1), kLast);
  EXPECT_EQ(MovedByMonths(DateFromParts(9999, 11, 30), 1), DateFromParts(9999, 12, 30));
}

TEST(PickerDates, KeysGoByDaysWeeksAndMonthsAndWithCtrlByYears) {
  const Date day = DateFromParts(2024, 2, 29);
  for (const bool control : {false, true}) {
    EXPECT_EQ(KeyTarget(GridKey::Left, control, day), DateFromParts(2024, 2, 28));
    EXPECT_EQ(KeyTarget(GridKey::Right, control, day), DateFromParts(2024, 3, 1));
    EXPECT_EQ(KeyTarget(GridKey::Up, control, day), DateFromParts(2024, 2, 22));
    EXPECT_EQ(KeyTarget(GridKey::Down, control, day), DateFromParts(2024, 3, 7));
    EXPECT_EQ(KeyTarget(GridKey::Home, control, day), DateFromParts(2024, 2, 1));
    EXPECT_EQ(KeyTarget(GridKey::End, control, DateFromParts(2024, 2, 3)), day);
    EXPECT_EQ(KeyTarget(GridKey::Tab, control, day), std::nullopt);
  }
  EXPECT_EQ(KeyTarget(GridKey::PageUp, false, day), DateFromParts(2024, 1, 29));
  EXPECT_EQ(KeyTarget(GridKey::PageDown, false, day), DateFromParts(2024, 3, 29));
  EXPECT_EQ(KeyTarget(GridKey::PageUp, true, day), DateFromParts(2023, 2, 28));
  EXPECT_EQ(KeyTarget(GridKey::PageDown, true, day), DateFromParts(2025, 2, 28));
}

TEST(PickerDates, KnowTheLengthOfTheMonth) {
  EXPECT_EQ(DaysInMonthOf(DateFromParts(2023, 2, 1)), 28);
  EXPECT_EQ(DaysInMonthOf(kLast), 31);
}

TEST(PickerDates, WeeksBeginOnMonday) {
  EXPECT_EQ(WeekdayOf(DateFromParts(2024, 2, 26)), 0);
  EXPECT_EQ(WeekdayOf(DateFromParts(2024, 3, 3)), 6);
  EXPECT_EQ(WeekdayOf(kFirst), 0) << "before automation's first day, too";
}

}  // namespace
}  // namespace qva
