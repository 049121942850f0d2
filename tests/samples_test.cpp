// What the macros of the sample reports call.
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/library_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

class SampleMacros : public LibraryTest {
 protected:
  /// The macros of all sample workbooks, without their comments.
  static std::string Macros() {
    std::string macros;
    for (const fs::directory_entry& entry : fs::directory_iterator(SourceFolder() / "samples")) {
      if (entry.path().extension() != ".fods") continue;
      std::ostringstream contents;
      contents << std::ifstream(entry.path()).rdbuf();
      const std::string workbook = contents.str();
      constexpr std::string_view kBegin = "<ooo:source-code>";
      for (std::size_t begin = workbook.find(kBegin); begin != workbook.npos;
           begin = workbook.find(kBegin, begin + 1)) {
        std::istringstream lines(workbook.substr(begin, workbook.find("</ooo:source-code>", begin) - begin));
        for (std::string line; std::getline(lines, line);) {
          const std::size_t text = line.find_first_not_of(' ');
          if (text != line.npos && line[text] != '\'') macros += line + '\n';
        }
      }
    }
    return macros;
  }

  static bool Calls(const std::string& macros, const std::string& member) {
    const std::string call = "." + member;
    for (std::size_t at = macros.find(call); at != macros.npos; at = macros.find(call, at + 1)) {
      const auto after = static_cast<unsigned char>(macros[at + call.size()]);
      if (!std::isalnum(after) && after != '_') return true;
    }
    return false;
  }
};

TEST_F(SampleMacros, CallEveryPublicOperation) {
  const std::string macros = Macros();
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    for (const Member& member : table.members()) {
      EXPECT_TRUE(Calls(macros, ToUtf8(member.name))) << ToUtf8(table.name()) << "." << ToUtf8(member.name);
    }
  }
}

TEST_F(SampleMacros, UseEveryPublicClass) {
  const std::string macros = Macros();
  for (const PublicClass& public_class : PublicClasses()) {
    const std::string name = ToUtf8(public_class.description().name());
    const bool given_by_another = name == "CToolbars" || name == "CEnvironment";
    EXPECT_TRUE(given_by_another || macros.find("CreateObject(\"QVA_Varnholt." + name + "\")") != macros.npos)
        << name;
  }
}

TEST_F(SampleMacros, ShareTheModuleOfTheBook) {
  std::set<std::string> modules;
  for (const fs::directory_entry& entry : fs::directory_iterator(SourceFolder() / "samples")) {
    if (entry.path().extension() != ".fods") continue;
    std::ostringstream contents;
    contents << std::ifstream(entry.path()).rdbuf();
    const std::string workbook = contents.str();
    const std::size_t begin = workbook.find("<ooo:module ooo:name=\"Knyga\">");
    ASSERT_NE(begin, workbook.npos) << entry.path();
    modules.insert(workbook.substr(begin, workbook.find("</ooo:module>", begin) - begin));
  }
  EXPECT_EQ(modules.size(), 1u) << "the copies differ";
}

}  // namespace
}  // namespace qva
