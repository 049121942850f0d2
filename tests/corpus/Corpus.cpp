#include "tests/corpus/Corpus.h"

#include <algorithm>
#include <sstream>

#include "tests/files.h"
#include "tests/test_paths.h"

namespace qva::corpus {

namespace fs = std::filesystem;

const fs::path& Folder() {
  static const fs::path folder = SourceFolder() / "tests/corpus";
  return folder;
}

std::vector<std::string> MacroNames() {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(Folder() / "macros")) {
    if (entry.path().extension() == ".macro") names.push_back(entry.path().stem().string());
  }
  std::ranges::sort(names);
  return names;
}

std::string SourceOf(const std::string& name) {
  return FileContent(Folder() / "macros" / (name + ".macro"));
}

std::string GoldenLogOf(const std::string& name) {
  return FileContent(Folder() / "macros" / (name + ".log"));
}

std::vector<Facts> AllFacts() {
  std::vector<Facts> all;
  std::istringstream lines(FileContent(SourceFolder() / "packaging/windows/acceptance/facts.txt"));
  const auto quoted = [](std::string text) {
    for (std::size_t at = 0; (at = text.find('"', at)) != text.npos; at += 2) text.insert(at, 1, '"');
    return '"' + text + '"';
  };
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    if (line.starts_with("== ")) {
      all.push_back({line.substr(3),
                     "Dim app, book, sheet, other, item, result\nOn Error Resume Next\n"
                     "Set app = TheApplication()\nSet book = TheWorkbook()\n"
                     "Set sheet = TheSheet(1)\nSet other = TheSheet(2)\n",
                     ""});
      continue;
    }
    const std::size_t arrow = line.rfind(" => ");
    if ((!line.starts_with("? ") && !line.starts_with("! ")) || arrow == line.npos) {
      all.back().macro += line + "\n";
      continue;
    }
    const std::string what = line.substr(2, arrow - 2);
    all.back().macro += line[0] == '?'
                            ? "result = Empty\nresult = " + what + "\nLogFact " + quoted(what) + ", result\n"
                            : what + "\nLogStatement " + quoted(what) + "\n";
    all.back().log += line.substr(2) + "\n";
  }
  return all;
}

}  // namespace qva::corpus
