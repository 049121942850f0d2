#include "server/calc/NewReport.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "platform/filesystem/native_file.h"
#include "server/calc/Xml.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr std::pair<std::string_view, char> kWithoutMarks[] = {
    {"ą", 'a'}, {"č", 'c'}, {"ę", 'e'}, {"ė", 'e'}, {"į", 'i'}, {"š", 's'},
    {"ų", 'u'}, {"ū", 'u'}, {"ž", 'z'}, {"Ą", 'A'}, {"Č", 'C'}, {"Ę", 'E'},
    {"Ė", 'E'}, {"Į", 'I'}, {"Š", 'S'}, {"Ų", 'U'}, {"Ū", 'U'}, {"Ž", 'Z'}};

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Whether each LibreOffice document or each Excel project has the name already, in any letter case.
bool IsReserved(std::string_view name) {
  std::string lower(name);
  for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return lower == "standard" || lower == "vbaproject";
}

void ReplaceAll(std::string& text, std::string_view old_text, std::string_view new_text) {
  for (std::size_t at = text.find(old_text); at != text.npos;
       at = text.find(old_text, at + new_text.size())) {
    text.replace(at, old_text.size(), new_text);
  }
}

}  // namespace

std::string ProjectName(std::string_view title) {
  std::string folded(title);
  for (const auto& [letter, plain] : kWithoutMarks) ReplaceAll(folded, letter, std::string(1, plain));
  std::string name;
  bool begins_word = true;
  for (char c : folded) {
    const bool is_letter = IsLetter(c);
    if (!is_letter && (c < '0' || c > '9')) {
      begins_word = true;
      continue;
    }
    if (begins_word && c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    name += c;
    begins_word = false;
  }
  if (name.empty() || !IsLetter(name.front()) || IsReserved(name)) name.insert(0, "Ataskaita");
  return name;
}

bool WriteNewReport(const fs::path& template_file, const fs::path& workbook, const std::string& title) {
  std::ostringstream contents;
  contents << std::ifstream(template_file).rdbuf();
  std::string text = contents.str();
  if (text.empty()) throw std::runtime_error("there is no template " + template_file.string());
  ReplaceAll(text, "Šablonas", XmlText(title));
  ReplaceAll(text, "Sablonas", ProjectName(title));

  // "x": refused when there is a file.
  const OwnedFile file = OpenFile(workbook, "wx");
  if (!file && errno == EEXIST) return false;
  if (!file) throw std::runtime_error(workbook.string() + " cannot be made: " + std::strerror(errno));
  if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() || std::fflush(file.get()) != 0) {
    const std::string reason = std::strerror(errno);
    std::error_code ignored;
    fs::remove(workbook, ignored);
    throw std::runtime_error(workbook.string() + " cannot be written: " + reason);
  }
  return true;
}

}  // namespace qva
