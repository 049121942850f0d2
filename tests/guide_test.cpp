// The guide for authors of workbooks, which is made from the member tables and must not fall behind them.
#include "tools/guide/Guide.h"
#include "tests/test_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <vector>

#include "host/HostDatabase.h"
#include "platform/date.h"
#include "server/PublicClasses.h"
#include "tests/corpus/Corpus.h"
#include "tests/corpus/MemoryEngine.h"
#include "tests/files.h"
#include "tests/host/host_test.h"
#include "tests/source_text.h"

namespace qva {
namespace {

using Language = GuideLanguage;

/// The procedures that a guide shows, by the class that they are about.
std::map<std::string, std::string> ExamplesOf(const std::string& guide, const std::string& prefix) {
  std::map<std::string, std::string> examples;
  const std::string begin = "```vb\nSub " + prefix;
  for (std::size_t at = guide.find(begin); at != guide.npos; at = guide.find(begin, at + 1)) {
    const std::size_t code = at + 6;
    const std::size_t name = at + begin.size();
    examples[guide.substr(name, guide.find('(', name) - name)] =
        guide.substr(code, guide.find("```", code) - code);
  }
  return examples;
}

/// Code without what differs between the languages: comments and the procedure's name.
std::string Statements(const std::string& example) {
  std::string statements;
  std::istringstream lines(example.substr(example.find('\n')));
  for (std::string line; std::getline(lines, line);) {
    line = line.substr(0, line.find("  ' "));
    statements += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return statements;
}

TEST(Guide, IsTheOneThatTheMemberTablesGive) {
  EXPECT_EQ(SourceText("docs/guide.md"), MakeGuide(SourceFolder(), Language::English))
      << "make docs writes it anew";
  EXPECT_EQ(SourceText("docs/gidas.md"), MakeGuide(SourceFolder(), Language::Lithuanian));
}

TEST(Guide, ListsMembersAsBasicDeclaresThem) {
  const std::string guide = MakeGuide(SourceFolder(), Language::English);
  for (const char* line :
       {"| `InitConnectEX(App As Object, objWB As Variant, [oAppBook As Object]) As Integer` |",
        "| `CheckFileName(ByRef FileName As String)` |",
        "| `sBCaption(i As Byte) As String` | Caption; read and written |", "| `VisibleToolbar As Boolean` |",
        "[sMacros As String = \"RestoreApp\"]"}) {
    EXPECT_NE(guide.find(line), guide.npos) << line;
  }
}

TEST(Guide, HasTheSamePagesInBothLanguages) {
  const auto english = MakeGuidePages(SourceFolder(), Language::English);
  const auto lithuanian = MakeGuidePages(SourceFolder(), Language::Lithuanian);
  ASSERT_EQ(english.size(), lithuanian.size());
  for (std::size_t i = 0; i < english.size(); ++i) EXPECT_EQ(english[i].name, lithuanian[i].name);
}

/// Whoever reads the pages where they are written follows the same links.
TEST(Guide, IsWrittenInPagesWhoseLinksHold) {
  const std::regex link(R"(\]\(([^)#:]+)\))");
  int found = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(SourceFolder() / "docs" / "guide")) {
    if (entry.path().extension() != ".md") continue;
    const std::string page = FileContent(entry.path());
    for (std::sregex_iterator it(page.begin(), page.end(), link), end; it != end; ++it, ++found) {
      EXPECT_TRUE(std::filesystem::is_regular_file(entry.path().parent_path() / std::string((*it)[1])))
          << entry.path() << " links " << (*it)[1];
    }
  }
  EXPECT_GT(found, 30);
}

/// Exactly what stands in the guide, pasted into a macro of the corpus, gives what the macro gives.
TEST(Guide, ShowsExamplesThatRunAsPasted) {
  const auto english = ExamplesOf(SourceText("docs/guide.md"), "Example");
  const auto lithuanian = ExamplesOf(SourceText("docs/gidas.md"), "Pavyzdys");
  ASSERT_EQ(english.size(), PublicClasses().size());
  ASSERT_EQ(lithuanian.size(), PublicClasses().size());
  for (const auto& [name, example] : english) {
    ASSERT_TRUE(lithuanian.contains(name)) << name;
    EXPECT_EQ(Statements(example), Statements(lithuanian.at(name)));
    EXPECT_EQ(example.find("Debug."), example.npos);
    for (const std::string& pasted : {example, lithuanian.at(name)}) {
      const std::string macro = corpus::SourceOf("guide_" + name);
      const std::string end = "' end of what is shown\n";
      const std::size_t first = macro.find("' shown:\n");
      const std::size_t last = macro.find(end);
      const auto engine = std::make_unique<corpus::MemoryEngine>("guide_" + name);
      EXPECT_EQ(engine->Run(macro.substr(0, first) + pasted + macro.substr(last + end.size())),
                corpus::GoldenLogOf("guide_" + name))
          << name;
    }
  }
}

/// A table's rows below a heading of the reference, each as its cells without backquotes.
using Rows = std::vector<std::vector<std::string>>;
Rows TableBelow(const std::string& page, const std::string& heading) {
  Rows rows;
  std::istringstream lines(page.substr(page.find("\n" + heading + "\n") + 1));
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line) && !line.starts_with("#")) {
    if (!line.starts_with("|")) {
      if (!rows.empty()) break;
      continue;
    }
    std::vector<std::string>& row = rows.emplace_back();
    std::istringstream cells(line.substr(2));
    for (std::string cell; std::getline(cells, cell, '|');) {
      std::erase(cell, '`');
      const std::size_t first = cell.find_first_not_of(' ');
      row.push_back(first == cell.npos ? "" : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
    }
  }
  if (rows.size() > 2) rows.erase(rows.begin(), rows.begin() + 2);
  return rows;
}

class GuideReference : public testing::TestWithParam<Language> {
 protected:
  const std::vector<GuidePage> pages_ = MakeGuidePages(SourceFolder(), GetParam());
  const std::string page_ = pages_.back().text;
  /// The heading of a section by its place, from 0.
  std::string Heading(int place) const {
    std::size_t at = page_.find("\n## ");
    while (place-- > 0) at = page_.find("\n## ", at + 1);
    return page_.substr(at + 1, page_.find('\n', at + 1) - at - 1);
  }
  /// Errors and when they come, by the class that raises them.
  std::map<std::string, Rows> ErrorsByClass() const {
    std::map<std::string, Rows> errors;
    for (const auto& row : TableBelow(page_, Heading(5))) errors[row[0]].push_back({row[1], row[2]});
    return errors;
  }
};

TEST_P(GuideReference, NamesThePeriodsCells) {
  const auto engine = std::make_unique<corpus::MemoryEngine>("guide_CRepPeriod");
  std::istringstream made(
      engine->Run("Dim p, i\n"
                  "Set p = CreateObject(\"QVA_Varnholt.CRepPeriod\")\n"
                  "p.Init ThisWorkbook.Worksheets(1)\n"
                  "For i = 1 To ThisWorkbook.Names.Count\n"
                  "  Note ThisWorkbook.Names.Item(i).Name\n"
                  "Next\n"));
  std::set<std::string> names;
  for (std::string name; std::getline(made, name);) names.insert(name);
  std::set<std::string> named;
  for (const auto& row : TableBelow(page_, Heading(0))) named.insert(row[0]);
  EXPECT_EQ(named, names);
  EXPECT_EQ(names.size(), 16u);
}

TEST_P(GuideReference, NamesTheSettingsSheetsCells) {
  const Rows rows = TableBelow(page_, Heading(2));
  ASSERT_EQ(rows.size(), 13u);
  const auto buttons_without = [&](std::size_t missing) {
    std::string macro =
        "Dim g, bars\n"
        "Set g = CreateObject(\"QVA_Varnholt.gExcelObject\")\n"
        "g.InitConnectEX Application, ThisWorkbook\n"
        "TheSheet(1).Range(\"A1\").Value = 1\n"
        "TheSheet(1).Range(\"D2\").Value = 1\n";
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (i == missing) continue;
      macro += "DefineName \"" + rows[i][0] + "\", 1, \"$" + static_cast<char>('A' + i) + "$1\"\n";
    }
    macro +=
        "Set bars = CreateObject(\"QVA_Varnholt.CToolbars\")\n"
        "Note bars.CreateToolbar(TheSheet(1))\n"
        "Set bars = Nothing\n"
        "g.ResetConnectEX 0\n";
    return std::make_unique<corpus::MemoryEngine>("guide_CToolbars")->Run(macro);
  };
  EXPECT_EQ(buttons_without(rows.size()), "1\n");
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(buttons_without(i), "0\n") << rows[i][0];
}

