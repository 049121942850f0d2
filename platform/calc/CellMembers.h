// Members of LibreOffice's cells that it lacks or has otherwise: what freezing formulas needs.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Range.Value2, which LibreOffice lacks: numbers as Double, texts, Booleans also where a formula gave them,
/// errors as errors. Of several cells a block with both indexes from 1.
Value CellValue2(const ObjectPtr& range, const Arguments& arguments);

/// Range.HasArray, which LibreOffice lacks: True, False, or Null where only some cells are parts of array
/// formulas.
Value HasArray(const ObjectPtr& range, const Arguments& arguments);

/// Range.FormulaLocal = …: cells that are emptied keep the format that they show, as Excel's do, also where
/// it came from their formula. LibreOffice would forget it, and a date become a number for the reader.
Value SetFormulaLocal(const ObjectPtr& range, const Arguments& arguments);

}  // namespace qva::calc
