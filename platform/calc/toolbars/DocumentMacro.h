// Macros that are called by name from outside, as Excel calls those of its buttons.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <string_view>

namespace qva::calc {

/// Runs a macro named as "Macro", "Module.Macro" or either with the name of an open workbook and "!" in
/// front, as in "balance.fods!cmdHelp"; without a workbook it is the document's. Names ignore letter case.
/// What the macro raises, LibreOffice shows. Raises 1004 when there is no such macro.
void RunDocumentMacro(const css::uno::Reference<css::frame::XModel>& document, std::u16string_view name);

}  // namespace qva::calc
