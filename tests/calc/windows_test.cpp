// The library's windows in LibreOffice, worked as a user works them.
#include "tests/calc/windows_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

using testing::ElementsAre;

namespace fs = std::filesystem;

TEST_F(CalcWindows, ThePeriodIsChosenByKeyboardAndMouse) {
  StartShown("shown_period");
  Desktop::Window period = desktop.WaitForWindow(kPeriod);

  // First page: year and quarter.
  Fill(period, 180, 95, "2024");
  desktop.Click(period, 180, 125);
  desktop.Type(period, "2");
  desktop.Picture("period", period);

  // Second page: a row is typed and deleted by the button, another one is looked up.
  desktop.Click(period, 300, 20);
  desktop.Click(period, 60, 93);
  desktop.Type(period, "BALTIJA");
  desktop.Keys(period, {"Return"});
  desktop.Click(period, 70, 328);
  desktop.Click(period, 60, 93);
  desktop.Type(period, "MEDVILNE");
  desktop.Keys(period, {"Tab", "F4"});
  const Desktop::Window sets = desktop.WaitForWindow("planas$");
  desktop.Picture("lookup", sets);
  desktop.Type(sets, "iudzeto sa");
  Leave(sets, "Return");
  desktop.Click(period, 530, 93);
  desktop.Keys(period, {"alt+Down"});
  const Desktop::Window documents = desktop.WaitForWindow("dokumentai$");
  desktop.Picture("documents", documents);
  Leave(documents, "Return");
  desktop.Picture("budgets", period);
  Leave(period, "Return");
  WaitForLines(1);

  // Left by Cancel and by Escape, whatever was typed.
  period = desktop.WaitForWindow(kPeriod);
  Fill(period, 180, 95, "2020");
  desktop.Click(period, 588, 378);
  desktop.WaitUntilGone(period);
  WaitForLines(2);
  period = desktop.WaitForWindow(kPeriod);
  desktop.Click(period, 300, 20);
  desktop.Click(period, 60, 93);
  desktop.Keys(period, {"Escape", "Delete"});
  Leave(period, "Escape");
  WaitForLines(3);

  // The fourth quarter is refused; what is typed then goes into its box.
  period = desktop.WaitForWindow(kPeriod);
  Fill(period, 180, 95, "2025");
  desktop.Click(period, 180, 125);
  desktop.Keys(period, {"BackSpace"});
  desktop.Type(period, "4");
  desktop.Keys(period, {"Return"});
  const Desktop::Window refusal = desktop.WaitForWindow(kPeriod, period);
  desktop.Picture("refusal", refusal);
  Leave(refusal, "Return");
  desktop.Keys(period, {"BackSpace"});
  desktop.Type(period, "3");
  Leave(period, "Return");

  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::string kept =
      " BIUDZ 2024 2 0 2 2024-01-01 2024-03-31 2024-04-01 2024-06-30 1: MEDVILNE BIUDZ -1 ";
  const std::string row = "0  102 BIU-2024-01";
  EXPECT_THAT(
      run.lines,
      ElementsAre("edited: True" + kept + row, "edited: False" + kept + row, "edited: False" + kept + row,
                  "edited: True BIUDZ 2025 3 0 2 2025-04-01 2025-06-30 2025-07-01 2025-09-30 1: "
                  "MEDVILNE BIUDZ -1 " +
                      row));
}

TEST_F(CalcWindows, TheDialogGrowsAndKeepsItsLeastSize) {
  StartShown("shown_period");
  const Desktop::Window period = desktop.WaitForWindow(kPeriod);
  EXPECT_EQ(desktop.SizeOf(period), std::pair(640, 400));
  desktop.Resize(period, 300, 200);
  desktop.WaitFor("the least size", [&] { return desktop.SizeOf(period) == std::pair(640, 400); });
  desktop.Resize(period, 840, 500);
  // The text box is as much wider, the frame as far to the right, OK in the lower right corner.
  Fill(period, 190, 95, "2025");
  desktop.Click(period, 640, 148);  // "Mėnesio", 200 pixels to the right of where it was
  desktop.Click(period, 180, 155);
  desktop.Type(period, "5");
  desktop.Click(period, 692, 478);
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("edited: True BIUDZ 2025 0 5 3 2025-04-01 2025-04-30 2025-05-01 2025-05-31 "
                          "0:       "));
}

TEST_F(CalcWindows, DatesArePickedByMouseAndKeyboard) {
  StartShown("shown_dates");
  Desktop::Window date = desktop.WaitForWindow(kDate);
  desktop.Picture("date-picker", date);
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
  desktop.Picture("question", box);
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

TEST_F(CalcWindows, LeaveTheActiveWorkbookAsItWas) {
  StartShown("shown_two_books");
  const Desktop::Window box = desktop.WaitForWindow("Pradžia");
  const Desktop::Window other = desktop.WaitForWindow("^Untitled");
  Leave(box, "Return");
  // The other workbook's window has the focus while the box goes.
  const auto click_ok = [&](const Desktop::Window& shown) {
    desktop.Focus(other);
    const auto [width, height] = desktop.SizeOf(shown);
    desktop.Click(shown, width / 2, height - 20);
    desktop.WaitUntilGone(shown);
  };
  click_ok(desktop.WaitForWindow("Pirmas"));
  Leave(desktop.WaitForWindow(kPeriod), "Return");
  Leave(desktop.WaitForWindow(kDate), "Return");
  click_ok(desktop.WaitForWindow("Paskutinis"));
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines,
              ElementsAre("new: other", "box: own", "period: own", "own cells: BIUDZ Lapas", "events: own",
                          "date: other", "other cells: Kitas", "other events: other"));
}

TEST_F(CalcWindows, RefuseAnEditWithinAnEdit) {
  StartShown("nested_edit");
  const Desktop::Window period = desktop.WaitForWindow(kPeriod);
  WaitForLines(1);
  Fill(period, 180, 95, "2024");
  Leave(period, "Return");
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("asked again: False 400", "edited: True 2024"));
}

TEST_F(CalcWindows, LeaveNothingBehindHoweverOftenTheyAreShown) {
  const std::string build = BuildFolderWith(ExcelCallsModuleFile());
  std::map<std::string, std::string> environment = desktop.environment();
  environment["QVA_TEST_HOST"] = HostModuleFile();
  StartMacro("shown_often", {"--show", "--timeout", "400", "--build-folder", build}, environment);
  const auto close_until_pause = [&] {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(5);
    while (!desktop.HasWindow("Palaukite") && std::chrono::steady_clock::now() < deadline) {
      for (int i = 0; i < 6; ++i) {
        desktop.TryKey(std::string("Trumpas|dokumentai$|") + kDate + "|" + kPeriod, "Escape");
      }
      if (!IsRunning()) throw std::runtime_error(Finish().errors);
    }
    return desktop.WaitForWindow("Palaukite");
  };
  Desktop::Window pause = close_until_pause();
  const int windows = desktop.WindowCount();
  const std::size_t files = desktop.OpenFilesOf(pause);
  Leave(pause, "Return");
  pause = close_until_pause();
  EXPECT_EQ(desktop.WindowCount(), windows);
  EXPECT_EQ(desktop.OpenFilesOf(pause), files);
  Leave(pause, "Return");
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("a new object counts: 1", "chosen: 0", "more objects: 0"));
}

}  // namespace
}  // namespace qva
