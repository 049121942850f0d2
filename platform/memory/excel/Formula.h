// The formulas of cells and names: numbers, texts, TRUE and FALSE, error values, references to cells, ranges
// and names, also several ("A1:B2,D4"), + - * / & = <> < <= > >= %, parentheses and the functions of the
// table in Formula.cpp.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/memory/excel/WorkbookData.h"
#include "platform/value.h"

namespace qva::memory {

/// One area of a certain sheet, or several, which may overlap.
struct Reference {
  std::shared_ptr<SheetData> sheet;
  std::vector<Area> areas;

  const Area& first() const { return areas.front(); }
};

/// What a part of a formula gives.
using Operand = std::variant<Value, Reference>;

/// Where a formula stands and how it gets at cells.
struct FormulaContext {
  const WorkbookData* workbook = nullptr;
  /// What references without a sheet mean.
  std::shared_ptr<SheetData> sheet;
  std::function<Value(SheetData& sheet, std::int32_t row, std::int32_t column)> cell_value;
  /// In an array formula: how far its cell is from the array's first one. An area is then worth the cell at
  /// that place in it, that of its only row or column for all rows or columns.
  struct ArrayPlace {
    std::int32_t row = 0;
    std::int32_t column = 0;
  };
  std::optional<ArrayPlace> array_place;
  /// Names that were followed to get here: names may refer to each other, and in a circle.
  int depth = 0;
};

/// The result of a formula, with or without its "=". What cannot be computed gives an error value: a
/// reference to an unknown sheet #REF!, an unknown name or function #NAME?, a division by zero #DIV/0!, a
/// text that is no number in a computation #VALUE!. Raises 1004 when the text is no formula.
Operand EvaluateFormula(std::u16string_view formula, const FormulaContext& context);

/// What an operand is worth where one value is wanted; of an area #VALUE!, but for array formulas, of several
/// areas always.
Value Scalar(const Operand& operand, const FormulaContext& context);

/// Raises 1004 when the text is no formula.
void CheckFormula(std::u16string_view formula);

/// The cells that a text means on a sheet: an address ("B2:C3"), one of another sheet ("Sheet2!A1"), or a
/// name, or several of them with commas between; with or without "=". Nothing when it means none.
std::optional<Reference> FindReference(std::u16string_view text, const WorkbookData& workbook,
                                       const std::shared_ptr<SheetData>& sheet);

/// "=Sheet1!$A$1:$B$2", or "=Sheet1!$A$1,Sheet1!$C$3"
std::u16string ReferenceFormula(const Reference& reference);

/// The formula with every mention of a sheet changed to its new name.
std::u16string RenameSheetIn(std::u16string_view formula, std::u16string_view old_name,
                             std::u16string_view new_name);

}  // namespace qva::memory
