// The public classes as a whole: which they are, and that all their members are tested.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/library_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

using PublicMembers = LibraryTest;

TEST_F(PublicMembers, AreCalledByTests) {
  std::string sources;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(SourceFolder() / "tests")) {
    if (!entry.is_regular_file() || entry.path().filename() == "public_members_test.cpp") continue;
    std::ostringstream contents;
    contents << std::ifstream(entry.path()).rdbuf();
    sources += contents.str();
  }
  for (const PublicClass& public_class : PublicClasses()) {
    const std::string class_name = ToUtf8(public_class.description().name());
    for (const Member& member : public_class.description().members()) {
      const std::string name = ToUtf8(member.name);
      const bool by_table = sources.find("u\"" + name + "\"") != sources.npos;
      const bool by_macro = sources.find("." + name) != sources.npos;
      EXPECT_TRUE(by_table || by_macro) << class_name << "." << name;
    }
  }
}

TEST_F(PublicMembers, StandInTheirPublishedClasses) {
  std::vector<std::string> names;
  for (const PublicClass& public_class : PublicClasses())
    names.push_back(ToUtf8(public_class.description().name()));
  EXPECT_THAT(names,
              testing::ElementsAre("gExcelObject", "CTools", "CLockScreen", "CRepPeriod", "CDatePic",
                                   "CReports", "CSaveForm", "CSetPath", "CToolbar", "CButtonProperties",
                                   "CToolbars", "CDefaultButtons", "CCommandsEvent", "CEnvironment"));
}

}  // namespace
}  // namespace qva
