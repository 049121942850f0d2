// Comma-separated values (RFC 4180).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qva {

struct CsvRow {
  int line = 0;  ///< of the file, from 1
  std::vector<std::string> fields;
};

/// The rows of a text. Fields stand between commas, or between semicolons where the first line has one and no
/// comma, as spreadsheets write it in countries with a decimal comma. Quotation marks around a field keep
/// separators and line ends in it, two in it are one. A byte order mark, and lines with nothing in them, are
/// passed over. Raises std::runtime_error with the line of a quotation mark that is not closed.
std::vector<CsvRow> ReadCsv(std::string_view text);

/// The fields as a line with its end, in quotation marks where they need them.
std::string CsvLine(const std::vector<std::string>& fields);

}  // namespace qva
