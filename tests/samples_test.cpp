// What the macros of the sample reports call.
#include <cctype>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/files.h"
#include "tests/library_fixture.h"
#include "tests/source_text.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

class SampleMacros : public LibraryTest {
 protected:
  static std::vector<fs::path> Workbooks() {
    std::vector<fs::path> workbooks;
    for (const fs::directory_entry& entry : fs::directory_iterator(SourceFolder() / "samples")) {
      if (entry.path().extension() == ".fods") workbooks.push_back(entry.path());
    }
    return workbooks;
  }

  /// The macros of all sample workbooks, without their comments.
  static std::string Macros() {
    std::string macros;
    for (const fs::path& path : Workbooks()) {
      const std::string workbook = FileContent(path);
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

TEST_F(SampleMacros, ShareTheModuleThatAuthorsImport) {
  std::string module = SourceText("samples/QvaReport.bas");
  const std::string first_line = "Attribute VB_Name = \"QvaReport\"\n";
  ASSERT_EQ(module.substr(0, first_line.size()), first_line);
  module.replace(0, first_line.size(), "Option VBASupport 1\n");
  for (const fs::path& workbook : Workbooks()) {
    const std::string contents = FileContent(workbook);
    const std::string begin = "<ooo:module ooo:name=\"QvaReport\"><ooo:source-code>";
    const std::size_t at = contents.find(begin);
    ASSERT_NE(at, contents.npos) << workbook;
    std::string code = contents.substr(at + begin.size());
    code.resize(code.find("</ooo:source-code>"));
    for (const auto& [entity, character] :
         {std::pair{"&lt;", "<"}, std::pair{"&gt;", ">"}, std::pair{"&amp;", "&"}}) {
      for (std::size_t i = code.find(entity); i != code.npos; i = code.find(entity, i + 1)) {
        code.replace(i, std::string(entity).size(), character);
      }
    }
    EXPECT_EQ(code, module) << workbook << " is brought up to date by `make samples`";
  }
}

// LibreOffice takes a flat file for one of another program when it finds that one's word in its beginning.
TEST_F(SampleMacros, StandBehindWhatLibreOfficeTellsAFilesTypeBy) {
  for (const fs::path& workbook : Workbooks()) {
    EXPECT_EQ(FileContent(workbook).substr(0, 4000).find("Workbook"), std::string::npos) << workbook;
  }
}

}  // namespace
}  // namespace qva
