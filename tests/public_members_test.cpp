// The public classes as a whole: which members are built, and that all of them are tested.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/library_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

/// Members that do their work. Every other public member raises 445 until it is built; a member that gets
/// built moves here, and gets tests of its own.
const std::set<std::string> kBuilt = {
    "gExcelObject.*",
    "CTools.*",
    "CRepPeriod.*",
    "CDatePic.*",
    "CReports.ReadDate",
    "CReports.Init",
    "CReports.FillAttr",
    "CReports.FillBnksAcc",
    "CReports.Spauzd",
    "CReports.Locking",
    "CReports.ClearFormulas",
    "CReports.SaveDoc",
    "CReports.ColorRanges",
    "CSaveForm.*",
    "CSetPath.*",
    "CToolbar.*",
    "CButtonProperties.*",
    "CToolbars.*",
    "CDefaultButtons.*",
    "CCommandsEvent.*",
    "CEnvironment.*",
};

class PublicMembers : public LibraryTest {
 protected:
  static bool IsBuilt(const std::string& class_name, const std::string& member) {
    return kBuilt.contains(class_name + "." + member) || kBuilt.contains(class_name + ".*");
  }

  /// Arguments of the right types and number, whatever they are.
  static std::vector<Value> SomeArguments(const Member& member) {
    std::vector<Value> arguments;
    for (const Parameter& parameter : member.parameters) {
      switch (parameter.type) {
        case ParameterType::Object:
          arguments.push_back(ObjectPtr());
          break;
        case ParameterType::Text:
          arguments.push_back(u"");
          break;
        default:
          arguments.push_back(std::uint8_t{0});
      }
    }
    return arguments;
  }
};

TEST_F(PublicMembers, ThatAreNotBuiltSaySo) {
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    const std::string class_name = ToUtf8(table.name());
    for (const Member& member : table.members()) {
      const std::string name = ToUtf8(member.name);
      if (IsBuilt(class_name, name)) continue;
      const ObjectPtr object = CreatePublicObject(public_class);
      std::vector<Value> arguments = SomeArguments(member);
      EXPECT_EQ(ErrorNumberOf([&] { member.invoke(*object, arguments); }), kUnsupportedAction)
          << class_name << "." << name;
    }
  }
}

TEST_F(PublicMembers, ThatAreBuiltAreCalledByTests) {
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
      if (!IsBuilt(class_name, name)) continue;
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
