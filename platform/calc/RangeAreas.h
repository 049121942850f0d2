// Ranges of several areas, where LibreOffice's model serves those of one.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Range.Interior and Range.Font. Those of several areas give a setting that is the same in all, and Null for
/// others; a new value goes to each.
Value RangeInterior(const ObjectPtr& range, const Arguments& arguments);
Value RangeFont(const ObjectPtr& range, const Arguments& arguments);

/// Worksheet.Range, also by a name of several areas. LibreOffice gives cells of other sheets, too, where a
/// name means them. Raises 1004 then.
Value SheetRange(const ObjectPtr& sheet, const Arguments& arguments);

/// PageSetup.PrintArea = …, also with several areas.
Value SetPrintArea(const ObjectPtr& page_setup, const Arguments& arguments);

}  // namespace qva::calc
