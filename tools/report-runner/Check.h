// Whether a machine has what reports need.
#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>

#include "tools/report-runner/Office.h"
#include "tools/report-runner/ReportResult.h"

namespace qva {

struct CheckOptions {
  OfficeOptions office;
  std::filesystem::path output_folder = "out";
  std::function<bool()> interrupted = [] { return false; };
};

/// Prints a line for each thing that reports need: "ok", or "MISSING" and what to do. In the end LibreOffice
/// runs a macro that connects to the sample book, where nothing is missing that it needs. Result: Ok,
/// NoLibreOffice where something is missing, or what became of that macro.
ReportStatus CheckMachine(const CheckOptions& options, std::ostream& out);

}  // namespace qva
