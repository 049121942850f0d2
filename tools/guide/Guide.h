// The guide for authors of workbooks: the members come from the classes' member tables, the examples from
// macros of the corpus, and only the prose is written by hand.
#pragma once

#include <filesystem>
#include <string>

namespace qva {

/// The whole text of docs/guide.md, made from docs/guide/ and tests/corpus/macros/ of the source folder.
/// Raises std::runtime_error when a class has no prose or no example.
std::string MakeGuide(const std::filesystem::path& source_folder);

}  // namespace qva
