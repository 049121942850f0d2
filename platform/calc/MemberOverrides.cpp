#include "platform/calc/MemberOverrides.h"

#include <utility>
#include <vector>

#include "platform/ado.h"
#include "platform/calc/CellErrors.h"
#include "platform/calc/CellMembers.h"
#include "platform/calc/FormattedArea.h"
#include "platform/calc/Preview.h"
#include "platform/calc/PrintMembers.h"
#include "platform/calc/RangeAreas.h"
#include "platform/calc/Screen.h"
#include "platform/calc/SheetDocument.h"
#include "platform/calc/SheetProtection.h"
#include "platform/calc/StoreMembers.h"
#include "platform/excel.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

/// A field's value as the cell gets it in a block.
Value ForCell(const Value& value) {
  if (value.Is(Value::Type::Null)) return {};
  // LibreOffice would read a text in a block as if it were typed.
  if (value.Is(Value::Type::Text)) return u"'" + value.As<std::u16string>();
  return value;
}

/// Range.CopyFromRecordset(Data). All records travel in one block.
Value CopyFromRecordset(const ObjectPtr& object, const Arguments& arguments) {
  if (arguments.positional.size() != 1 || !arguments.named.empty()) {
    throw AutomationError(kWrongArgumentCount);
  }
  const ado::Recordset recordset(arguments.positional[0].ToObject());
  if (recordset.EndOfFile()) return 0;
  const Value content = recordset.GetRows();
  const Array& fields_by_records = content.ToArray();
  if (fields_by_records.dimensions.size() != 2) throw AutomationError(kTypeMismatch);
  const auto fields = static_cast<std::size_t>(fields_by_records.dimensions[0].count);
  const auto records = static_cast<std::size_t>(fields_by_records.dimensions[1].count);
  std::vector<Value> cells;
  cells.reserve(records * fields);
  for (std::size_t record = 0; record < records; ++record) {
    for (std::size_t field = 0; field < fields; ++field) {
      cells.push_back(ForCell(fields_by_records.elements[field * records + record]));
    }
  }
  const auto rows = static_cast<std::int32_t>(records);
  const auto columns = static_cast<std::int32_t>(fields);
  const excel::Range target = excel::Range(object).Cells(1, 1).Resize(rows, columns);
  // LibreOffice leaves a cell as it is whose element in the block is empty.
  target.ClearContents();
  target.SetValue(Array::Block(rows, columns, std::move(cells)));
  return rows;
}

/// Application.Sheets, which LibreOffice answers for a workbook alone.
Value Sheets(const ObjectPtr& object, const Arguments& arguments) {
  return Get(excel::Application(object).ActiveWorkbook().object(), u"Sheets", arguments);
}

/// Worksheet.Parent. A sheet does not keep the object of its workbook alive: what a macro took from
/// ThisWorkbook loses it as soon as the macro uses ThisWorkbook again. The workbook is then found anew among
/// the open ones, the active one first.
Value WorkbookOf(const ObjectPtr& object, Value result) {
  if (!result.IsNothing()) return result;
  const std::u16string name = excel::Worksheet(object).Name();
  const excel::Application application(GetObject(object, u"Application"));
  // Its name alone would not do: any workbook may have a sheet of that name.
  const auto has_sheet = [&](const excel::Workbook& workbook) {
    bool found = false;
    if (workbook) {
      IgnoreErrors(
          [&] { found = AreInOneDocument(object, Get(workbook.object(), u"Sheets", {name}).ToObject()); });
    }
    return found;
  };
  const excel::Workbook active = application.ActiveWorkbook();
  if (has_sheet(active)) return active.object();
  const excel::Workbooks workbooks = application.Workbooks();
  const std::int32_t count = workbooks.Count();
  for (std::int32_t i = 1; i <= count; ++i) {
    const excel::Workbook workbook = workbooks.Item(i);
    if (has_sheet(workbook)) return workbook.object();
  }
  return result;
}

