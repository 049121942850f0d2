// What a report needs of Excel to be printed, where LibreOffice's model lacks it or does something else.
// MemberOverrides.h is the way to it.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Worksheet.Names: LibreOffice's own, and the name "Print_Area" of a sheet that has a print area. Names that
/// are hidden stay visible in LibreOffice.
Value WorksheetNames(const ObjectPtr& sheet, const Arguments& arguments);

/// Worksheet.PrintOut: LibreOffice's own prints the active sheet, so the sheet is that meanwhile.
Value PrintOut(const ObjectPtr& sheet, const Arguments& arguments);

/// Worksheet.DisplayPageBreaks = …: nothing, there is no such display.
Value SetDisplayPageBreaks(const ObjectPtr& sheet, const Arguments& arguments);

}  // namespace qva::calc
