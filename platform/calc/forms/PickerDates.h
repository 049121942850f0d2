// The dates that a picker can show.
#pragma once

#include "platform/value.h"

namespace qva::calc {

/// The day of a date, without its time. Raises 380 (Invalid property value) outside 1 January 1753 …
/// 31 December 9999.
Date PickerDay(Date date);

/// The date so many months later, or earlier; a day that the month lacks becomes its last one. Out of a
/// picker's range it is the date itself.
Date MovedByMonths(Date date, int months);
/// The date so many days later, or earlier, or itself as above.
Date MovedByDays(Date date, int days);

/// 0 for Monday to 6 for Sunday.
int WeekdayOf(Date date);
/// How many days the date's month has.
int DaysInMonthOf(Date date);

}  // namespace qva::calc
