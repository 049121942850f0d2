// Error values of cells, which LibreOffice knows by codes of its own. MemberOverrides.h is the way to them.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Range.Value: an error of a single cell, which LibreOffice gives as the number 0.
Value WithCellError(const ObjectPtr& range, Value value);
/// The error that LibreOffice's code of one means; #VALUE! for one that Excel lacks.
Value CellErrorOf(std::int32_t code);
/// Range.Value = …: an error becomes its text, since a cell of LibreOffice has no errors but of formulas.
Value SetCellValue(const ObjectPtr& range, const Arguments& arguments);

}  // namespace qva::calc
