// A user who clicks, types and closes at random while the windows of a report are up, with a second report
// and another workbook open.
#include <cstdlib>
#include <random>

#include "tests/calc/windows_fixture.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class CalcStorm : public CalcWindows {
 protected:
  /// A whole number of the environment.
  static int Number(const char* variable, int otherwise) {
    const char* text = std::getenv(variable);
    return text ? std::stoi(text) : otherwise;
  }

  /// The sample balance sheet's workbook with the macros of the storm.
  fs::path WriteReport(const std::string& file) {
    std::string workbook = Contents(SourceFolder() / "samples/balance.fods");
    const std::string begin = "<ooo:module ooo:name=\"Ataskaita\"><ooo:source-code>",
                      end = "</ooo:source-code>";
    const std::size_t at = workbook.find(begin) + begin.size();
    const fs::path macros = SourceFolder() / "tests/calc/macros";
    workbook.replace(at, workbook.find(end, at) - at,
                     XmlText(Contents(macros / "storm.bas") + Contents(macros / "log.bas")));
    WriteFile(folder / file, workbook);
    return folder / file;
  }

  /// A number from 0 to `end` - 1.
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

  /// One thing that a user does to a workbook's window, beside the report's window in front of it.
  void Disturb(const Desktop::Window& book, const Desktop::Area& in_front) {
    switch (Below(4)) {
      case 0: {
        const Desktop::Area area = desktop.AreaOf(book);
        int x = 0, y = 0;
        do {  // a click on its OK would end the round before its time
          x = 20 + Below(440);
          y = 100 + Below(500);
        } while (in_front.Contains(area.left + x, area.top + y));
        desktop.Click(book, x, y, 1 + Below(2));
        break;
      }
      case 1:
        desktop.Type(book, "77\n");
        break;
      case 2:
        desktop.Keys(book, {Below(2) == 0 ? "ctrl+w" : "ctrl+q"});
        break;
      case 3:
        desktop.Keys(book, {"F" + std::to_string(3 + Below(8)), "Delete"});
        break;
    }
  }

  /// Waits for another line of the macro, or the end of LibreOffice: false then.
  bool GoesOn(std::size_t lines) {
    desktop.WaitFor("line " + std::to_string(lines), [&] { return Lines().size() >= lines || !IsRunning(); });
    return Lines().size() >= lines;
  }

  std::mt19937 random_{static_cast<unsigned>(Number("QVA_STORM_SEED", 1))};
};

TEST_F(CalcStorm, LeavesEveryOtherDocumentAndTheUsersProgramAsTheyWere) {
  const int rounds = Number("QVA_STORM_ROUNDS", 5);
  const fs::path report = WriteReport("storm.fods");
  WriteReport("Antra.fods");
  fs::copy_file(SourceFolder() / "samples/vat.fods", folder / "Paprasta.fods");
  std::map<std::string, std::string> environment = desktop.environment();
  environment["QVA_STORM_ROUNDS"] = std::to_string(rounds);
  environment["QVA_STORM_FOLDER"] = folder.string();
  StartWorkbook(report,
                {"--show", "--no-picture", "--timeout", std::to_string(120 + 30 * rounds), "--macro",
                 "Balansas.Ataskaita.Main"},
                environment);

  ASSERT_TRUE(GoesOn(2)) << Finish().errors;
  std::vector<Desktop::Window> books;
  for (const char* title : {"storm.fods", "Antra.fods", "Paprasta.fods"}) {
    books.push_back(desktop.WaitForWindow(title));
    desktop.Place(books.back(), 500 * static_cast<int>(books.size() - 1), 0, 490, 1000);
  }
  for (int round = 1; round <= rounds; ++round) {
    SCOPED_TRACE(round);
    const std::string title = round % 3 == 0   ? kPeriod
                              : round % 3 == 1 ? "Langas " + std::to_string(round)
                                               : kDate;
    const Desktop::Area in_front = desktop.AreaOf(desktop.WaitForWindow(title));
    for (int gestures = 1 + Below(4); gestures > 0; --gestures) {
      Disturb(books[static_cast<std::size_t>(Below(3))], in_front);
      ASSERT_TRUE(IsRunning()) << Finish().errors;
    }
    // LibreOffice may have made the window anew meanwhile.
    Leave(desktop.WaitForWindow(title), Below(2) == 0 ? "Return" : "Escape");
    ASSERT_TRUE(GoesOn(2 + static_cast<std::size_t>(round))) << Finish().errors;
    ASSERT_EQ(Lines()[1 + static_cast<std::size_t>(round)], "round " + std::to_string(round) + ": whole");
  }

  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  ASSERT_EQ(run.lines.size(), 4u + static_cast<std::size_t>(rounds));
  EXPECT_THAT(run.lines[0], HasSubstr("bars 1"));
  EXPECT_EQ(run.lines[run.lines.size() - 2], "settings: as before");
  EXPECT_EQ(run.lines.back(), "untouched: True");
}

}  // namespace
}  // namespace qva
