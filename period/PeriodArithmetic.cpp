#include "period/PeriodArithmetic.h"

#include <cmath>
#include <string>

#include "platform/date.h"
#include "platform/error.h"
#include "platform/number.h"

namespace qva {

CurrentPeriod CurrentPeriodOf(PeriodKind kind, int year, int quarter, int month) {
  switch (kind) {
    case PeriodKind::Year:
      return {DateFromParts(year, 1, 1), DateFromParts(year + 1, 1, 0), -12};
    case PeriodKind::Quarter:
      return {DateFromParts(year, 3 * quarter - 2, 1), DateFromParts(year, 3 * quarter + 1, 0), -3};
    case PeriodKind::Month:
      return {DateFromParts(year, month, 1), DateFromParts(year, month + 1, 0), -1};
    case PeriodKind::FirstHalfYear:
      return {DateFromParts(year, 1, 1), DateFromParts(year, 7, 0), -6};
    case PeriodKind::SecondHalfYear:
      return {DateFromParts(year, 7, 1), DateFromParts(year, 12, 31), -6};
    case PeriodKind::None:
    case PeriodKind::User:
      break;
  }
  throw AutomationError(kInvalidProcedureCall);
}

Date PreviousBegin(Date previous_end, std::int16_t months_back) {
  return FirstOfMonth(AddMonths(previous_end, months_back + 1));
}

double LeadingNumber(std::u16string_view text) {
  std::string number;
  for (char16_t c : text) {
    if (c == u' ' || c == u'\t' || c == u'\n') continue;
    if (c == u'd' || c == u'D') c = u'e';  // Basic writes exponents either way
    if (c > u'~') break;
    number += static_cast<char>(c);
  }
  const double result = LeadingDecimal(number);
  return std::isfinite(result) ? result : 0;
}

}  // namespace qva
