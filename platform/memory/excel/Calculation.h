// The values of cells, formulas computed where they are out of date.
#pragma once

#include "platform/memory/excel/SheetData.h"

namespace qva::memory {

/// What a cell is worth now. A formula is computed when anything in its workbook changed since its last
/// result, after the formulas that it reads, without recursion from cell to cell: chains may be as long as
/// the sheet. A formula that reads itself, directly or through others, meets a 0 there. The application's
/// Calculation setting makes no difference.
/// The sheet must be owned by its workbook, which must be alive.
Value CellValue(SheetData& sheet, std::int32_t row, std::int32_t column);

}  // namespace qva::memory