TEST_P(GuideReference, ShowsTheHostsTablesAsTheyAre) {
  const auto engine = std::make_unique<corpus::MemoryEngine>("guide_CTools");  // its services
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "host.sqlite";
  WriteFile(file, "");
  embedded::Database(file, embedded::Database::Mode::Write).Execute(SourceText("host/sample.sql").c_str());
  const embedded::HostDatabase database(file);
  const std::string source = SourceText("host/HostDatabase.cpp");
  const std::regex given("TableReader::Scope::");
  int tables = 0;
  for (std::size_t at = page_.find("\n### `"); at != page_.npos;
       at = page_.find("\n### `", at + 1), ++tables) {
    const std::string heading = page_.substr(at + 1, page_.find('\n', at + 1) - at - 1);
    const std::string name = heading.substr(5, heading.size() - 6);
    SCOPED_TRACE(name);
    const embedded::TableReader* table = database.FindTable(FromUtf8(name));
    ASSERT_TRUE(table);
    const Rows rows = TableBelow(page_, heading);
    const std::string key_field = name == "THDocument" ? "IDC" : name == "GLEntry" ? "Id" : "Code";
    const auto key = std::ranges::find_if(rows, [&](const auto& row) { return row[0] == key_field; });
    ASSERT_NE(key, rows.end());
    const auto record = table->Find(u"MEDVILNE", FromUtf8((*key)[3]));
    ASSERT_TRUE(record);
    ASSERT_EQ(record->size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(table->FieldPosition(FromUtf8(rows[i][0])), i) << rows[i][0];
      const Value& value = (*record)[i];
      const bool is_day = value.Is(Value::Type::Date);
      EXPECT_EQ(ToUtf8(is_day ? FormatByWindowsPattern(value.ToDate(), u"yyyy-MM-dd") : value.ToText()),
                rows[i][3])
          << rows[i][0];
    }
  }
  EXPECT_EQ(tables, std::distance(std::sregex_iterator(source.begin(), source.end(), given), {}));
}

