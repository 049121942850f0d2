// A report's toolbar, hot keys and menu command in a real LibreOffice: as its window has them without a
// display, under the mouse and the keyboard of a user, and in the user's settings afterwards: not at all.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <thread>

#include "tests/calc/desktop.h"
#include "tests/calc/toolbar_fixture.h"
#include "tools/report-runner/Process.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST_F(CalcToolbar, TheWindowFollowsTheToolbarAndForgetsIt) {
  const RunResult run = RunWorkbook(ToolbarWorkbook("toolbar_objects"), {"--no-picture"});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  const std::string title = "Ataskaita(toolbar_objects.fods):";
  const std::string own =
      " | Rodyti komentarų žymas Fiksuoti sritis | Spausdinti Spaudinio peržiūra | Mastelis "
      "Pereiti į „Excel“ Žinynas";
  EXPECT_THAT(run.lines,
              ElementsAre("no toolbar: 0", "id: 1", "new: False none, keys 0",
                          "visible: " + title + " ~Rikiuoti Taškas | Baigti" + own + ", keys 5",
                          "button hidden: " + title + " Taškas | Baigti" + own + ", keys 5",
                          "indexes: 5 6 7 8 10 11", "invisible: none, keys 0", "again: True, keys 5",
                          "restored", "menu: Grįžti į ataskaitą: Grįžti į ataskaitą", "menu: none",
                          "reset: True", "released: none, keys 0, menu none, modified False"));
}

/// Where the buttons of the toolbar lie in the window, in pixels, its bar being the third row.
constexpr int kBarRow = 88;
constexpr int kSortButton = 24;
constexpr int kDotButton = 47;
constexpr int kCommentButton = 110;
constexpr int kFreezeButton = 133;

/// The command's menu behind the last one of LibreOffice's, and the command in it.
constexpr int kMenuRow = 9;
constexpr int kMenuEntryRow = 30;
constexpr int kMenuCommand = 508;

class CalcToolbarShown : public CalcToolbar {
 protected:
  bool Has(const std::string& line) const {
    const std::vector<std::string> lines = Lines();
    return std::ranges::find(lines, line) != lines.end();
  }
  void WaitForLine(const std::string& line) {
    desktop.WaitFor("\"" + line + "\"", [&] { return Has(line); });
  }
  Desktop desktop{folder / "desktop"};
};

TEST_F(CalcToolbarShown, ButtonsKeysAndTheMenuCommandRunTheWorkbooksMacros) {
  StartWorkbook(ToolbarWorkbook("toolbar"), {"--show", "--no-picture"}, desktop.environment());
  const Desktop::Window window = desktop.WaitForWindow("toolbar.fods");
  WaitForLine("shown: 11 Ataskaita(toolbar.fods)");
  // A click that comes before the toolbar is drawn meets nothing.
  desktop.WaitFor("\"sorted\" by a click", [&] {
    desktop.Click(window, kSortButton, kBarRow);
    for (int i = 0; i < 30 && !Has("sorted"); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return Has("sorted");
  });
  const auto click = [&](int x, const std::string& line) {
    desktop.Click(window, x, kBarRow);
    WaitForLine(line);
  };
  click(kDotButton, "dot");
  const auto times = [this](const std::string& line) { return std::ranges::count(Lines(), line); };
  desktop.Keys(window, {"ctrl+k"});
  desktop.WaitFor("\"dot\" by its key", [&] { return times("dot") == 2; });
  const auto sorted = times("sorted");
  desktop.Keys(window, {"ctrl+F3", "F1"});
  WaitForLine("help");
  EXPECT_EQ(times("sorted"), sorted + 1);
  click(kFreezeButton, "frozen: True 2 $A$1");
  click(kCommentButton, "comment: True");
  click(kCommentButton, "comment: False");
  click(kFreezeButton, "frozen: False 0 $A$1");
  desktop.Click(window, kMenuCommand, kMenuRow);
  desktop.Click(window, kMenuCommand, kMenuEntryRow);
  WaitForLine("back to the report");
  // The button is hidden: its key does nothing.
  desktop.Keys(window, {"F7"});
  desktop.Keys(window, {"F4"});
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, Contains("ended"));
  EXPECT_THAT(run.lines, Not(Contains("hidden")));
}

