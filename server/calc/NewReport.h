// A new report workbook from the template.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace qva {

/// The template that comes with the component, below its folder.
inline constexpr char kTemplate[] = "samples/sablonas.fods";

/// The name of a project of macros, and with it of the report's files in the archive, for a report's title in
/// UTF-8: its letters and digits, Lithuanian letters without their marks, each word with a capital letter.
/// "Ataskaita" goes in front where it would not begin with a letter, or be "Standard" or "VBAProject", which
/// LibreOffice and Excel have for projects without a name.
std::string ProjectName(std::string_view title);

/// Writes the template's text as a new workbook: `title` takes the place of "Šablonas" wherever the template
/// has that, its project's name that of "Sablonas". False when there is a file already, which stays as it is.
/// Raises std::runtime_error when the template cannot be read, or when the workbook cannot be written; no
/// half of one is left.
bool WriteNewReport(const std::filesystem::path& template_file, const std::filesystem::path& workbook,
                    const std::string& title);

}  // namespace qva
