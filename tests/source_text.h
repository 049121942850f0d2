// Files of the source tree as text, for tests that hold lists in them against each other.
#pragma once

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/files.h"
#include "tests/test_paths.h"

namespace qva {

/// A file of the tree by its path below the root.
inline std::string SourceText(const std::filesystem::path& file) {
  return FileContent(SourceFolder() / file);
}

/// What the groups of a pattern match in a text, one by one; those of one match are joined by "_".
inline std::vector<std::string> Matches(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  std::vector<std::string> matches;
  for (std::sregex_iterator it(text.begin(), text.end(), regex), end; it != end; ++it) {
    matches.emplace_back();
    for (std::size_t group = 1; group < it->size(); ++group) {
      if (!matches.back().empty() && (*it)[group].length() > 0) matches.back() += "_";
      matches.back() += (*it)[group].str();
    }
  }
  return matches;
}

}  // namespace qva
