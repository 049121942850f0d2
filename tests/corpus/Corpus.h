// The files of the corpus.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace qva::corpus {

/// tests/corpus in the sources.
const std::filesystem::path& Folder();

/// The names of all macros, sorted.
std::vector<std::string> MacroNames();

/// The text of a macro, and what it logs.
std::string SourceOf(const std::string& name);
std::string GoldenLogOf(const std::string& name);

/// A section of the acceptance kit's facts.txt: what the twin takes for granted of Excel, as a macro and its
/// log.
struct Facts {
  std::string name;
  std::string macro;
  std::string log;
};
std::vector<Facts> AllFacts();

}  // namespace qva::corpus