/// Worksheet.UsedRange, of which LibreOffice leaves cells out that have a format alone.
Value WithFormattedCells(const ObjectPtr& object, Value result) {
  const std::optional<CellArea> formatted = FormattedArea(GetObject(result.ToObject(), u"CellRange"));
  if (!formatted) return result;
  const auto cell = [&](std::int32_t row, std::int32_t column) {
    return excel::Range(GetObject(object, u"Cells", {row, column}));
  };
  const excel::Range corners = excel::Worksheet(object).Range(
      cell(formatted->first_row, formatted->first_column), cell(formatted->last_row, formatted->last_column));
  return excel::Worksheet(object).Range(excel::Range(result.ToObject()), corners).object();
}

constexpr Override kOverrides[] = {
    {u"Application", u"ScreenUpdating", Use::Write, &SetScreenUpdating},
    {u"Application", u"Sheets", Use::Read, &Sheets},
    {u"Application", u"StatusBar", Use::Read, &StatusBar},
    {u"Application", u"StatusBar", Use::Write, &SetStatusBar},
    {u"PageSetup", u"PrintArea", Use::Write, &SetPrintArea},
    {u"Range", u"CopyFromRecordset", Use::Read, &CopyFromRecordset},
    {u"Range", u"Font", Use::Read, &RangeFont},
    {u"Range", u"Interior", Use::Read, &RangeInterior},
    {u"Range", u"Formula", Use::Read, &CellFormula},
    {u"Range", u"Formula", Use::Write, &SetCellFormula},
    {u"Range", u"FormulaArray", Use::Write, &SetFormulaArray},
    {u"Range", u"FormulaLocal", Use::Write, &SetFormulaLocal},
    {u"Range", u"HasArray", Use::Read, &HasArray},
    {u"Range", u"Value", Use::Write, &SetCellValue},
    {u"Range", u"Value2", Use::Read, &CellValue2},
    {u"Range", u"Value2", Use::Write, &SetCellValue2},
    {u"Window", u"Caption", Use::Write, &SetCaption},
    {u"Workbook", u"Save", Use::Read, &Save},
    {u"Workbook", u"SaveAs", Use::Read, &SaveAs},
    {u"Workbook", u"VBProject", Use::Read, &VBProject},
    {u"Workbooks", u"Open", Use::Read, &Open},
    {u"Worksheet", u"DisplayPageBreaks", Use::Write, &SetDisplayPageBreaks},
    {u"Worksheet", u"Names", Use::Read, &WorksheetNames},
    {u"Worksheet", u"PrintOut", Use::Read, &PrintOut},
    {u"Worksheet", u"PrintPreview", Use::Read, &PrintPreview},
    {u"Worksheet", u"Protect", Use::Read, &Protect},
    {u"Worksheet", u"Range", Use::Read, &SheetRange},
    {u"Worksheet", u"Visible", Use::Write, &SetVisible},
};

std::span<const Override> added;

/// Makes a member's result whole.
struct Completion {
  std::u16string_view type;
  std::u16string_view member;
  Value (*function)(const ObjectPtr& object, Value result);
};

constexpr Completion kCompletions[] = {
    {u"Range", u"Value", &WithCellError},
    {u"Workbook", u"FullName", &WithFolder},
    {u"Worksheet", u"Parent", &WorkbookOf},
    {u"Worksheet", u"UsedRange", &WithFormattedCells},
};

}  // namespace

void AddOverrides(std::span<const Override> overrides) {
  added = overrides;
}

MemberOverride FindOverride(const Object& object, Access access, std::u16string_view member) {
  const Use use = access == Access::Get || access == Access::Call ? Use::Read : Use::Write;
  for (const std::span<const Override> overrides : {std::span<const Override>(kOverrides), added}) {
    for (const Override& candidate : overrides) {
      if (candidate.use == use && EqualIgnoringCase(candidate.member, member) &&
          candidate.type == object.TypeName()) {
        return candidate.function;
      }
    }
  }
  return nullptr;
}

Value Complete(const ObjectPtr& object, std::u16string_view member, Value result) {
  for (const Completion& candidate : kCompletions) {
    if (EqualIgnoringCase(candidate.member, member) && candidate.type == object->TypeName()) {
      return candidate.function(object, std::move(result));
    }
  }
  return result;
}

}  // namespace qva::calc