TEST_P(GuideReference, HasTheFacesThatLibreOfficeShows) {
  const std::string source = SourceText("platform/calc/toolbars/Faces.cpp");
  const std::string faces =
      source.substr(source.find("kFaces[]"), source.find("kBuiltInCommands[]") - source.find("kFaces[]"));
  std::set<std::string> known, told;
  const std::regex entry(R"(\{(\d+), "\.uno:)");
  for (std::sregex_iterator it(faces.begin(), faces.end(), entry), end; it != end; ++it)
    known.insert((*it)[1]);
  const std::size_t begin = page_.find("`Button_FaceID`", page_.find("`Button_OnAction`"));
  const std::regex number(R"(\d+)");
  std::istringstream lines(page_.substr(begin, page_.find("\n## ", begin) - begin));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream cells(line);
    std::string cell;
    for (int place = 0; line.starts_with("|") && std::getline(cells, cell, '|'); ++place) {
      if (place % 2 == 0) continue;
      for (std::sregex_iterator it(cell.begin(), cell.end(), number), end; it != end; ++it)
        told.insert(it->str());
    }
  }
  EXPECT_EQ(told, known);
}

/// The first page tells those of every class.
TEST_P(GuideReference, HasTheErrorsOfEachPage) {
  const bool is_english = GetParam() == Language::English;
  std::map<std::string, Rows> told = {
      is_english ? std::pair("every class", TableBelow(pages_.front().text, "## Errors of every class"))
                 : std::pair("visos klasės", TableBelow(pages_.front().text, "## Visų klasių klaidos"))};
  for (const GuidePage& page : pages_) {
    if (!FindPublicClass(u"QVA_Varnholt." + FromUtf8(page.name))) continue;
    const std::string heading = is_english ? "## Errors" : "## Klaidos";
    ASSERT_NE(page.text.find("\n" + heading + "\n"), page.text.npos) << page.name;
    if (Rows rows = TableBelow(page.text, heading); !rows.empty()) told[page.name] = std::move(rows);
  }
  EXPECT_EQ(ErrorsByClass(), told);
  EXPECT_GT(told.size(), 10u);
}

