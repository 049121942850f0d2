// The open workbooks as LibreOffice's documents, and what sheets and ranges are among them.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <vector>

#include "platform/calc/Uno.h"
#include "platform/object.h"

namespace qva::calc {

/// The sheet of a Range; null when its workbook was closed. Raises what LibreOffice raises, as all here.
Reference<css::sheet::XSpreadsheet> SpreadsheetOfRange(const ObjectPtr& range);
/// A Worksheet as LibreOffice's own sheet.
Reference<css::sheet::XSpreadsheet> SpreadsheetOf(const ObjectPtr& sheet);

/// The document of a Workbook, Worksheet, Range or Window; of an Application that of its active workbook,
/// null when none is open, and so of a Window whose Workbook nobody holds any more. Raises 438 for any other
/// object.
Reference<css::frame::XModel> DocumentOf(const ObjectPtr& object);

/// True when two worksheets stand in one document. Raises 438 for objects that are no worksheets.
bool AreInOneDocument(const ObjectPtr& sheet1, const ObjectPtr& sheet2);
/// Whether two of LibreOffice's objects are one sheet. False for sheets of closed workbooks.
bool AreOneSheet(const Reference<css::sheet::XSpreadsheet>& sheet1,
                 const Reference<css::sheet::XSpreadsheet>& sheet2);

/// The documents of all open workbooks.
std::vector<Reference<css::frame::XModel>> WorkbookDocuments();

}  // namespace qva::calc
