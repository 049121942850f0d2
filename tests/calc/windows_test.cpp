// The library's windows in LibreOffice, worked as a user works them.
#include "tests/calc/calc_fixture.h"
#include "tests/calc/desktop.h"

namespace qva {
namespace {

using testing::ElementsAre;

constexpr char kDate[] = "Pasirinkite data";

class CalcWindows : public CalcTest {
 protected:
  /// Presses a key that ends a window, and waits for its end.
  void Leave(const Desktop::Window& window, const std::string& key) {
    desktop.Keys(window, {key});
    desktop.WaitUntilGone(window);
  }

  Desktop desktop{folder / "desktop"};
};

TEST_F(CalcWindows, DatesArePickedByMouseAndKeyboard) {
  StartMacro("shown_dates", {"--show"}, desktop.environment());
  Desktop::Window date = desktop.WaitForWindow(kDate);
  desktop.Click(date, 20, 18);      // January
  desktop.Click(date, 20, 105, 2);  // Monday of its second full week
  desktop.WaitUntilGone(date);
  date = desktop.WaitForWindow(kDate);
  desktop.Keys(date, {"Left", "Up", "Next", "Return"});
  desktop.WaitUntilGone(date);
  date = desktop.WaitForWindow(kDate);
  desktop.Keys(date, {"Right", "x", "Escape"});
  desktop.WaitUntilGone(date);
  date = desktop.WaitForWindow(kDate);
  Leave(date, "Return");

  Desktop::Window box = desktop.WaitForWindow("Klausimas");
  desktop.Keys(box, {"Tab", "space"});
  desktop.WaitUntilGone(box);
  box = desktop.WaitForWindow("Klausimas");
  Leave(box, "Return");
  box = desktop.WaitForWindow("Klausimas");
  Leave(box, "Escape");

  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("date: True 2024-01-15", "date: True 2024-03-21", "date: False 2024-02-29",
                          "date: True 2024-02-29", "answer: 2", "answer: 1", "answer: 3"));
}

}  // namespace
}  // namespace qva