/// In the rows of the class whose source raises it; what raises errors for several classes, in any row. Those
/// that no macro meets aside (tests/corpus/completeness_test.cpp says why).
TEST_P(GuideReference, HasEveryErrorThatTheLibraryRaises) {
  std::string told;
  std::map<std::string, std::string> told_of;
  for (const auto& [name, errors] : ErrorsByClass()) {
    for (const auto& row : errors) told_of[name] += " " + row[0] + " ";
    told += told_of[name];
  }
  const std::regex enumerator(R"((k\w+) =\s+(-?\d+))");
  const std::string header = SourceText("platform/error.h");
  std::map<std::string, int> numbers;
  for (std::sregex_iterator it(header.begin(), header.end(), enumerator), end; it != end; ++it)
    numbers[(*it)[1]] = std::stoi((*it)[2]);
  const std::set<std::string> out_of_reach = {"kBadFileNameOrNumber", "kUnsupportedAction",
                                              "kAutomationFailed"};
  const std::regex raised(R"(AutomationError\((k\w+)( \+ (\d+))?)");
  int found = 0;
  for (const char* folder : {"global", "period", "reports", "storage", "excelui"}) {
    for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() / folder)) {
      const std::string source = FileContent(entry.path());
      for (std::sregex_iterator it(source.begin(), source.end(), raised), end; it != end; ++it) {
        const std::string name = entry.path().stem().string();
        // A block of cells that no sheet gives, but a foreign object in its place.
        if (out_of_reach.contains((*it)[1]) || (name == "CRepPeriod" && (*it)[1] == "kTypeMismatch"))
          continue;
        const int number = numbers.at((*it)[1]) + ((*it)[3].matched ? std::stoi((*it)[3]) : 0);
        const std::string text = (number < 0 ? "−" : "") + std::to_string(std::abs(number));
        const bool is_public = FindPublicClass(u"QVA_Varnholt." + FromUtf8(name));
        EXPECT_TRUE(std::regex_search(is_public ? told_of[name] : told, std::regex("(^| )" + text + "[ ,]")))
            << entry.path() << " " << it->str();
        ++found;
      }
    }
  }
  EXPECT_GT(found, 20);
}

INSTANTIATE_TEST_SUITE_P(Languages, GuideReference, testing::Values(Language::English, Language::Lithuanian),
                         [](const auto& info) {
                           return info.param == Language::English ? "English" : "Lithuanian";
                         });

TEST(Guide, TellsTheSameErrorsInBothLanguages) {
  std::vector<std::vector<std::string>> numbers;
  for (const char* heading : {"## Errors by class", "## Klaidos pagal klasę"}) {
    auto& of_language = numbers.emplace_back();
    const Language language = numbers.size() == 1 ? Language::English : Language::Lithuanian;
    for (const auto& row : TableBelow(MakeGuidePages(SourceFolder(), language).back().text, heading)) {
      const std::string name = FindPublicClass(u"QVA_Varnholt." + FromUtf8(row[0])) ? row[0] : "every class";
      of_language.push_back(name + " " + row[1].substr(0, row[1].find_first_not_of("−0123456789, ")));
    }
  }
  EXPECT_EQ(numbers[0], numbers[1]);
  EXPECT_GT(numbers[0].size(), 30u);
}

TEST(Guide, LeadsThroughTheSameTutorialInBothLanguages) {
  std::vector<std::string> procedures;
  for (const Language language : {Language::English, Language::Lithuanian}) {
    const std::string page = MakeGuidePages(SourceFolder(), language)[1].text;
    const std::size_t begin = page.find("Private Sub RasytiTurini()");
    ASSERT_NE(begin, page.npos);
    procedures.push_back(Statements(page.substr(begin, page.find("```", begin) - begin)));
  }
  EXPECT_EQ(procedures[0], procedures[1]);
}

TEST(Guide, RefusesAFolderWithoutItsSources) {
  EXPECT_THROW(MakeGuide("/nonexistent", Language::English), std::runtime_error);
}

}  // namespace
}  // namespace qva
