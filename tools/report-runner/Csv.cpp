#include "tools/report-runner/Csv.h"

#include <stdexcept>

namespace qva {

std::vector<CsvRow> ReadCsv(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  const std::string_view first = text.substr(0, text.find('\n'));
  const char separator = first.find(',') == first.npos && first.find(';') != first.npos ? ';' : ',';

  std::vector<CsvRow> rows;
  CsvRow row{.line = 1, .fields = {""}};
  int line = 1;
  int opened = 0;  // the line of the quotation mark that is not closed yet
  const auto end_row = [&] {
    if (row.fields.size() > 1 || !row.fields[0].empty()) rows.push_back(std::move(row));
    row = {.line = line, .fields = {""}};
  };
  for (std::size_t n = 0; n < text.size(); ++n) {
    const char c = text[n];
    if (c == '\n') ++line;
    if (opened != 0) {
      if (c != '"') {
        row.fields.back() += c;
      } else if (n + 1 < text.size() && text[n + 1] == '"') {
        row.fields.back() += text[++n];
      } else {
        opened = 0;
      }
    } else if (c == '"') {
      opened = line;
    } else if (c == separator) {
      row.fields.emplace_back();
    } else if (c == '\n') {
      end_row();
    } else if (c != '\r') {
      row.fields.back() += c;
    }
  }
  if (opened != 0) {
    throw std::runtime_error("line " + std::to_string(opened) + ": a quotation mark is not closed");
  }
  end_row();
  return rows;
}

std::string CsvLine(const std::vector<std::string>& fields) {
  std::string line;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) line += ',';
    if (field.find_first_of(",;\"\r\n") == field.npos) {
      line += field;
      continue;
    }
    line += '"';
    for (const char c : field) line += c == '"' ? std::string("\"\"") : std::string(1, c);
    line += '"';
  }
  return line + "\r\n";
}

}  // namespace qva
