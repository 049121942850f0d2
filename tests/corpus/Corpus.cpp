#include "tests/corpus/Corpus.h"
#include "tests/test_paths.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

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

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream contents;
  contents << file.rdbuf();
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return contents.str();
}

std::string SourceOf(const std::string& name) {
  return Contents(Folder() / "macros" / (name + ".macro"));
}

std::string GoldenLogOf(const std::string& name) {
  return Contents(Folder() / "macros" / (name + ".log"));
}

}  // namespace qva::corpus
