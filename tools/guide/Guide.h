// The guide for authors of workbooks, in English and in Lithuanian: the members come from the classes' member
// tables, the examples from macros of the corpus, the messages from the host's texts, and only the prose is
// written by hand.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace qva {

enum class GuideLanguage { English, Lithuanian };

struct GuidePage {
  std::string name;   ///< of its file, without ".md"; links name it "name.md"
  std::string title;  ///< its first heading
  std::string text;   ///< Markdown that begins with the heading
};

/// The pages in their order: "index", "tutorial", one for each class, "reference". From docs/guide/
/// (docs/guide/lt/ for Lithuanian, with the one-line descriptions in members.tsv), tests/corpus/macros/ and
/// host/QVAFormRes.txt of the source folder. Raises std::runtime_error when a class has no prose, no example
/// or a member no description, and for the description of a member that is none.
std::vector<GuidePage> MakeGuidePages(const std::filesystem::path& source_folder, GuideLanguage language);

/// The pages as one: docs/guide.md or docs/gidas.md.
std::string MakeGuide(const std::filesystem::path& source_folder, GuideLanguage language);

}  // namespace qva
