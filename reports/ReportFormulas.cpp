// CReports: formulas into fixed values.
#include <algorithm>

#include "reports/CReports.h"

namespace qva {
namespace {

/// Formulas are read in blocks of about this many cells, so that whole columns stay within memory.
constexpr std::int32_t kBlockCells = 1 << 17;

bool HoldsFormula(const Value& formula) {
  return formula.Is(Value::Type::Text) && formula.As<std::u16string>().find(u'=') != std::u16string::npos;
}

/// The value as it is to be entered. Excel would take a text that begins with "=" for a formula again; the
/// apostrophe, which is no part of the value, keeps it the text that it is.
Value EntryOf(const Value& value) {
  const bool would_be_formula = value.Is(Value::Type::Text) && value.As<std::u16string>().starts_with(u'=');
  return would_be_formula ? Value(u"'" + value.As<std::u16string>()) : value;
}

void Freeze(const excel::Range& cell) {
  const Value value = cell.Value();
  cell.SetFormulaLocal(u"");
  cell.SetValue(EntryOf(value));
}

/// The formulas' texts travel as one block, since freezing a cell does not change those of others. Values do
/// not: a value that was written back may change what the next cell gives.
void FreezeFormulas(const excel::Range& block) {
  const Value formulas = block.Formula();
  if (!formulas.Is(Value::Type::Array)) {
    if (HoldsFormula(formulas)) Freeze(block);
    return;
  }
  const Array& cells = formulas.AsArray();
  const auto columns = static_cast<std::size_t>(cells.dimensions.back().count);
  for (std::size_t n = 0; n < cells.elements.size(); ++n) {
    if (!HoldsFormula(cells.elements[n])) continue;
    Freeze(
        block.Cells(static_cast<std::int32_t>(n / columns) + 1, static_cast<std::int32_t>(n % columns) + 1));
  }
}

void FreezeArea(const excel::Range& area) {
  // Not the range's own Count, which may count whole rows or columns.
  const std::int32_t rows = area.Rows().Count();
  const std::int32_t columns = area.Columns().Count();
  const std::int32_t rows_of_block = std::max(kBlockCells / columns, 1);
  if (rows <= rows_of_block) return FreezeFormulas(area);
  for (std::int32_t row = 1; row <= rows; row += rows_of_block) {
    FreezeFormulas(area.Cells(row, 1).Resize(std::min(rows_of_block, rows - row + 1), columns));
  }
}

}  // namespace

void CReports::ClearFormulas(excel::Range ScanArrea) {
  const excel::Areas areas = ScanArrea.Areas();
  const std::int32_t count = areas.Count();
  if (count == 1) return FreezeArea(ScanArrea);
  for (std::int32_t n = 1; n <= count; ++n) FreezeArea(areas.Item(n));
}

}  // namespace qva
