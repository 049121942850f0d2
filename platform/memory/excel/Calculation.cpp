#include "platform/memory/excel/Calculation.h"

#include <vector>

#include "platform/memory/excel/ApplicationData.h"
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

bool IsManual(const WorkbookData& workbook) {
  const auto application = workbook.application.lock();
  return application && application->calculation == xlCalculationManual;
}

/// One computation, of all formulas that are out of date or of those of one area.
class Computation {
 public:
  explicit Computation(WorkbookData& workbook) : workbook_(workbook) {}
  Computation(WorkbookData& workbook, const SheetData& sheet, const Area& area)
      : workbook_(workbook), only_sheet_(&sheet), only_area_(area) {}

  /// Brings a formula's result up to date, and of those that it reads.
  void Run(const Place& wanted) {
    std::vector<Place> open{wanted};
    while (!open.empty()) {
      const Place place = open.back();
      Cell& cell = *place.sheet->Find(place.row, place.column);
      if (IsDone(cell)) {
        open.pop_back();
        continue;
      }
      cell.calculating_in = number_;
      missing_.clear();
      FormulaContext context{.workbook = &workbook_,
                             .sheet = OwnerOf(workbook_, place.sheet),
                             .cell_value = [this](SheetData& sheet, std::int32_t row, std::int32_t column) {
                               return Read(sheet, row, column);
                             }};
      if (cell.array) context.array_place = {place.row - cell.array->row, place.column - cell.array->column};
      const Value value = Scalar(EvaluateFormula(cell.formula, context), context);
      if (!missing_.empty()) {
        open.insert(open.end(), missing_.begin(), missing_.end());
        continue;
      }
      cell.value = value.Is(Value::Type::Empty) ? Value(0.0) : value;
      cell.calculated_in = number_;
      // What an area's formulas read elsewhere may be out of date, and so are they, then.
      cell.calculated_at = only_sheet_ ? 0 : workbook_.generation;
      open.pop_back();
    }
  }

 private:
  bool IsDone(const Cell& cell) const {
    return only_sheet_ ? cell.calculated_in == number_ : cell.calculated_at == workbook_.generation;
  }
  bool IsMeant(const SheetData& sheet, std::int32_t row, std::int32_t column) const {
    return !only_sheet_ || (&sheet == only_sheet_ && only_area_.Contains(row, column));
  }
  Value Read(SheetData& sheet, std::int32_t row, std::int32_t column) {
    const Cell* cell = sheet.Find(row, column);
    if (!cell) return {};
    if (cell->formula.empty() || IsDone(*cell) || !IsMeant(sheet, row, column)) return cell->value;
    if (cell->calculating_in != number_) missing_.push_back({&sheet, row, column});
    return 0.0;
  }

  WorkbookData& workbook_;
  const SheetData* only_sheet_ = nullptr;
  Area only_area_;
  const std::uint64_t number_ = ++workbook_.calculations;
  std::vector<Place> missing_;  // what the formula at hand reads and is out of date itself
};

void RunAll(Computation& computation, SheetData& sheet, const Area& area) {
  sheet.ForEachCell(area, [&](std::int32_t row, std::int32_t column, const Cell& cell) {
    if (!cell.formula.empty()) computation.Run({&sheet, row, column});
  });
}

}  // namespace

Value CellValue(SheetData& sheet, std::int32_t row, std::int32_t column) {
  Cell* cell = sheet.Find(row, column);
  if (!cell) return {};
  if (!cell->formula.empty()) {
    const auto workbook = sheet.workbook.lock();
    if (cell->calculated_at != workbook->generation && !IsManual(*workbook)) {
      Computation(*workbook).Run({&sheet, row, column});
    }
  }
  return cell->value;
}

void Calculate(WorkbookData& workbook) {
  Computation computation(workbook);
  for (const auto& sheet : workbook.sheets) RunAll(computation, *sheet, kWholeSheet);
}

void CalculateIfManual(SheetData& sheet, const Area& area) {
  const auto workbook = sheet.workbook.lock();
  if (!IsManual(*workbook)) return;
  Computation computation(*workbook, sheet, area);
  RunAll(computation, sheet, area);
}

}  // namespace qva::memory
