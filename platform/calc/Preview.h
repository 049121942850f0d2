// LibreOffice's print preview, which takes the place of a window's cells.
#pragma once

#include <com/sun/star/frame/XModel.hpp>

#include "platform/automation.h"
#include "platform/calc/Uno.h"

namespace qva::calc {

/// Whether the window of a workbook shows the preview.
bool ShowsPreview(const Reference<css::frame::XModel>& document);

/// Brings the cells back into the window of a workbook that shows the preview.
void LeavePreview(const Reference<css::frame::XModel>& document);

/// Worksheet.PrintPreview: turns the window into LibreOffice's preview of the sheet when the macro gives way
/// or ends, and does not wait for its end.
Value PrintPreview(const ObjectPtr& sheet, const Arguments& arguments);

/// Worksheet.Visible = …: a preview of the sheet that is still to come is shown before the sheet is hidden.
Value SetVisible(const ObjectPtr& sheet, const Arguments& arguments);

}  // namespace qva::calc
