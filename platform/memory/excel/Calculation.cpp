#include "platform/memory/excel/Calculation.h"

#include <vector>

#include "platform/memory/excel/Formula.h"

namespace qva::memory {
namespace {

struct Place {
  SheetData* sheet = nullptr;
  std::int32_t row = 0;
  std::int32_t column = 0;
};

std::shared_ptr<SheetData> OwnerOf(const WorkbookData& workbook, const SheetData* sheet) {
  for (const auto& owned : workbook.sheets) {
    if (owned.get() == sheet) return owned;
  }
  return nullptr;
}

/// Brings a formula's result up to date, and of those that it reads.
void Calculate(WorkbookData& workbook, const Place& wanted) {
  const std::uint64_t calculation = ++workbook.calculations;
  std::vector<Place> open{wanted};
  std::vector<Place> missing;  // what the formula at hand reads and is out of date itself
  const auto read = [&](SheetData& sheet, std::int32_t row, std::int32_t column) -> Value {
    const Cell* cell = sheet.Find(row, column);
    if (!cell) return {};
    if (cell->formula.empty() || cell->calculated_at == workbook.generation) return cell->value;
    if (cell->calculating_in != calculation) missing.push_back({&sheet, row, column});
    return 0.0;
  };
  while (!open.empty()) {
    const Place place = open.back();
    Cell& cell = *place.sheet->Find(place.row, place.column);
    if (cell.calculated_at == workbook.generation) {
      open.pop_back();
      continue;
    }
    cell.calculating_in = calculation;
    missing.clear();
    FormulaContext context{
        .workbook = &workbook, .sheet = OwnerOf(workbook, place.sheet), .cell_value = read};
    if (cell.array) context.array_place = {place.row - cell.array->row, place.column - cell.array->column};
    const Value value = Scalar(EvaluateFormula(cell.formula, context), context);
    if (!missing.empty()) {
      open.insert(open.end(), missing.begin(), missing.end());
      continue;
    }
    cell.value = value.Is(Value::Type::Empty) ? Value(0.0) : value;
    cell.calculated_at = workbook.generation;
    open.pop_back();
  }
}

}  // namespace

Value CellValue(SheetData& sheet, std::int32_t row, std::int32_t column) {
  Cell* cell = sheet.Find(row, column);
  if (!cell) return {};
  if (!cell->formula.empty()) {
    const auto workbook = sheet.workbook.lock();
    if (cell->calculated_at != workbook->generation) Calculate(*workbook, {&sheet, row, column});
  }
  return cell->value;
}

}  // namespace qva::memory
