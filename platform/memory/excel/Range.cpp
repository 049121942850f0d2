#include "platform/memory/excel/Range.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/ado.h"
#include "platform/memory/excel/Application.h"
#include "platform/memory/excel/Areas.h"
#include "platform/memory/excel/Calculation.h"
#include "platform/memory/excel/CellInput.h"
#include "platform/memory/excel/Name.h"
#include "platform/memory/excel/Worksheet.h"

namespace qva::memory {
namespace {

constexpr std::size_t kLongestArrayFormula = 255;

/// Excel refuses blocks that do not fit into memory; here the bound is a fixed one.
constexpr std::int32_t kLargestBlock = 2'000'000;

std::optional<Reference> FindOne(const WorkbookData& workbook, const std::shared_ptr<SheetData>& sheet,
                                 const Value& cell) {
  if (cell.Is(Value::Type::Object)) {
    const auto* range = dynamic_cast<const Range*>(cell.ToObject().get());
    return range ? std::optional(range->reference()) : std::nullopt;
  }
  return FindReference(cell.ToText(), workbook, sheet);
}

std::int32_t ColumnNumber(const Value& column) {
  if (!column.Is(Value::Type::Text)) return column.ToInt32();
  const auto number = ParseColumn(column.ToText());
  if (!number) throw Refusal();
  return *number;
}

bool IsBlank(const Value& value) {
  return value.Is(Value::Type::Empty) || value.Is(Value::Type::Null) || value.Is(Value::Type::Missing) ||
         value == Value(u"");
}

/// What a cell gives in its format.
Value ShownValue(SheetData& sheet, std::int32_t row, std::int32_t column) {
  Value value = CellValue(sheet, row, column);
  if (!value.Is(Value::Type::Double)) return value;
  const Value& format = sheet.formats[FormatProperty::NumberFormat].At(row, column);
  return NumberInFormat(value.As<double>(), format.As<std::u16string>());
}

/// The elements of an array that is put into cells, by position from 0.
class Source {
 public:
  explicit Source(const Array& array) : array_(array) {
    if (array.dimensions.empty() || array.dimensions.size() > 2) throw Refusal();
    columns_ = array.dimensions.back().count;
    rows_ = array.dimensions.size() == 2 ? array.dimensions.front().count : 1;
  }

  Value At(std::int32_t row, std::int32_t column) const {
    if (rows_ == 1) row = 0;
    if (columns_ == 1) column = 0;
    if (row >= rows_ || column >= columns_) return ErrorValue{xlErrNA};
    return array_.elements[static_cast<std::size_t>(row) * columns_ + column];
  }

