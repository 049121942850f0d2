// What a report needs of Excel to be printed and stored, where LibreOffice's model lacks it or does something
// else. MemberOverrides.h is the way to it.
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

/// Range.Value: an error of a single cell, which LibreOffice gives as the number 0.
Value WithCellError(const ObjectPtr& range, Value value);
/// The error that LibreOffice's code of one means; #VALUE! for one that Excel lacks.
Value CellErrorOf(std::int32_t code);
/// Range.Value = …: an error becomes its text, since a cell of LibreOffice has no errors but of formulas.
Value SetCellValue(const ObjectPtr& range, const Arguments& arguments);

}  // namespace qva::calc
