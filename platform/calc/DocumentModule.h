// The module of macros that stands behind a workbook or a sheet, as a macro passes it.
#pragma once

#include <com/sun/star/script/NativeObjectWrapper.hpp>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// The workbook or the sheet of a document module. In a workbook of Excel's own format, such as an .xlsm
/// file, `ThisWorkbook` and the sheets' code names are modules of its project; Basic tells a component no
/// more of such an object than a number, which it alone can read. So a module of one function, put into the
/// application's libraries and taken out again at once, reads it. Nothing for any other object of Basic's
/// own.
Any ObjectBehind(const css::script::NativeObjectWrapper& module);

}  // namespace qva::calc
