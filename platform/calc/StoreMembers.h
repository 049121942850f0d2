// What a report needs of Excel to be stored and found again, where LibreOffice's model lacks it or does
// something else. MemberOverrides.h is the way to it.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Workbook.FullName, which LibreOffice gives without its folder: on a drive as the library's own files have
/// it, "C:\folder\file", elsewhere the system's path.
Value WithFolder(const ObjectPtr& workbook, Value name);

/// Workbook.VBProject: an object with the Name of the document's Basic project. One that has none of its own
/// goes by its first library besides "Standard".
Value VBProject(const ObjectPtr& workbook, const Arguments& arguments);

/// Workbook.Save, which is done when it returns.
Value Save(const ObjectPtr& workbook, const Arguments& arguments);
/// Workbook.SaveAs and Workbooks.Open with paths as the library's own files have them, "C:\folder\file".
Value SaveAs(const ObjectPtr& workbook, const Arguments& arguments);
Value Open(const ObjectPtr& workbooks, const Arguments& arguments);

}  // namespace qva::calc
