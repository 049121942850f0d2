// The dialogs in the looks that desktops have.
#include <set>
#include <thread>

#include "tests/calc/windows_fixture.h"

namespace qva {
namespace {

struct Look {
  const char* name;
  const char* theme;  ///< of GTK; null for LibreOffice's plain look
};

class CalcLooks : public CalcWindows, public testing::WithParamInterface<Look> {
 protected:
  CalcLooks() {
    if (GetParam().theme) desktop.UseGtk(GetParam().theme);
  }
};

std::string NameOf(const testing::TestParamInfo<Look>& look) {
  return look.param.name;
}

constexpr Look kPlain{"Plain", nullptr};
constexpr Look kGtk{"Gtk", "Adwaita"};
constexpr Look kGtkDark{"GtkDark", "Adwaita:dark"};

INSTANTIATE_TEST_SUITE_P(Desktops, CalcLooks,
                         testing::Values(kPlain, kGtk, kGtkDark, Look{"GtkHighContrast", "HighContrast"}),
                         NameOf);

class CalcProgress : public CalcLooks {};

// GTK has a clock of its own for painting.
INSTANTIATE_TEST_SUITE_P(Desktops, CalcProgress, testing::Values(kPlain, kGtk), NameOf);

TEST_P(CalcLooks, EveryTextCanBeRead) {
  StartShown("shown_period");
  const Desktop::Window period = desktop.WaitForWindow(kPeriod);
  desktop.Picture(std::string("period-") + GetParam().name, period);
  const std::pair<const char*, Desktop::Area> texts[] = {
      {"a tab", {16, 12, 160, 16}},     {"a label", {20, 84, 40, 18}},
      {"a field", {162, 88, 40, 14}},   {"an option", {436, 96, 50, 14}},
      {"a date", {266, 214, 50, 14}},   {"a date that cannot be changed", {96, 274, 50, 14}},
      {"the note", {30, 316, 300, 14}}, {"the button OK", {470, 370, 40, 16}}};
  // Where the desktop's fields are high, the form is, too.
  const double stretch = desktop.SizeOf(period).second / (400 * desktop.scale());
  const auto contrast = [&](const Desktop::Area& part) {
    return desktop.Contrast(period,
                            {part.left, static_cast<int>(part.top * stretch), part.width, part.height});
  };
  for (const auto& [name, part] : texts) EXPECT_GT(contrast(part), 0.2) << name;
  EXPECT_LT(contrast({170, 102, 40, 1}), 0.05) << "between the fields of year and quarter";
  Fill(period, 180, static_cast<int>(88 * stretch), "2025");
  Leave(period, "Return");
  EXPECT_EQ(Finish().exit_status, 0);
}

class CalcKeys : public CalcLooks {};

INSTANTIATE_TEST_SUITE_P(Desktops, CalcKeys, testing::Values(kGtk, kGtkDark), NameOf);

TEST_P(CalcKeys, EveryWindowIsWorkedWithoutTheMouse) {
  const auto keep = [&](const std::string& name, const Desktop::Window& window) {
    desktop.Picture(name + "-" + GetParam().name, window);
  };
  StartShown("shown_period");
  Desktop::Window period = desktop.WaitForWindow(kPeriod);
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "2024");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "2");
  desktop.Keys(period, {"ctrl+Next", "Tab"});
  desktop.Type(period, "MEDVILNE");
  desktop.Keys(period, {"Tab", "F4"});
  const Desktop::Window sets = desktop.WaitForWindow("planas$");
  desktop.Type(sets, "iudzeto sa");
  keep("lookup", sets);
  Leave(sets, "Return");
  desktop.Keys(period, {"End", "alt+Down"});
  const Desktop::Window documents = desktop.WaitForWindow("dokumentai$");
  keep("documents", documents);
  Leave(documents, "Return");
  keep("budgets", period);
  Leave(period, "Return");
  WaitForLines(1);

  period = desktop.WaitForWindow(kPeriod);
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "2025");
  desktop.Keys(period, {"Tab"});
  desktop.Type(period, "4");
  desktop.Keys(period, {"Return"});
  const Desktop::Window refusal = desktop.WaitForWindow(kPeriod, period);
  keep("refusal", refusal);
  Leave(refusal, "Return");
  desktop.Type(period, "3");  // what was refused is selected
  Leave(period, "Return");
  EXPECT_EQ(Finish().exit_status, 0);

  StartShown("shown_dates");
  for (int i = 0; i < 4; ++i) {
    const Desktop::Window date = desktop.WaitForWindow(kDate);
    if (i == 0) {
      keep("date-picker", date);
      EXPECT_LT(desktop.Contrast(date, {6, 8, 5, 12}), 0.05) << "beside the arrow to the month before";
      EXPECT_GT(desktop.Contrast(date, {11, 8, 12, 20}), 0.5) << "the arrow";
    }
    desktop.Keys(date, {"Left", "Up", "Next"});
    Leave(date, i == 3 ? "Escape" : "Return");
  }
  for (const char* key : {"Return", "space", "Escape"}) {
    const Desktop::Window box = desktop.WaitForWindow("Klausimas");
    if (key == std::string("Return")) keep("question", box);
    if (key == std::string("space")) desktop.Keys(box, {"Tab"});
    Leave(box, key);
  }
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::string row = "1: MEDVILNE BIUDZ -1 0  102 BIU-2024-01";
  const std::string picked = "date: True 2024-03-21";
  EXPECT_THAT(run.lines,
              testing::ElementsAre(
                  "edited: True BIUDZ 2024 2 0 2 2024-01-01 2024-03-31 2024-04-01 2024-06-30 " + row,
                  "edited: True BIUDZ 2025 3 0 2 2025-04-01 2025-06-30 2025-07-01 2025-09-30 " + row, picked,
                  picked, picked, "date: False 2024-02-29", "answer: 1", "answer: 2", "answer: 3"));
}

TEST_P(CalcProgress, ALongOperationTellsInTheStatusBarHowFarItIs) {
  StartShown("shown_progress");
  desktop.WaitForWindow("Pradžia");
  const Desktop::Window workbook = desktop.FindWindow("Calc$");
  const auto look = [&] {
    const int bottom = static_cast<int>(desktop.SizeOf(workbook).second / desktop.scale());
    return desktop.Look(workbook, {40, bottom - 24, 300, 22});  // behind the mark of a changed document
  };
  const std::string idle = look();
  desktop.TryKey("Pradžia", "Return");
  std::set<std::string> looks;
  while (!desktop.HasWindow("Pabaiga")) {
    looks.insert(look());
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    ASSERT_TRUE(IsRunning());
  }
  looks.erase(idle);
  EXPECT_GE(looks.size(), 2u) << "one text for each second";
  desktop.WaitFor("the status bar as it was", [&] { return look() == idle; });
  desktop.TryKey("Pabaiga", "Return");
  EXPECT_EQ(Finish().exit_status, 0);
}

}  // namespace
}  // namespace qva