 private:
  const Array& array_;
  std::int32_t rows_ = 0;
  std::int32_t columns_ = 0;
};

}  // namespace

std::optional<Reference> FindCells(const WorkbookData& workbook, const std::shared_ptr<SheetData>& sheet,
                                   const Value& cell1, const Value& cell2) {
  auto first = FindOne(workbook, sheet, cell1);
  if (!first || cell2.Is(Value::Type::Missing)) return first;
  const auto second = FindOne(workbook, sheet, cell2);
  if (!second || second->sheet != first->sheet) return std::nullopt;
  first->areas = {Around(Around(first->areas), Around(second->areas))};
  return first;
}

std::optional<Reference> UnionOf(const Value& first, const Value& second) {
  const auto range_of = [](const Value& cells) {
    return cells.Is(Value::Type::Object) ? dynamic_cast<const Range*>(cells.ToObject().get()) : nullptr;
  };
  const Range* left = range_of(first);
  const Range* right = range_of(second);
  if (!left || !right || left->reference().sheet != right->reference().sheet) return std::nullopt;
  Reference all = left->reference();
  const std::vector<Area>& more = right->reference().areas;
  all.areas.insert(all.areas.end(), more.begin(), more.end());
  return all;
}

ClassBuilder Range::Describe() {
  return ClassBuilder(u"Range", "Cells of a sheet")
      .Property<&Range::Default, &Range::SetDefault>(u"_Default",
                                                     {Optional(u"RowIndex"), Optional(u"ColumnIndex")})
      .Default(u"_Default")
      .Property<&Range::Value, &Range::SetValue>(u"Value")
      .Property<&Range::Value2, &Range::SetValue>(u"Value2")
      .Property<&Range::Formula, &Range::SetValue>(u"Formula")
      .Property<&Range::Formula, &Range::SetValue>(u"FormulaLocal")
      .Put<&Range::SetFormulaArray>(u"FormulaArray")
      .Get<&Range::HasArray>(u"HasArray")
      .Get<&Range::CurrentArray>(u"CurrentArray")
      .Get<&Range::Text>(u"Text")
      .Get<&Range::Address>(u"Address", {Optional(u"RowAbsolute", true), Optional(u"ColumnAbsolute", true)})
      .Get<&Range::Row>(u"Row")
      .Get<&Range::Column>(u"Column")
      .Get<&Range::Rows>(u"Rows", {Optional(u"Index")})
      .Get<&Range::Columns>(u"Columns", {Optional(u"Index")})
      .Get<&Range::Count>(u"Count")
      .Get<&Range::Areas>(u"Areas")
      .Get<&Range::Cells>(u"Cells", {Optional(u"RowIndex"), Optional(u"ColumnIndex")})
      .Get<&Range::Item>(u"Item", {{u"RowIndex"}, Optional(u"ColumnIndex")})
      .Get<&Range::RangeWithin>(u"Range", {{u"Cell1"}})
      .Get<&Range::Offset>(u"Offset", {Optional(u"RowOffset"), Optional(u"ColumnOffset")})
      .Get<&Range::Resize>(u"Resize", {Optional(u"RowSize"), Optional(u"ColumnSize")})
      .Get<&Range::End>(u"End", {{u"Direction"}})
      .Get<&Range::Application>(u"Application")
      .Get<&Range::Worksheet>(u"Parent")
      .Get<&Range::Worksheet>(u"Worksheet")
      .Property<&Range::Name, &Range::SetName>(u"Name")
      .Get<&Range::Font>(u"Font")
      .Get<&Range::Interior>(u"Interior")
      .Method<&Range::Merge>(u"Merge", {Optional(u"Across")})
      .Method<&Range::UnMerge>(u"UnMerge")
      .Property<&Range::MergeCells, &Range::SetMergeCells>(u"MergeCells")
      .Get<&Range::MergeArea>(u"MergeArea")
      .Property<&Range::Locked, &Range::SetLocked>(u"Locked")
      .Property<&Range::NumberFormat, &Range::SetNumberFormat>(u"NumberFormat")
      .Method<&Range::Calculate>(u"Calculate")
      .Method<&Range::ClearContents>(u"ClearContents")
      .Method<&Range::CopyFromRecordset>(u"CopyFromRecordset", {{u"Data"}})
      .Method<&Range::Activate>(u"Activate")
      .Method<&Range::Select>(u"Select");
}

SheetData& Range::Open() const {
  OpenWorkbook(reference_.sheet->workbook);
  return *reference_.sheet;
}

std::int64_t Range::CellCount() const {
  std::int64_t count = 0;
  for (const Area& area : reference_.areas) count += area.count();
  return count;
}

void Range::RequireUnprotected(const Area& changed) const {
  const SheetData& sheet = Open();
  if (!sheet.protection.is_on || sheet.protection.user_interface_only) return;
  const auto locked = sheet.formats[FormatProperty::Locked].Common(changed);
  if (!locked || *locked == qva::Value(true)) throw Refusal(std::u16string(excel::kProtectedRefusal));
}

ObjectPtr Range::Part(const Area& part, Unit unit) const {
  return MakeRef<Range>(application_, Reference{reference_.sheet, {part}}, unit);
}

template <class Read>
qva::Value Range::ReadBlock(Read read) const {
  if (area().count() == 1) return read(area().row, area().column);
  if (area().count() > kLargestBlock) throw AutomationError(kOutOfMemory);
  std::vector<qva::Value> values;
  values.reserve(static_cast<std::size_t>(area().count()));
  for (std::int32_t row = area().row; row <= area().last_row(); ++row) {
    for (std::int32_t column = area().column; column <= area().last_column(); ++column) {
      values.push_back(read(row, column));
    }
  }
  return Array::Block(area().rows, area().columns, std::move(values));
}

Value Range::Value() {
  SheetData& sheet = Open();
  return ReadBlock([&](std::int32_t row, std::int32_t column) { return ShownValue(sheet, row, column); });
}

Value Range::Value2() {
  SheetData& sheet = Open();
  return ReadBlock([&](std::int32_t row, std::int32_t column) { return CellValue(sheet, row, column); });
}

void Range::RequireChangeable() const {
  for (const Area& area : reference_.areas) {
    RequireUnprotected(area);
    Open().RequireWholeArrays(area);
  }
}

void Range::SetValue(const qva::Value& value) {
  RequireChangeable();
  SheetData& sheet = Open();
  // The default value of an object is asked for once, not for each cell.
  const qva::Value given = value.Is(qva::Value::Type::Object) ? Get(value.ToObject(), u"") : value;
  if (IsBlank(given)) {
    for (const Area& area : reference_.areas) sheet.Clear(area);
    return;
  }
  if (CellCount() > kLargestBlock) throw AutomationError(kOutOfMemory);
  const auto fill = [&](auto element) {
    for (const Area& area : reference_.areas) {
      for (std::int32_t row = area.row; row <= area.last_row(); ++row) {
        for (std::int32_t column = area.column; column <= area.last_column(); ++column) {
          sheet.Enter(row, column, element(row - area.row, column - area.column));
          TakeFormat(row, column);
        }
      }
    }
  };
  if (given.Is(qva::Value::Type::Array)) {
    const Source source(given.AsArray());
    fill([&](std::int32_t row, std::int32_t column) { return source.At(row, column); });
  } else {
    fill([&](std::int32_t, std::int32_t) { return given; });
  }
  Calculate();
}

void Range::TakeFormat(std::int32_t row, std::int32_t column) const {
  SheetData& sheet = *reference_.sheet;
  const Cell* cell = sheet.Find(row, column);
  FormatLayer& formats = sheet.formats[FormatProperty::NumberFormat];
  if (!cell || cell->formula.empty() || formats.At(row, column) != qva::Value(kGeneralFormat)) return;
  const auto meant = FindReference(cell->formula, *OpenWorkbook(sheet.workbook), reference_.sheet);
  if (!meant || meant->areas.size() > 1 || meant->first().count() > 1) return;
  const qva::Value format =
      meant->sheet->formats[FormatProperty::NumberFormat].At(meant->first().row, meant->first().column);
  if (format != qva::Value(kGeneralFormat)) formats.Set({row, column, 1, 1}, format);
}

Value Range::Formula() {
  SheetData& sheet = Open();
  return ReadBlock([&](std::int32_t row, std::int32_t column) -> qva::Value {
    const Cell* cell = sheet.Find(row, column);
    if (!cell) return u"";
    return cell->formula.empty() ? ConstantText(cell->value) : cell->formula;
  });
}

void Range::SetFormulaArray(const std::u16string& formula) {
  if (reference_.areas.size() > 1)
    throw Refusal(u"Unable to set the FormulaArray property of the Range class");
  RequireChangeable();
  const bool is_merged =
      std::ranges::any_of(Open().merged, [this](const Area& cell) { return cell.Meets(area()); });
  if (is_merged) throw Refusal(u"Array formulas are not valid in merged cells.");
  if (formula.size() > kLongestArrayFormula) {
    throw Refusal(u"Unable to set the FormulaArray property of the Range class");
  }
  Open().EnterArray(area(), formula);
  Calculate();
}

Value Range::HasArray() {
  std::int64_t count = 0;
  for (const Area& area : reference_.areas) {
    Open().ForEachCell(area,
                       [&](std::int32_t, std::int32_t, const Cell& cell) { count += cell.array ? 1 : 0; });
  }
  if (count == 0) return false;
  return count == CellCount() ? qva::Value(true) : qva::Value(Null());
}

ObjectPtr Range::CurrentArray() {
  const Cell* cell = Open().Find(area().row, area().column);
  if (!cell || !cell->array) throw Refusal(u"No cells were found.");
  return Part(*cell->array);
}

Value Range::Text() {
  SheetData& sheet = Open();
  if (CellCount() > kLargestBlock) throw AutomationError(kOutOfMemory);
  const std::u16string first = DisplayText(ShownValue(sheet, area().row, area().column));
  for (const Area& area : reference_.areas) {
    for (std::int32_t row = area.row; row <= area.last_row(); ++row) {
      for (std::int32_t column = area.column; column <= area.last_column(); ++column) {
        if (DisplayText(ShownValue(sheet, row, column)) != first) return Null();
      }
    }
  }
  return first;
}

Value Range::Default(const qva::Value& row, const qva::Value& column) {
  if (row.Is(qva::Value::Type::Missing)) return Value();
  return Item(row, column);
}

void Range::SetDefault(const qva::Value& row, const qva::Value& column, const qva::Value& value) {
  if (row.Is(qva::Value::Type::Missing)) return SetValue(value);
  Put(Item(row, column), u"Value", value);
}

std::u16string Range::Address(bool row_absolute, bool column_absolute) {
  Open();
  return AreasText(reference_.areas, row_absolute, column_absolute);
}

std::int32_t Range::Row() {
  Open();
  return area().row;
}

std::int32_t Range::Column() {
  Open();
  return area().column;
}

std::int32_t Range::Count() {
  Open();
  if (unit_ == Unit::Cells) return static_cast<std::int32_t>(CellCount());
  return unit_ == Unit::Rows ? area().rows : area().columns;
}

ObjectPtr Range::Areas() {
  Open();
  return MakeRef<memory::Areas>(application_, reference_);
}

ObjectPtr Range::Item(const qva::Value& row, const qva::Value& column) {
  Open();
  std::int64_t rows_down = 0;
  std::int64_t columns_right = 0;
  if (!column.Is(qva::Value::Type::Missing)) {
    rows_down = std::int64_t{row.ToInt32()} - 1;
    columns_right = std::int64_t{ColumnNumber(column)} - 1;
  } else if (unit_ == Unit::Columns) {
    columns_right = std::int64_t{ColumnNumber(row)} - 1;
  } else {
    const std::int64_t position = std::int64_t{row.ToInt32()} - 1;
    const std::int64_t width = unit_ == Unit::Rows ? 1 : area().columns;
    rows_down = position / width;
    columns_right = position % width;
  }
  const auto cell =
      AreaInGrid(area().row + rows_down, area().column + columns_right,
                 unit_ == Unit::Columns ? area().rows : 1, unit_ == Unit::Rows ? area().columns : 1);
  if (!cell) throw Refusal();
  return Part(*cell, unit_);
}

ObjectPtr Range::Rows(const qva::Value& index) {
  Open();
  const auto rows = MakeRef<Range>(application_, Reference{reference_.sheet, {area()}}, Unit::Rows);
  return index.Is(qva::Value::Type::Missing) ? ObjectPtr(rows) : rows->Item(index, Missing());
}

ObjectPtr Range::Columns(const qva::Value& index) {
  Open();
  const auto columns = MakeRef<Range>(application_, Reference{reference_.sheet, {area()}}, Unit::Columns);
  return index.Is(qva::Value::Type::Missing) ? ObjectPtr(columns) : columns->Item(index, Missing());
}

ObjectPtr Range::Cells(const qva::Value& row, const qva::Value& column) {
  Open();
  const auto cells = MakeRef<Range>(application_, reference_);
  return row.Is(qva::Value::Type::Missing) ? ObjectPtr(cells) : cells->Item(row, column);
}

ObjectPtr Range::RangeWithin(const std::u16string& address) {
  Open();
  const auto part = ParseArea(address);
  const auto place =
      part ? AreaInGrid(std::int64_t{area().row} + part->row - 1,
                        std::int64_t{area().column} + part->column - 1, part->rows, part->columns)
           : std::nullopt;
  if (!place) throw Refusal();
  return Part(*place);
}

ObjectPtr Range::Offset(std::int32_t rows, std::int32_t columns) {
  Open();
  Reference moved{reference_.sheet, {}};
  for (const Area& area : reference_.areas) {
    const auto place = AreaInGrid(std::int64_t{area.row} + rows, std::int64_t{area.column} + columns,
                                  area.rows, area.columns);
    if (!place) throw Refusal();
    moved.areas.push_back(*place);
  }
  return MakeRef<Range>(application_, std::move(moved), unit_);
}

ObjectPtr Range::Resize(const qva::Value& rows, const qva::Value& columns) {
  Open();
  const std::int32_t row_count = rows.Is(qva::Value::Type::Missing) ? area().rows : rows.ToInt32();
  const std::int32_t column_count =
      columns.Is(qva::Value::Type::Missing) ? area().columns : columns.ToInt32();
  const auto resized = AreaInGrid(area().row, area().column, row_count, column_count);
  if (!resized) throw Refusal();
  return Part(*resized);
}

ObjectPtr Range::End(std::int32_t direction) {
  const SheetData& sheet = Open();
  std::int32_t down = 0;
  std::int32_t right = 0;
  switch (direction) {
    case xlUp:
      down = -1;
      break;
    case xlDown:
      down = 1;
      break;
    case xlToLeft:
      right = -1;
      break;
    case xlToRight:
      right = 1;
      break;
    default:
      throw Refusal();
  }
  std::int32_t row = area().row;
  std::int32_t column = area().column;
  const auto has_next = [&] { return AreaInGrid(row + down, column + right, 1, 1).has_value(); };
  const auto next_is_empty = [&] { return sheet.IsEmpty(row + down, column + right); };
  const auto step = [&] {
    row += down;
    column += right;
  };
  // From inside a filled run to its end; otherwise over the gap to the next filled cell or the sheet's edge.
  if (has_next() && !sheet.IsEmpty(row, column) && !next_is_empty()) {
    while (has_next() && !next_is_empty()) step();
  } else if (has_next()) {
    do step();
    while (has_next() && sheet.IsEmpty(row, column));
  }
  return Part({row, column, 1, 1});
}

ObjectPtr Range::Application() {
  Open();
  return ObjectOf<memory::Application>(application_, application_);
}

ObjectPtr Range::Worksheet() {
  Open();
  return ObjectOf<memory::Worksheet>(application_, reference_.sheet);
}

ObjectPtr Range::Name() {
  const auto workbook = OpenWorkbook(reference_.sheet->workbook);
  for (const auto* names : {&reference_.sheet->names, &workbook->names}) {
    for (const auto& name : *names) {
      const auto refers_to = FindReference(name->refers_to, *workbook, reference_.sheet);
      if (refers_to && refers_to->sheet == reference_.sheet && refers_to->areas == reference_.areas) {
        return ObjectOf<memory::Name>(application_, name);
      }
    }
  }
  throw Refusal();
}

void Range::SetName(const std::u16string& name) {
  DefineName(OpenWorkbook(reference_.sheet->workbook), nullptr, name, ReferenceFormula(reference_));
}

void Range::Calculate() {
  for (const Area& area : reference_.areas) CalculateIfManual(Open(), area);
}

bool Range::ClearContents() {
  RequireChangeable();
  for (const Area& area : reference_.areas) {
    Open().RequireWholeMergedCells(area, u"Cannot change part of a merged cell.");
  }
  for (const Area& area : reference_.areas) Open().Clear(area);
  return true;
}

std::int32_t Range::CopyFromRecordset(const ObjectPtr& data) {
  SheetData& sheet = Open();
  const ado::Recordset recordset(data);
  if (recordset.EndOfFile()) return 0;
  const qva::Value content = recordset.GetRows();
  const Array& fields_by_records = content.ToArray();
  if (fields_by_records.dimensions.size() != 2) throw Refusal();
  const std::int32_t record_count = fields_by_records.dimensions[1].count;
  const std::int32_t rows = std::min(record_count, kRowCount - area().row + 1);
  const std::int32_t columns =
      std::min(fields_by_records.dimensions[0].count, kColumnCount - area().column + 1);
  const Area target{area().row, area().column, rows, columns};
  RequireUnprotected(target);
  sheet.RequireWholeArrays(target);
  for (std::int32_t row = 0; row < rows; ++row) {
    for (std::int32_t column = 0; column < columns; ++column) {
      const auto element = static_cast<std::size_t>(column) * static_cast<std::size_t>(record_count) +
                           static_cast<std::size_t>(row);
      sheet.EnterPlain(target.row + row, target.column + column, fields_by_records.elements[element]);
    }
  }
  return rows;
}

std::vector<Area> Range::Selectable() const {
  std::vector<Area> cells = reference_.areas;
  for (Area& area : cells) area = Open().WithWholeMergedCells(area);
  return cells;
}

bool Range::Activate() {
  SheetData& sheet = Open();
  if (application_->ActiveSheet() != reference_.sheet) {
    throw Refusal(u"Activate method of Range class failed");
  }
  const std::vector<Area> cells = Selectable();
  sheet.active_row = cells.front().row;
  sheet.active_column = cells.front().column;
  // Within the selection only the active cell moves.
  const bool is_selected = std::ranges::any_of(
      sheet.selection, [&](const Area& selected) { return Around(selected, cells.front()) == selected; });
  if (!is_selected) sheet.selection = cells;
  return true;
}

bool Range::Select() {
  SheetData& sheet = Open();
  if (application_->ActiveSheet() != reference_.sheet) throw Refusal(u"Select method of Range class failed");
  sheet.selection = Selectable();
  sheet.active_row = sheet.selection.front().row;
  sheet.active_column = sheet.selection.front().column;
  return true;
}

}  // namespace qva::memory
