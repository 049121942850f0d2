// The user's registry in LibreOffice: how it is replaced, and what becomes of a mistake in it.
#include <algorithm>
#include <sstream>

#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

class CalcRegistry : public CalcTest {
 protected:
  /// Runs a macro with a registry, which connects to the first of the sample companies, and a host database
  /// of these names in a folder of their own.
  RunResult RunWithFiles(const std::string& macro, const std::string& registry, const std::string& database) {
    fs::create_directory(files);
    WriteFile(files / registry,
              "Windows Registry Editor Version 5.00\n\n"
              "[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Quillon Enterprise\\Forms\\MDI]\n"
              "\"P0\"=\"MEDVILNE\"\n\n"
              "[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Quillon Enterprise\\General]\n"
              "\"AppPath\"=\"C:\\\\Quillon\"\n");
    StartMacro(macro, {},
               {{"LD_PRELOAD", FileCallsLibrary()},
                {"QVA_TEST_FILES", files.string()},
                {"QVA_TEST_FILE_CALLS", (folder / "calls.txt").string()},
                {"QVA_TEST_REGISTRY", (files / registry).string()},
                {"QVA_TEST_DATABASE", (files / database).string()}});
    return Finish();
  }

  /// What the run gave to fsync and rename, from the step before the file was renamed to its name to the one
  /// after it.
  std::vector<std::string> Replacing(const fs::path& file) const {
    std::vector<std::string> calls;
    std::istringstream lines(Contents(folder / "calls.txt"));
    for (std::string line; std::getline(lines, line);) calls.push_back(line);
    const auto renamed = std::ranges::find_if(calls, [&](const std::string& call) {
      return call.starts_with("rename ") && call.ends_with(" " + file.string());
    });
    if (renamed == calls.end() || renamed == calls.begin() || renamed + 1 == calls.end()) return calls;
    return {renamed - 1, renamed + 2};
  }

  static std::ptrdiff_t LineCount(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
  }

  const fs::path files = folder / "files";
};

TEST_F(CalcRegistry, IsReplacedOnTheDiskHoweverLongItsNameAndTellsAMistakeOnce) {
  const std::string registry(249, 'r'), database(249, 'd');
  const RunResult run = RunWithFiles("registry", registry, database);
  EXPECT_THAT(run.lines, ElementsAre("connected: MEDVILNE", "added: True", "with a mistake: False False"));
  EXPECT_EQ(run.exit_status, 0) << run.errors;

  const std::vector<std::string> calls = Replacing(files / registry);
  ASSERT_EQ(calls.size(), 3u) << Contents(folder / "calls.txt");
  const std::string fresh = calls[0].substr(calls[0].find(' ') + 1);
  EXPECT_THAT(calls, ElementsAre("fsync " + fresh, "rename " + fresh + " " + (files / registry).string(),
                                 "fsync " + files.string()));

  const std::string content = Contents(files / registry);
  EXPECT_THAT(content, EndsWith("\"PATH\"=\"C:\\\\Quillon\\\\Varnholt\"\n\"Kelias\"=C:\\be kabučių\n"));
  const std::string told = "eilutėje " + std::to_string(LineCount(content)) + " yra klaida";
  EXPECT_THAT(run.messages, HasSubstr(told));
  EXPECT_EQ(run.messages.find("yra klaida"), run.messages.rfind("yra klaida")) << "told more than once";
  EXPECT_EQ(std::distance(fs::directory_iterator(files), {}), 3)
      << "something else than registry, lock and database";
}

}  // namespace
}  // namespace qva
