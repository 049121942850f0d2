// The values of cells, formulas computed where they are out of date.
#pragma once

#include "platform/memory/excel/SheetData.h"

namespace qva::memory {

/// What a cell is worth now. A formula is computed when anything in its workbook changed since its last
/// result, after the formulas that it reads, without recursion from cell to cell: chains may be as long as
/// the sheet. A formula that reads itself, directly or through others, meets a 0 there. While the application
/// calculates manually, the last result stays.
/// The sheet must be owned by its workbook, which must be alive.
Value CellValue(SheetData& sheet, std::int32_t row, std::int32_t column);

/// Computes the workbook's formulas that are out of date, also while the application calculates manually.
void Calculate(WorkbookData& workbook);
/// While the application calculates manually: computes the formulas of an area, each after those of the area
/// that it reads; all others stay as they are.
void CalculateIfManual(SheetData& sheet, const Area& area);

}  // namespace qva::memory
