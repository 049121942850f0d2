// Macros that are called by name from outside, as Excel calls those of its buttons.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <set>
#include <string>
#include <string_view>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// The name of a document's file, without its folder; empty before it was ever saved.
std::u16string FileNameOf(const Reference<css::frame::XModel>& document);

/// Runs a macro named as "Macro", "Module.Macro" or either with the name of an open workbook and "!" in
/// front, as in "balance.fods!cmdHelp" or "'my file.fods'!cmdHelp"; without a workbook it is the document's,
/// and also with one of `names`, which are those that the document has had, whatever other files are called;
/// one that was never saved has any name that no open file has. Names ignore letter case. What the macro
/// raises, LibreOffice shows. Raises 1004 when there is no such macro.
void RunDocumentMacro(const Reference<css::frame::XModel>& document, const std::set<std::u16string>& names,
                      std::u16string_view name);

}  // namespace qva::calc
