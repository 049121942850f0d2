#include "platform/calc/SheetDocument.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/IndexOutOfBoundsException.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

#include "platform/automation.h"
#include "platform/calc/Uno.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {
namespace {

using css::frame::XModel;
using css::sheet::XSpreadsheet;
using css::uno::XInterface;

/// A sheet does not tell its document, but the forms that may be drawn on it do. Null for the sheet of a
/// closed workbook.
Reference<XInterface> ComponentOf(const Reference<XSpreadsheet>& sheet) {
  ObjectPtr object = MakeRef<UnoObject>(Any(sheet));
  for (const std::u16string_view step : {u"DrawPage", u"Forms", u"Parent"}) {
    if (object) object = GetObject(object, step);
  }
  return Reference<XInterface>(ToAny(object), UNO_QUERY);
}

/// The first rectangle of a range's cells.
Reference<css::sheet::XSheetCellRange> FirstArea(const Any& cells) {
  if (const Reference<css::sheet::XSheetCellRange> one{cells, UNO_QUERY}; one.is()) return one;
  const Reference<css::container::XIndexAccess> areas(cells, UNO_QUERY);
  if (!areas.is()) return {};
  try {
    return Reference<css::sheet::XSheetCellRange>(areas->getByIndex(0), UNO_QUERY);
  } catch (const css::lang::IndexOutOfBoundsException&) {
    return {};  // areas of a closed workbook
  }
}

}  // namespace

Reference<XSpreadsheet> SpreadsheetOfRange(const ObjectPtr& range) {
  const Value cells = static_cast<UnoObject&>(*range).InvokeOwn(Access::Get, u"CellRange", {});
  const Reference<css::sheet::XSheetCellRange> area = FirstArea(ToAny(cells));
  return area.is() ? area->getSpreadsheet() : Reference<XSpreadsheet>();
}

Reference<XSpreadsheet> SpreadsheetOf(const ObjectPtr& sheet) {
  return SpreadsheetOfRange(GetObject(sheet, u"Cells", {std::int32_t{1}, std::int32_t{1}}));
}

Reference<XModel> DocumentOf(const ObjectPtr& object) {
  const std::u16string type = object->TypeName();
  if (type == u"Application") {
    const Value workbook = Get(object, u"ActiveWorkbook");
    return workbook.IsNothing() ? Reference<XModel>() : DocumentOf(workbook.ToObject());
  }
  if (type == u"Window") {
    // LibreOffice's window does not hold its workbook's object, which may be gone; ours are the active ones.
    const Value workbook = Get(object, u"Parent");
    return DocumentOf(workbook.IsNothing() ? GetObject(object, u"Application") : workbook.ToObject());
  }
  if (type == u"Workbook") return DocumentOf(GetObject(object, u"Sheets", {std::int32_t{1}}));
  if (type == u"Range") return DocumentOf(GetObject(object, u"Worksheet"));
  return Reference<XModel>(ComponentOf(SpreadsheetOf(object)), UNO_QUERY_THROW);
}

bool AreInOneDocument(const ObjectPtr& sheet1, const ObjectPtr& sheet2) {
  const Reference<XInterface> document = ComponentOf(SpreadsheetOf(sheet1));
  return document.is() && document == ComponentOf(SpreadsheetOf(sheet2));
}

bool AreOneSheet(const Reference<XSpreadsheet>& sheet1, const Reference<XSpreadsheet>& sheet2) {
  const auto index = [](const Reference<XSpreadsheet>& sheet) {
    return Reference<css::sheet::XCellRangeAddressable>(sheet, UNO_QUERY_THROW)->getRangeAddress().Sheet;
  };
  const Reference<XInterface> document = ComponentOf(sheet1);
  return document.is() && document == ComponentOf(sheet2) && index(sheet1) == index(sheet2);
}

std::vector<Reference<XModel>> WorkbookDocuments() {
  std::vector<Reference<XModel>> documents;
  const auto components = css::frame::Desktop::create(Context())->getComponents()->createEnumeration();
  while (components->hasMoreElements()) {
    const Reference<css::sheet::XSpreadsheetDocument> workbook(components->nextElement(), UNO_QUERY);
    if (workbook.is()) documents.emplace_back(workbook, UNO_QUERY_THROW);
  }
  return documents;
}

}  // namespace qva::calc
