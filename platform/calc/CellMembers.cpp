#include "platform/calc/CellMembers.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XChild.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/form/XFormsSupplier.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <optional>
#include <vector>

#include "platform/calc/CellErrors.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {
namespace {

Reference<css::sheet::XSheetCellRange> CellsOf(const ObjectPtr& range) {
  return {ToAny(GetObject(range, u"CellRange")), UNO_QUERY_THROW};
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

sal_Int32 ShownFormat(const Reference<css::beans::XPropertySet>& cells) {
  static const OUString& name = *new OUString("NumberFormat");
  sal_Int32 key = 0;
  cells->getPropertyValue(name) >>= key;
  return key;
}

css::table::CellRangeAddress AddressOf(const Reference<css::uno::XInterface>& cells) {
  return Reference<css::sheet::XCellRangeAddressable>(cells, UNO_QUERY_THROW)->getRangeAddress();
}

/// Some cells in parts of which each shows what it holds in one format. There are as many as there are ways
/// to show cells, however many cells there are.
std::vector<Reference<css::beans::XPropertySet>> PartsOfOneFormat(
    const Reference<css::sheet::XSheetCellRange>& cells) {
  const auto groups = Reference<css::sheet::XUniqueCellFormatRangesSupplier>(cells, UNO_QUERY_THROW)
                          ->getUniqueCellFormatRanges();
  std::vector<Reference<css::beans::XPropertySet>> parts;
  parts.reserve(static_cast<std::size_t>(groups->getCount()));
  for (sal_Int32 n = 0; n < groups->getCount(); ++n) {
    parts.emplace_back(groups->getByIndex(n), UNO_QUERY_THROW);
  }
  return parts;
}

/// Which cells show numbers as True and False. LibreOffice has no other Booleans.
class LogicalCells {
 public:
  explicit LogicalCells(const Reference<css::sheet::XSheetCellRange>& cells) : cells_(cells) {}

  bool Has(sal_Int32 row, sal_Int32 column) {
    if (marks_.empty()) Mark();
    return marks_[Position(row, column)];
  }

 private:
  void Mark() {
    all_ = AddressOf(cells_);
    marks_.resize(Position(all_.EndRow - all_.StartRow + 1, 0));
    const Reference<css::util::XNumberFormats> formats = FormatsOf(cells_);
    for (const Reference<css::beans::XPropertySet>& part : PartsOfOneFormat(cells_)) {
      sal_Int16 type = 0;
      formats->getByKey(ShownFormat(part))->getPropertyValue("Type") >>= type;
      if ((type & css::util::NumberFormat::LOGICAL) == 0) continue;
      const Reference<css::sheet::XSheetCellRanges> ranges(part, UNO_QUERY_THROW);
      for (const css::table::CellRangeAddress& range : ranges->getRangeAddresses()) MarkRange(range);
    }
  }
  void MarkRange(const css::table::CellRangeAddress& range) {
    for (sal_Int32 row = range.StartRow; row <= range.EndRow; ++row) {
      for (sal_Int32 column = range.StartColumn; column <= range.EndColumn; ++column) {
        marks_[Position(row - all_.StartRow, column - all_.StartColumn)] = true;
      }
    }
  }
  std::size_t Position(sal_Int32 row, sal_Int32 column) const {
    const sal_Int32 columns = all_.EndColumn - all_.StartColumn + 1;
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
           static_cast<std::size_t>(column);
  }

  const Reference<css::sheet::XSheetCellRange>& cells_;
  css::table::CellRangeAddress all_;
  std::vector<bool> marks_;
};

/// What a cell holds: `data` is what LibreOffice gives for it, a number, a text, or nothing for an error.
Value ValueOf(const Any& data, const Reference<css::sheet::XSheetCellRange>& cells, sal_Int32 row,
              sal_Int32 column, LogicalCells& logical_cells) {
  const auto cell = [&] { return cells->getCellByPosition(column, row); };
  double number = 0;
  if (data >>= number) {
    if (number != 0 && number != 1) return number;
    return logical_cells.Has(row, column) ? Value(number != 0) : Value(number);
  }
  OUString text;
  if (!(data >>= text)) return CellErrorOf(cell()->getError());
  if (text.isEmpty() && cell()->getType() == css::table::CellContentType_EMPTY) return {};
  return FromUno(text);
}

/// `read(element, row, column)` of the one cell, or of all as a block with both indexes from 1.
template <class T, class Read>
Value BlockOf(const Sequence<Sequence<T>>& rows, Read read) {
  const sal_Int32 columns = rows[0].getLength();
  std::vector<Value> values;
  values.reserve(static_cast<std::size_t>(rows.getLength()) * static_cast<std::size_t>(columns));
  for (sal_Int32 row = 0; row < rows.getLength(); ++row) {
    const T* elements = rows[row].getConstArray();
    for (sal_Int32 column = 0; column < columns; ++column)
      values.push_back(read(elements[column], row, column));
  }
  return values.size() == 1 ? values.front() : Array::Block(rows.getLength(), columns, std::move(values));
}

/// The elements of a block as rows of sequences, each made by `convert(element)`.
template <class T, class Convert>
Sequence<Sequence<T>> RowsOf(const Array& block, Convert convert) {
  Sequence<Sequence<T>> rows(block.dimensions[0].count);
  auto element = block.elements.begin();
  Sequence<T>* row = rows.getArray();
  for (sal_Int32 r = 0; r < rows.getLength(); ++r, ++row) {
    row->realloc(block.dimensions[1].count);
    T* cell = row->getArray();
    for (sal_Int32 c = 0; c < row->getLength(); ++c) cell[c] = convert(*element++);
  }
  return rows;
}

/// A block with an element of certain types for each cell, alone or in an array; nothing for anything else.
std::optional<Array> BlockFor(const Reference<css::sheet::XSheetCellRange>& cells, const Arguments& arguments,
                              std::initializer_list<Value::Type> types) {
  if (arguments.positional.size() != 1) return {};
  const Value& value = arguments.positional[0];
  Array block = value.Is(Value::Type::Array) ? value.AsArray() : Array{{{1, 1}, {1, 1}}, {value}};
  const auto is_allowed = [&](const Value& element) {
    return std::ranges::find(types, element.type()) != types.end();
  };
  const css::table::CellRangeAddress address = AddressOf(cells);
  const bool fits = block.dimensions.size() == 2 &&
                    block.dimensions[0].count == address.EndRow - address.StartRow + 1 &&
                    block.dimensions[1].count == address.EndColumn - address.StartColumn + 1;
  if (!fits || !std::ranges::all_of(block.elements, is_allowed)) return {};
  return block;
}

/// A number or text as LibreOffice takes it among others. The cell's format says whether it is a Boolean.
Any ToData(const Value& value) {
  if (value.Is(Value::Type::Text)) return Any(ToUno(value.As<std::u16string>()));
  return Any(value.Is(Value::Type::Boolean) ? (value.As<bool>() ? 1.0 : 0.0) : value.As<double>());
}

/// Cells that show what they hold in one format, also where it came from their formulas.
struct Shown {
  Reference<css::beans::XPropertySet> cells;
  sal_Int32 format = 0;
};

/// The formats of all cells but those of the general one.
std::vector<Shown> ShownFormats(const Reference<css::sheet::XSheetCellRange>& cells) {
  std::vector<Shown> all;
  for (const Reference<css::beans::XPropertySet>& part : PartsOfOneFormat(cells)) {
    if (const sal_Int32 format = ShownFormat(part); format != 0) all.push_back({part, format});
  }
  return all;
}

/// Lets the cells show what they hold as before. Where their formats differ by now, they give the general
/// one.
void ShowAgain(const std::vector<Shown>& all) {
  for (const Shown& shown : all) {
    if (ShownFormat(shown.cells) != shown.format) {
      shown.cells->setPropertyValue("NumberFormat", Any(shown.format));
    }
  }
}

}  // namespace

Value CellValue2(const ObjectPtr& range, const Arguments&) {
  const auto cells = CellsOf(range);
  const auto rows = Reference<css::sheet::XCellRangeData>(cells, UNO_QUERY_THROW)->getDataArray();
  LogicalCells logical_cells(cells);
  return BlockOf(rows, [&](const Any& data, sal_Int32 row, sal_Int32 column) {
    return ValueOf(data, cells, row, column, logical_cells);
  });
}

Value SetCellValue2(const ObjectPtr& range, const Arguments& arguments) {
  const auto cells = CellsOf(range);
  const auto block =
      BlockFor(cells, arguments, {Value::Type::Boolean, Value::Type::Double, Value::Type::Text});
  if (!block) return SetCellValue(range, arguments);
  const std::vector<Shown> shown = ShownFormats(cells);
  Reference<css::sheet::XCellRangeData>(cells, UNO_QUERY_THROW)->setDataArray(RowsOf<Any>(*block, ToData));
  ShowAgain(shown);
  return {};
}

Value CellFormula(const ObjectPtr& range, const Arguments&) {
  const Reference<css::sheet::XCellRangeFormula> cells(CellsOf(range), UNO_QUERY_THROW);
  return BlockOf(cells->getFormulaArray(),
                 [](const OUString& formula, sal_Int32, sal_Int32) { return Value(FromUno(formula)); });
}

Value SetCellFormula(const ObjectPtr& range, const Arguments& arguments) {
  const auto cells = CellsOf(range);
  const auto block = BlockFor(cells, arguments, {Value::Type::Text});
  if (!block) return Own(range, Access::Put, u"Formula", arguments);
  const auto formula = [](const Value& text) { return ToUno(text.As<std::u16string>()); };
  Reference<css::sheet::XCellRangeFormula>(cells, UNO_QUERY_THROW)
      ->setFormulaArray(RowsOf<OUString>(*block, formula));
  return {};
}

Value SetFormulaArray(const ObjectPtr& range, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  Reference<css::sheet::XArrayFormulaRange>(CellsOf(range), UNO_QUERY_THROW)
      ->setArrayFormula(ToUno(arguments.positional[0].ToText()));
  return {};
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
  const Any shown = properties->getPropertyValue("NumberFormat");
  set();
  // Of several cells there may be no one format.
  if (shown.hasValue() && properties->getPropertyValue("NumberFormat") != shown) {
    properties->setPropertyValue("NumberFormat", shown);
  }
  return {};
}

}  // namespace qva::calc
