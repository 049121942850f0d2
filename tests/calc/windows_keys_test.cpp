// The period dialog and its lists worked by every key and button that they have.
#include "tests/calc/windows_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

TEST_F(CalcWindows, DatesOfTheUsersOwnAreTypedSteppedAndClicked) {
  StartShown("shown_period");
  const Desktop::Window period = desktop.WaitForWindow(kPeriod);
  desktop.Click(period, 440, 226);  // "Nustatytas"
  // The current period: typed, the month right behind the year, and from field to field by Tab.
  desktop.Click(period, 100, 281);
  desktop.Type(period, "20253");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "202507");
  desktop.Keys(period, {"Down"});
  // The previous one: by the arrows in the field and by the two small buttons.
  desktop.Click(period, 100, 221);
  desktop.Keys(period, {"Up", "Up", "Right", "Up"});
  desktop.Click(period, 363, 216, 2);
  desktop.Click(period, 363, 228);
  desktop.Keys(period, {"Up"});
  desktop.Picture("dates", period);
  Leave(period, "Return");
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("edited: True BIUDZ 2025 1 3 6 2024-02-01 2024-12-31 2025-03-01 2025-06-30 "
                          "0:       "));
}

TEST_F(CalcWindows, TabGoesThroughTheControlsInTheirOrder) {
  StartShown("shown_period");
  Desktop::Window period = desktop.WaitForWindow(kPeriod);
  // From the first field: the plan, year, quarter, month, the chosen option, the one date that can be
  // changed.
  desktop.Keys(period, {"ctrl+a"});
  desktop.Type(period, " GAMYBA ");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "2024");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "2");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "5");
  desktop.Keys(period, {"Tab", "Down", "Tab"});
  desktop.Type(period, "202209");
  desktop.Keys(period, {"Tab", "space"});  // past the note, which is no field, to OK
  desktop.WaitUntilGone(period);
  WaitForLines(1);

  // The same way back to the options, by the arrows to the fifth and the first one, and on to the year.
  period = desktop.WaitForWindow(kPeriod);
  desktop.Keys(period, {"shift+Tab", "shift+Tab", "shift+Tab", "shift+Tab", "shift+Tab", "Down", "Up", "Up",
                        "Up", "Up"});
  desktop.Keys(period, {"shift+Tab", "shift+Tab", "shift+Tab"});
  desktop.Type(period, "2025");
  desktop.Keys(period, {"Return"});
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("edited: True GAMYBA 2024 2 5 4 2022-04-01 2022-09-30 2024-01-01 "
                                     "2024-06-30 0:       ",
                                     "edited: True GAMYBA 2025 2 5 1 2024-01-01 2024-12-31 2025-01-01 "
                                     "2025-12-31 0:       "));
}

TEST_F(CalcWindows, CellsAreFilledByTheKeyboardAlone) {
  StartShown("shown_period");
  const Desktop::Window period = desktop.WaitForWindow(kPeriod);
  desktop.Keys(period, {"ctrl+Next", "Tab"});
  // What no book is called goes, and the user stays where it was typed.
  desktop.Type(period, "NERA");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "MEDVILNE");
  desktop.Keys(period, {"Return", "Tab"});
  desktop.Type(period, "NERA");
  desktop.Keys(period, {"Next"});
  desktop.Type(period, "PAGR");
  // The last column; F2 leaves the old text to be edited, Escape leaves it as it was.
  desktop.Keys(period, {"Tab", "End"});
  desktop.Type(period, "BIU-1");
  desktop.Keys(period, {"Return", "F2", "End"});
  desktop.Type(period, "23");
  desktop.Keys(period, {"Return", "Home"});
  desktop.Type(period, "x");
  desktop.Picture("editing", period);
  desktop.Keys(period, {"Escape"});
  // The empty last line becomes a second row.
  desktop.Keys(period, {"ctrl+End", "Home"});
  desktop.Type(period, "BALTIJA");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "PAGR");
  // From the last corner to the first, and along the row.
  desktop.Keys(period, {"Return", "ctrl+End", "ctrl+Home", "Right", "Right", "Right"});
  desktop.Type(period, "BIU-9");
  desktop.Keys(period, {"Return"});
  // What is longer than its field is refused where it was typed.
  desktop.Type(period, std::string(251, 'x'));
  desktop.Keys(period, {"Return"});
  // A lookup that confirms the account set leaves its documents.
  desktop.Keys(period, {"Left", "Left", "F4"});
  Leave(desktop.WaitForWindow("planas$"), "Return");
  desktop.Keys(period, {"ctrl+Prior", "Tab", "Tab"});
  desktop.Type(period, "2025");
  Leave(period, "Return");
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("edited: True BIUDZ 2025 0 0 1 2024-01-01 2024-12-31 2025-01-01 "
                                     "2025-12-31 2: MEDVILNE PAGR 0 0 BIU-9 0 BIU-123 BALTIJA PAGR 0 0  0 "));
}

TEST_F(CalcWindows, AListKeepsItsRowWhileItIsSearched) {
  StartShown("shown_period");
  Desktop::Window period;
  std::size_t rounds = 0;
  /// Lets the first row's account set be looked up by keys that move in the list and by a text to search.
  const auto look_up = [&](const std::vector<std::string>& moves, const std::string& text,
                           const std::vector<std::string>& keys) {
    period = desktop.WaitForWindow(kPeriod);
    desktop.Keys(period, {"ctrl+Next", "Tab"});
    if (rounds == 0) desktop.Type(period, "MEDVILNE");
    desktop.Keys(period, {"Tab", "F4"});
    const Desktop::Window sets = desktop.WaitForWindow("planas$");
    if (!moves.empty()) desktop.Keys(sets, moves);
    desktop.Type(sets, text);
    if (!keys.empty()) desktop.Keys(sets, keys);
    Leave(sets, "Return");
    Leave(period, "Return");
    WaitForLines(++rounds);
  };
  // BIUDZ, GAMYBA, O'BRIEN and PAGR: the second one of three that are left, then the first one when its own
  // row goes, then the first one's row again when all have gone.
  look_up({"Down"}, "biudzet", {});
  look_up({"Down", "Down"}, "PADALINIO", {});
  look_up({"Down"}, "nieko", {"ctrl+a", "BackSpace"});
  look_up({}, "saskaitu planas", {"End"});
  period = desktop.WaitForWindow(kPeriod);
  Fill(period, 180, 95, "2025");
  Leave(period, "Return");
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::string year_2023 =
      "edited: True BIUDZ 2023 0 0 1 2022-01-01 2022-12-31 2023-01-01 2023-12-31 1: MEDVILNE ";
  EXPECT_THAT(run.lines, ElementsAre(year_2023 + "GAMYBA -1 0  0 ", year_2023 + "GAMYBA -1 0  0 ",
                                     year_2023 + "O'BRIEN -1 0  0 ", year_2023 + "BIUDZ -1 0  0 ",
                                     "edited: True BIUDZ 2025 0 0 1 2024-01-01 2024-12-31 2025-01-01 "
                                     "2025-12-31 1: MEDVILNE BIUDZ -1 0  0 "));
}

}  // namespace
}  // namespace qva
