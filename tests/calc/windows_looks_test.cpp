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

INSTANTIATE_TEST_SUITE_P(Desktops, CalcLooks,
                         testing::Values(kPlain, kGtk, Look{"GtkDark", "Adwaita:dark"},
                                         Look{"GtkHighContrast", "HighContrast"}),
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
