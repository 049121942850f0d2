// What a user can do while one of the library's windows is shown in LibreOffice: nothing, in any document.
#include "tests/calc/windows_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

/// The screens on which users meet the windows.
enum class Screen { Plain, Managed, Gtk };

class CalcModality : public CalcWindows, public testing::WithParamInterface<Screen> {
 protected:
  CalcModality() {
    if (GetParam() != Screen::Plain) desktop.Manage();
    if (GetParam() == Screen::Gtk) desktop.UseGtk();
  }
};

INSTANTIATE_TEST_SUITE_P(Screens, CalcModality, testing::Values(Screen::Plain, Screen::Managed, Screen::Gtk),
                         [](const auto& screen) {
                           return screen.param == Screen::Plain     ? "WithoutWindowManager"
                                  : screen.param == Screen::Managed ? "WithWindowManager"
                                                                    : "WithGtk";
                         });

TEST_P(CalcModality, CoversEveryDocumentAndGivesTheCallersBack) {
  StartShown("shown_modal");
  const Desktop::Window start = desktop.WaitForWindow("Pradžia");
  const Desktop::Window other = desktop.WaitForWindow("^Untitled");
  Leave(start, "Return");
  if (GetParam() != Screen::Plain) desktop.Activate(desktop.FindWindow("shown_modal"));
  /// A window of the library, while which the user tries to type into the other workbook.
  const auto show = [&](const std::string& title) {
    const Desktop::Window window = desktop.WaitForWindow(title);
    if (GetParam() != Screen::Plain) desktop.Activate(other);
    desktop.Click(other, 300, 500);
    // Only of GTK's dialogs does a window manager know that they come first.
    if (GetParam() == Screen::Gtk) {
      desktop.WaitFor("the window in front", [&] { return desktop.IsAbove(window, other); });
    }
    desktop.TypeAnywhere("77");
    return window;
  };
  Leave(show("Langas 1"), "Return");
  Leave(show(kDate), "Escape");
  Leave(show("Langas 2"), "Return");
  Leave(show(kDate), "Return");
  // What was disabled works again.
  Leave(desktop.WaitForWindow("Pabaiga"), "Return");
  desktop.Type(other, "77");
  desktop.Keys(other, {"Return"});
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::string box_line = "box: Lapas Lapas $A$1";
  const std::string date_line = "date: Lapas Lapas $A$1";
  EXPECT_THAT(run.lines,
              ElementsAre(box_line, date_line, box_line, date_line, "other: Kitas Kitas $A$1", "typed"));
}

}  // namespace
}  // namespace qva
