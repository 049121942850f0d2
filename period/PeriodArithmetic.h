// The kinds of report periods, and the dates that they stand for.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/value.h"

namespace qva {

/// The setting "RepPeriodType".
enum class PeriodKind : std::int32_t {
  None = 0,  ///< nothing is selected
  Year = 1,
  Quarter = 2,
  Month = 3,
  FirstHalfYear = 4,
  SecondHalfYear = 5,
  User = 6,
};

/// A current period of whole months, and the length of the previous one.
struct CurrentPeriod {
  Date begin;
  Date end;
  std::int16_t months_back;  ///< negative: −12, −6, −3 or −1
};

/// The current period of a kind other than None and User. Quarter and month count only for the kinds that
/// need them; numbers beyond 1–4 and 1–12 carry over into other years. Raises 5 outside the years 100 to
/// 9999.
CurrentPeriod CurrentPeriodOf(PeriodKind kind, int year, int quarter, int month);

/// The first day of the previous period, of which the last day is given: as many months long as `months_back`
/// (a negative number) says.
Date PreviousBegin(Date previous_end, std::int16_t months_back);

/// The number at the beginning of a text, as Basic's Val reads it: blanks do not count, the decimal separator
/// is the point, and what follows the number is ignored. 0 when there is none.
double LeadingNumber(std::u16string_view text);

}  // namespace qva
