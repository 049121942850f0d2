// The report's date, between its cells and the date picker.
#include "global/Globals.h"
#include "platform/date.h"
#include "reports/CReports.h"
#include "reports/enDateType.h"

namespace qva {
namespace {

/// The day that stands for a whole month.
constexpr std::int16_t kDayOfMonth = 12;

std::int16_t Part(const excel::Range& cell) {
  return cell.Value().ToInt16();
}

/// The last month of the quarter that a cell holds.
std::int16_t LastMonth(const excel::Range& quarter) {
  return Value(3 * quarter.Value().ToDouble()).ToInt16();
}

}  // namespace

bool CReports::ReadDate(excel::Range rYear, excel::Range rMonth, excel::Range rDay, excel::Range rQuater,
                        std::int32_t DateType) {
  TheGlobals().application.SetScreenUpdating(true);  // the picker must be seen

  Date date;  // stays the zero date for any other type
  if (DateType == FullDate) {
    const std::int16_t year = Part(rYear);
    const std::int16_t month = Part(rMonth);
    date = DateFromParts(year, month, Part(rDay));
  } else if (DateType == YearAndMonth) {
    const std::int16_t year = Part(rYear);
    date = DateFromParts(year, Part(rMonth), kDayOfMonth);
  } else if (DateType == YearAndQuater) {
    const std::int16_t year = Part(rYear);
    date = DateFromParts(year, LastMonth(rQuater), kDayOfMonth);
  }

  if (!date_picker_) date_picker_ = MakeRef<CDatePic>();
  if (!date_picker_->Show(date)) return false;

  const DateParts chosen = PartsOf(date);
  const auto write = [](const excel::Range& cell, int part) {
    cell.SetValue(static_cast<std::int16_t>(part));
  };
  if (DateType == FullDate) {
    write(rYear, chosen.year);
    write(rMonth, chosen.month);
    write(rDay, chosen.day);
  } else if (DateType == YearAndMonth) {
    write(rYear, chosen.year);
    write(rMonth, chosen.month);
  } else if (DateType == YearAndQuater) {
    write(rYear, chosen.year);
    write(rQuater, (chosen.month - 1) / 3 + 1);
  }
  return true;
}

}  // namespace qva
