// Members of LibreOffice's cells that it lacks or has otherwise: what freezing formulas needs.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Range.Value2, which LibreOffice lacks: numbers as Double, texts, Booleans also where a formula gave them,
/// errors as errors. Of several cells a block with both indexes from 1.
Value CellValue2(const ObjectPtr& range, const Arguments& arguments);
/// Range.Value2 = …: a block of numbers, Booleans and texts, which stay texts, travels as one. Each cell
/// shows what it holds in the format in which it showed its formula. Anything else is written as by
/// Range.Value.
Value SetCellValue2(const ObjectPtr& range, const Arguments& arguments);

/// Range.Formula, and with new formulas for each cell Range.Formula = …, in LibreOffice's own notation, which
/// its formulas are kept in: Excel's would be made of each, and read again. Array formulas are in braces.
Value CellFormula(const ObjectPtr& range, const Arguments& arguments);
Value SetCellFormula(const ObjectPtr& range, const Arguments& arguments);
/// Range.FormulaArray = …, in the same notation, without the braces.
Value SetFormulaArray(const ObjectPtr& range, const Arguments& arguments);

/// Range.HasArray, which LibreOffice lacks: True, False, or Null where only some cells are parts of array
/// formulas.
Value HasArray(const ObjectPtr& range, const Arguments& arguments);

/// Range.FormulaLocal = …: cells that are emptied keep the format that they show, as Excel's do, also where
/// it came from their formula. LibreOffice would forget it, and a date become a number for the reader.
Value SetFormulaLocal(const ObjectPtr& range, const Arguments& arguments);

}  // namespace qva::calc
