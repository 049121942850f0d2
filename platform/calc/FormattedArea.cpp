#include "platform/calc/FormattedArea.h"

#include <algorithm>

#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>

#include "platform/calc/Uno.h"
#include "platform/calc/UnoValue.h"
#include "platform/error.h"

namespace qva::calc {

std::optional<CellArea> FormattedArea(const ObjectPtr& cell_range) {
  const Reference<css::sheet::XSheetCellRange> range(ToAny(cell_range), UNO_QUERY);
  if (!range.is()) throw AutomationError(kTypeMismatch);
  const Reference<css::uno::XInterface> sheet = range->getSpreadsheet();
  const Reference<css::sheet::XCellRangeAddressable> all(sheet, UNO_QUERY);
  const Reference<css::sheet::XUniqueCellFormatRangesSupplier> formats(sheet, UNO_QUERY);
  if (!all.is() || !formats.is()) return std::nullopt;
  const css::table::CellRangeAddress whole = all->getRangeAddress();

  std::optional<CellArea> area;
  const auto groups = formats->getUniqueCellFormatRanges();
  for (sal_Int32 i = 0; i < groups->getCount(); ++i) {
    const Reference<css::sheet::XSheetCellRanges> group(groups->getByIndex(i), UNO_QUERY);
    const auto ranges = group->getRangeAddresses();
    const auto is_corner = [&](const css::table::CellRangeAddress& cells) {
      return cells.EndRow == whole.EndRow && cells.EndColumn == whole.EndColumn;
    };
    if (std::any_of(ranges.begin(), ranges.end(), is_corner)) continue;  // the cells without a format
    for (const css::table::CellRangeAddress& cells : ranges) {
      if (cells.EndRow == whole.EndRow || cells.EndColumn == whole.EndColumn) continue;
      const CellArea part{cells.StartRow + 1, cells.StartColumn + 1, cells.EndRow + 1, cells.EndColumn + 1};
      if (!area) area = part;
      area->first_row = std::min(area->first_row, part.first_row);
      area->first_column = std::min(area->first_column, part.first_column);
      area->last_row = std::max(area->last_row, part.last_row);
      area->last_column = std::max(area->last_column, part.last_column);
    }
  }
  return area;
}

}  // namespace qva::calc
