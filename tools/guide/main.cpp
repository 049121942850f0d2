// Writes the guide for authors of workbooks:
//   guide <source folder>                    docs/guide.md and docs/gidas.md; the doctor's findings in
//                                            docs/installation.md
//   guide <source folder> <output folder>    the pages apart: guide/ and gidas/ in the output folder
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "tools/doctor/Report.h"
#include "tools/guide/Guide.h"

namespace {

void Write(const std::filesystem::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

std::string Read(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2 && count != 3) {
    std::cerr << "usage: guide <source folder> [<output folder>]\n";
    return 2;
  }
  try {
    const std::filesystem::path sources = arguments[1];
    for (const auto& [language, name] : {std::pair(qva::GuideLanguage::English, "guide"),
                                         std::pair(qva::GuideLanguage::Lithuanian, "gidas")}) {
      if (count == 2) {
        Write(sources / "docs" / (std::string(name) + ".md"), qva::MakeGuide(sources, language));
        continue;
      }
      const std::filesystem::path folder = std::filesystem::path(arguments[2]) / name;
      std::filesystem::create_directories(folder);
      for (const qva::GuidePage& page : qva::MakeGuidePages(sources, language))
        Write(folder / (page.name + ".md"), page.text);
    }
    if (count == 2) {
      const std::filesystem::path page = sources / "docs" / "installation.md";
      Write(page, qva::doctor::WithFindingsTable(Read(page)));
    }
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "guide: " << error.what() << "\n";
    return 1;
  }
}
