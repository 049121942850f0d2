#include "platform/calc/SheetDocument.h"

#include <com/sun/star/uno/XInterface.hpp>

#include "platform/automation.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {
namespace {

using css::uno::Reference;
using css::uno::XInterface;

/// A sheet does not tell its document, but the forms that may be drawn on it do.
Reference<XInterface> ComponentOf(const ObjectPtr& sheet) {
  ObjectPtr object = GetObject(sheet, u"Cells", {std::int32_t{1}, std::int32_t{1}});
  for (const std::u16string_view step : {u"CellRange", u"Spreadsheet", u"DrawPage", u"Forms", u"Parent"}) {
    object = GetObject(object, step);
  }
  return Reference<XInterface>(ToAny(object), css::uno::UNO_QUERY);
}

}  // namespace

Reference<css::frame::XModel> DocumentOfSheet(const ObjectPtr& sheet) {
  return Reference<css::frame::XModel>(ComponentOf(sheet), css::uno::UNO_QUERY_THROW);
}

bool AreInOneDocument(const ObjectPtr& sheet1, const ObjectPtr& sheet2) {
  const Reference<XInterface> document = ComponentOf(sheet1);
  return document.is() && document == ComponentOf(sheet2);
}

}  // namespace qva::calc
