#include "platform/calc/CellMembers.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XChild.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/form/XFormsSupplier.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <vector>

#include "platform/calc/CellErrors.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

Reference<css::sheet::XSheetCellRange> CellsOf(const ObjectPtr& range) {
  return {ToAny(GetObject(range, u"CellRange")), UNO_QUERY_THROW};
}

css::table::CellRangeAddress AddressOf(const Reference<css::sheet::XSheetCellRange>& cells) {
  return Reference<css::sheet::XCellRangeAddressable>(cells, UNO_QUERY_THROW)->getRangeAddress();
}

/// Cells do not tell their document, but the forms that may be drawn on their sheet do.
Reference<css::util::XNumberFormats> FormatsOf(const Reference<css::sheet::XSheetCellRange>& cells) {
  const Reference<css::drawing::XDrawPageSupplier> sheet(cells->getSpreadsheet(), UNO_QUERY_THROW);
// Marked as deprecated in favour of a service that has no other way to the page of a sheet.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  const Reference<css::form::XFormsSupplier> page(sheet->getDrawPage(), UNO_QUERY_THROW);
#pragma GCC diagnostic pop
  const Reference<css::container::XChild> forms(page->getForms(), UNO_QUERY_THROW);
  return Reference<css::util::XNumberFormatsSupplier>(forms->getParent(), UNO_QUERY_THROW)
      ->getNumberFormats();
}

/// Whether a cell shows its number as True or False. LibreOffice has no other Booleans.
bool IsLogical(const Reference<css::table::XCell>& cell,
               const Reference<css::sheet::XSheetCellRange>& cells) {
  const Reference<css::beans::XPropertySet> properties(cell, UNO_QUERY_THROW);
  sal_Int32 key = 0;
  properties->getPropertyValue("NumberFormat") >>= key;
  sal_Int16 type = 0;
  FormatsOf(cells)->getByKey(key)->getPropertyValue("Type") >>= type;
  return (type & css::util::NumberFormat::LOGICAL) != 0;
}

Value TextOf(const Reference<css::table::XCell>& cell) {
  return FromUno(Reference<css::text::XText>(cell, UNO_QUERY_THROW)->getString());
}

Value ValueOf(const Reference<css::table::XCell>& cell, const Reference<css::sheet::XSheetCellRange>& cells) {
  switch (cell->getType()) {
    case css::table::CellContentType_EMPTY:
      return {};
    case css::table::CellContentType_TEXT:
      return TextOf(cell);
    case css::table::CellContentType_FORMULA: {
      if (const sal_Int32 error = cell->getError()) return CellErrorOf(error);
      sal_Int32 result = 0;
      Reference<css::beans::XPropertySet>(cell, UNO_QUERY_THROW)->getPropertyValue("FormulaResultType2") >>=
          result;
      if (result == css::sheet::FormulaResult::STRING) return TextOf(cell);
      break;
    }
    default:
      break;
  }
  const double number = cell->getValue();
  if ((number == 0 || number == 1) && IsLogical(cell, cells)) return number != 0;
  return number;
}

}  // namespace

Value CellValue2(const ObjectPtr& range, const Arguments&) {
  const auto cells = CellsOf(range);
  const auto address = AddressOf(cells);
  const sal_Int32 rows = address.EndRow - address.StartRow + 1;
  const sal_Int32 columns = address.EndColumn - address.StartColumn + 1;
  std::vector<Value> values;
  for (sal_Int32 row = 0; row < rows; ++row) {
    for (sal_Int32 column = 0; column < columns; ++column) {
      values.push_back(ValueOf(cells->getCellByPosition(column, row), cells));
    }
  }
  return values.size() == 1 ? values.front() : Array::Block(rows, columns, std::move(values));
}

Value HasArray(const ObjectPtr& range, const Arguments&) {
  const auto cells = CellsOf(range);
  const auto rows = Reference<css::sheet::XCellRangeFormula>(cells, UNO_QUERY_THROW)->getFormulaArray();
  std::size_t count = 0;
  std::size_t arrays = 0;
  for (sal_Int32 row = 0; row < rows.getLength(); ++row) {
    for (sal_Int32 column = 0; column < rows[row].getLength(); ++column) {
      ++count;
      if (!rows[row][column].startsWith("{")) continue;
      // A text may look like an array formula.
      const Reference<css::sheet::XArrayFormulaRange> cell(
          cells->getCellRangeByPosition(column, row, column, row), UNO_QUERY_THROW);
      if (!cell->getArrayFormula().isEmpty()) ++arrays;
    }
  }
  if (arrays == 0) return false;
  return arrays == count ? Value(true) : Value(Null{});
}

Value SetFormulaLocal(const ObjectPtr& range, const Arguments& arguments) {
  const auto set = [&] {
    return static_cast<UnoObject&>(*range).InvokeOwn(Access::Put, u"FormulaLocal", arguments);
  };
  if (arguments.positional.size() != 1 || arguments.positional[0] != Value(u"")) return set();
  const Reference<css::beans::XPropertySet> properties(CellsOf(range), UNO_QUERY_THROW);
  const css::uno::Any shown = properties->getPropertyValue("NumberFormat");
  set();
  // Of several cells there may be no one format.
  if (shown.hasValue() && properties->getPropertyValue("NumberFormat") != shown) {
    properties->setPropertyValue("NumberFormat", shown);
  }
  return {};
}

}  // namespace qva::calc
