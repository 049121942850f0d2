#include "platform/memory/excel/SheetData.h"

#include "platform/excel_refusals.h"
#include "platform/memory/excel/CellInput.h"
#include "platform/memory/excel/Formula.h"
#include "platform/memory/excel/WorkbookData.h"

namespace qva::memory {

Cell* SheetData::Find(std::int32_t row, std::int32_t column) {
  const auto found = cells_.find(KeyOf(row, column));
  return found == cells_.end() ? nullptr : &found->second;
}

const Cell* SheetData::Find(std::int32_t row, std::int32_t column) const {
  const auto found = cells_.find(KeyOf(row, column));
  return found == cells_.end() ? nullptr : &found->second;
}

void SheetData::Enter(std::int32_t row, std::int32_t column, const Value& value) {
  // An apostrophe in front counts in cells of the format for texts, too.
  const bool is_quoted = value.Is(Value::Type::Text) && value.As<std::u16string>().starts_with(u'\'');
  const bool as_text =
      !is_quoted && formats[FormatProperty::NumberFormat].At(row, column) == Value(kTextFormat);
  Hold(row, column, ReadEntry(value, as_text));
}

void SheetData::EnterPlain(std::int32_t row, std::int32_t column, const Value& value) {
  Hold(row, column, ReadEntry(value, value.Is(Value::Type::Text)));
}

void SheetData::EnterArray(const Area& area, const std::u16string& formula) {
  CheckFormula(formula);
  for (std::int32_t row = area.row; row <= area.last_row(); ++row) {
    for (std::int32_t column = area.column; column <= area.last_column(); ++column) {
      Hold(row, column, {Value(), formula});
      Find(row, column)->array = area;
    }
  }
}

void SheetData::RequireWholeArrays(const Area& area) {
  ForEachCell(area, [&](std::int32_t, std::int32_t, const Cell& cell) {
    if (cell.array && Around(*cell.array, area) != area) throw excel::ArrayRefusal();
  });
}

Area SheetData::WithWholeMergedCells(const Area& area) const {
  Area whole = area;
  for (bool grows = true; grows;) {
    grows = false;
    for (const Area& cell : merged) {
      if (!cell.Meets(whole) || Around(cell, whole) == whole) continue;
      whole = Around(cell, whole);
      grows = true;
    }
  }
  return whole;
}

void SheetData::RequireWholeMergedCells(const Area& area, const std::u16string& refusal) const {
  if (WithWholeMergedCells(area) != area) throw excel::Refusal(refusal);
}

void SheetData::Merge(const Area& area) {
  const Area whole = WithWholeMergedCells(area);
  std::optional<Cell> kept;
  for (std::int32_t row = whole.row; row <= whole.last_row() && !kept; ++row) {
    for (std::int32_t column = whole.column; column <= whole.last_column() && !kept; ++column) {
      if (const Cell* cell = Find(row, column)) kept = *cell;
    }
  }
  Clear(whole);
  if (kept) cells_[KeyOf(whole.row, whole.column)] = *kept;
  Unmerge(whole);
  if (whole.count() > 1) merged.push_back(whole);
}

void SheetData::Unmerge(const Area& area) {
  std::erase_if(merged, [&](const Area& cell) { return cell.Meets(area); });
  Changed();
}

void SheetData::Hold(std::int32_t row, std::int32_t column, CellEntry entry) {
  const std::int32_t key = KeyOf(row, column);
  if (entry.value.Is(Value::Type::Empty) && entry.formula.empty()) {
    cells_.erase(key);
  } else {
    Cell& cell = cells_[key];
    cell = Cell{};
    cell.value = std::move(entry.value);
    cell.formula = std::move(entry.formula);
  }
  FormatLayer& number_formats = formats[FormatProperty::NumberFormat];
  if (entry.number_format != kGeneralFormat && number_formats.At(row, column) == Value(kGeneralFormat)) {
    number_formats.Set({row, column, 1, 1}, entry.number_format);
  }
  Changed();
}

void SheetData::Clear(const Area& area) {
  if (static_cast<std::size_t>(area.count()) <= cells_.size()) {
    for (std::int32_t row = area.row; row <= area.last_row(); ++row) {
      for (std::int32_t column = area.column; column <= area.last_column(); ++column) {
        cells_.erase(KeyOf(row, column));
      }
    }
  } else {
    std::erase_if(
        cells_, [&](const auto& entry) { return area.Contains(RowOf(entry.first), ColumnOf(entry.first)); });
  }
  Changed();
}

Area SheetData::UsedArea() const {
  std::optional<Area> used = formats.CellsSet();
  for (const Area& cell : merged) used = used ? Around(*used, cell) : cell;
  for (const auto& [key, cell] : cells_) {
    const Area place{RowOf(key), ColumnOf(key), 1, 1};
    used = used ? Around(*used, place) : place;
  }
  return used.value_or(Area());
}

void SheetData::Changed() {
  if (const auto owner = workbook.lock()) owner->Touch();
}

}  // namespace qva::memory
