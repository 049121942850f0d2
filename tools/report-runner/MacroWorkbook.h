// A workbook of our own.
#pragma once

#include <string>
#include <string_view>

namespace qva {

/// The text of a flat document: an empty sheet, and in the module "Ataskaita" a procedure "Main" of these
/// lines.
std::string WorkbookWithMain(std::string_view lines);

}  // namespace qva
