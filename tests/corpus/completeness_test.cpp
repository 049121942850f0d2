// What the corpus as a whole must hold: every public member, and every error that a macro can meet.
#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <regex>
#include <set>

#include "tests/corpus/Corpus.h"
#include "tests/corpus/MemoryEngine.h"
#include "tests/files.h"
#include "tests/test_paths.h"

namespace qva::corpus {
namespace {

namespace fs = std::filesystem;

/// Errors that the library's sources raise and that no macro of the corpus can meet.
const std::map<std::string, std::string> kOutOfReach = {
    {"kBadFileNameOrNumber", "of the text log, which no public member writes"},
    {"kFormAlreadyDisplayed", "of a picker inside a picker, while the macro waits for the first one"},
    {"kUnsupportedAction", "of the host's list framework, which macros do not call"},
    {"kNamedArgumentNotFound", "VBScript has no named arguments"},
    {"kInternalError", "of a member table that contradicts its signature"},
    {"kAutomationFailed", "inside the reading of a toolbar's settings, which ignores errors"},
};

/// The sources of the library and of its front doors' one way into it.
std::string LibrarySources() {
  const fs::path root = SourceFolder();
  std::string sources;
  for (const char* folder : {"global", "period", "reports", "storage", "excelui"}) {
    for (const fs::directory_entry& entry : fs::directory_iterator(root / folder)) {
      if (entry.is_regular_file()) sources += FileContent(entry.path());
    }
  }
  for (const char* file : {"automation.cpp", "member_table.cpp", "member_table.h", "value.cpp"})
    sources += FileContent(root / "platform" / file);
  return sources;
}

/// The errors by the names that sources give them.
std::map<std::string, std::int32_t> ErrorNumbers() {
  const std::string header = FileContent(SourceFolder() / "platform/error.h");
  const std::regex enumerator(R"((k\w+) =\s+(-?\d+))");
  std::map<std::string, std::int32_t> numbers;
  for (std::sregex_iterator it(header.begin(), header.end(), enumerator), end; it != end; ++it)
    numbers[(*it)[1]] = std::stoi((*it)[2]);
  return numbers;
}

/// The numbers that golden logs hold.
std::set<std::int32_t> LoggedErrors() {
  std::set<std::int32_t> logged;
  const std::regex entry(R"(: error (-?\d+))");
  for (const std::string& name : MacroNames()) {
    const std::string log = GoldenLogOf(name);
    for (std::sregex_iterator it(log.begin(), log.end(), entry), end; it != end; ++it)
      logged.insert(std::stoi((*it)[1]));
  }
  return logged;
}

TEST(Corpus, CallsEveryPublicMember) {
  MemoryEngine::Members called;
  int agreeing = 0;
  for (const std::string& name : MacroNames()) {
    const auto engine = std::make_unique<MemoryEngine>(name);
    if (engine->Run() == GoldenLogOf(name)) ++agreeing;
    called.insert(engine->members().begin(), engine->members().end());
  }
  for (const PublicClass& public_class : PublicClasses()) {
    const std::string class_name = ToUtf8(public_class.description().name());
    const std::vector<Member>& members = public_class.description().members();
    for (std::size_t i = 0; i < members.size(); ++i) {
      EXPECT_TRUE(called.contains({class_name, i}))
          << class_name << "." << ToUtf8(members[i].name) << " (kind " << static_cast<int>(members[i].kind)
          << ") by no macro";
    }
  }
  std::cout << "corpus, memory: " << agreeing << " macros agree, calling " << called.size() << " members\n";
}

TEST(Corpus, MeetsEveryErrorThatTheLibraryRaises) {
  const std::map<std::string, std::int32_t> numbers = ErrorNumbers();
  const std::set<std::int32_t> logged = LoggedErrors();
  const std::string sources = LibrarySources();
  const std::regex raised(R"(AutomationError\((k\w+)( \+ (\d+))?)");
  int found = 0;
  for (std::sregex_iterator it(sources.begin(), sources.end(), raised), end; it != end; ++it) {
    const std::string name = (*it)[1];
    ASSERT_TRUE(numbers.contains(name)) << name;
    const std::int32_t number = numbers.at(name) + ((*it)[3].matched ? std::stoi((*it)[3]) : 0);
    if (kOutOfReach.contains(name)) {
      EXPECT_FALSE(logged.contains(number)) << name << " is within reach";
    } else {
      EXPECT_TRUE(logged.contains(number)) << it->str() << " by no macro";
    }
    ++found;
  }
  EXPECT_GT(found, 20);
}

TEST(Corpus, HasAGoldenLogForEachMacroAndNothingBesides) {
  const std::vector<std::string> names = MacroNames();
  EXPECT_GE(names.size(), 60u);
  for (const fs::directory_entry& entry : fs::directory_iterator(Folder() / "macros")) {
    const std::string name = entry.path().stem().string();
    EXPECT_TRUE(std::ranges::binary_search(names, name)) << entry.path() << " has no macro";
    EXPECT_TRUE(fs::exists(Folder() / "macros" / (name + ".log"))) << name << " has no log";
  }
}

}  // namespace
}  // namespace qva::corpus
