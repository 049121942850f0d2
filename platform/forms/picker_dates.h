// The dates that pickers can show, and where the user's steps lead among them.
#pragma once

#include <optional>

#include "platform/forms/grid_keys.h"
#include "platform/value.h"

namespace qva {

/// What fields and months show before they are told another date: 1 January 1900.
inline constexpr Date kFirstShownDay{2};

/// Whether a date is one of 1 January 1753 … 31 December 9999, at any time of the day.
bool IsPickerDay(Date date);

/// The day of a date, without its time. Raises 380 (Invalid property value) for one that pickers cannot show.
Date PickerDay(Date date);

/// The date so many months later, or earlier; a day that the month lacks becomes its last one. Out of a
/// picker's range it is the date itself.
Date MovedByMonths(Date date, int months);
/// The date so many days later, or earlier, or itself as above.
Date MovedByDays(Date date, int days);

/// The day that a key leads to from another one in a month: arrows go by days and weeks, page keys by months,
/// with Ctrl by years, Home and End to the ends of the month. Tab leads out of it.
std::optional<Date> KeyTarget(GridKey key, bool control, Date from);

/// 0 for Monday to 6 for Sunday.
int WeekdayOf(Date date);
/// How many days the date's month has.
int DaysInMonthOf(Date date);

}  // namespace qva