// The report state has hidden the menu bar, to which the command is added before it is shown again.
TEST_F(CalcToolbarShown, TheMenuBarThatWasHiddenComesBackWithTheCommand) {
  StartWorkbook(ToolbarWorkbook("toolbar"),
                {"--show", "--no-picture", "--macro", "VBAProject.Ataskaita.Pereiti"}, desktop.environment());
  const Desktop::Window window = desktop.WaitForWindow("toolbar.fods");
  WaitForLine("left");
  desktop.WaitFor("the command by a click", [&] {
    desktop.Click(window, kMenuCommand, kMenuRow);
    desktop.Click(window, kMenuCommand, kMenuEntryRow);
    for (int i = 0; i < 30 && !Has("back to the report"); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return Has("back to the report");
  });
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, Contains("ended"));
}

/// Keeps the user's settings of a run: a soffice on the search path that copies its profile when it ends.
class CalcToolbarProfile : public CalcToolbarShown {
 protected:
  CalcToolbarProfile() {
    const fs::path office = fs::canonical(FindProgram("soffice").value());
    fs::create_directories(programs);
    fs::create_directory_symlink(office.parent_path() / "services", programs / "services");
    WriteFile(programs / "soffice", "#!/bin/sh\n'" + office.string() +
                                        "' \"$@\"\nstatus=$?\n"
                                        "for option; do case $option in -env:UserInstallation=file://*)\n"
                                        "  cp -r \"${option#-env:UserInstallation=file://}/user\" "
                                        "\"$QVA_TEST_PROFILE\";; esac; done\nexit $status\n");
    fs::permissions(programs / "soffice", fs::perms::owner_all);
  }

  /// Runs a procedure of the workbook on the screen; gives the files of settings, by name.
  std::map<std::string, std::string> SettingsAfter(const fs::path& workbook, const std::string& procedure) {
    const fs::path profile = folder / ("profile-" + procedure);
    std::map<std::string, std::string> environment = desktop.environment();
    environment["PATH"] = programs.string() + ":" + std::getenv("PATH");
    environment["QVA_TEST_PROFILE"] = profile.string();
    StartWorkbook(workbook, {"--show", "--no-picture", "--macro", "VBAProject.Ataskaita." + procedure},
                  environment);
    const RunResult run = Finish();
    EXPECT_EQ(run.exit_status, 0) << run.errors;
    fs::remove_all(output);
    std::map<std::string, std::string> settings;
    // But for the lines in which LibreOffice keeps the time of this run.
    std::istringstream lines(Contents(profile / "registrymodifications.xcu"));
    for (std::string line; std::getline(lines, line);) {
      if (line.find("\"LastTime") == line.npos) settings["registry"] += line + "\n";
    }
    // LibreOffice makes this folder for what users change about toolbars, menus and shortcuts.
    if (!fs::exists(profile / "config")) return settings;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(profile / "config")) {
      if (entry.is_regular_file()) {
        settings[fs::relative(entry.path(), profile).string()] = Contents(entry.path());
      }
    }
    return settings;
  }

  fs::path programs = folder / "programs";
};

TEST_F(CalcToolbarProfile, TheUsersSettingsAreThoseOfARunWithoutAToolbar) {
  const fs::path workbook = ToolbarWorkbook("toolbar_left");
  const auto plain = SettingsAfter(workbook, "Plain");
  const auto with_toolbar = SettingsAfter(workbook, "Main");
  EXPECT_THAT(Lines(), ElementsAre("plain", "left: True"));
  EXPECT_THAT(plain.at("registry"), HasSubstr("private:resource/toolbar/standardbar"))
      << "LibreOffice itself writes what it knows of its own bars";
  EXPECT_EQ(with_toolbar, plain);
}

}  // namespace
}  // namespace qva
