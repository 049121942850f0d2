// A screen of one's own with LibreOffice's windows on it, and the hands of a user.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tools/report-runner/Process.h"

namespace qva {

/// A virtual X screen without repeating keys, which goes with its object; with a window manager or without.
/// Gestures are made by xdotool, as the keyboard and the mouse make them. What cannot be done within the time
/// limit is a failure of the test and raises std::runtime_error.
class Desktop {
 public:
  using Window = std::string;  ///< X's number of a window

  /// How long a condition may take to come true on a busy machine.
  static constexpr std::chrono::seconds kPatience{60};

  /// `folder` takes the screen's files. LibreOffice takes the screen for one of QVA_DESKTOP_DPI dots per
  /// inch, where the environment has that; 96, which is 100 %, is the default.
  explicit Desktop(std::filesystem::path folder);

  /// Starts a window manager (openbox). Windows have borders from then on, a click brings its window to the
  /// front and gives it the focus, and a window that opens may be given none.
  void Manage();

  /// What a program needs to appear here. For LibreOffice it names the backend that draws by X alone.
  const std::map<std::string, std::string>& environment() const { return environment_; }
  /// The scale of the screen, 1 being 100 %.
  double scale() const { return dpi_ / 96.0; }

  /// A visible window whose title contains `title` (a regular expression), once there is one. `other_than` is
  /// another window of such a title.
  Window WaitForWindow(const std::string& title, const Window& other_than = "");
  /// The same without waiting for its picture: it may be covered by others.
  Window FindWindow(const std::string& title, const Window& other_than = "");
  /// Whether there is such a window now.
  bool HasWindow(const std::string& title);
  /// Returns once the window is gone from the screen.
  void WaitUntilGone(const Window& window);
  /// Returns once `condition` is true; `what` tells of it in a failure.
  void WaitFor(const std::string& what, const std::function<bool()>& condition);

  /// Gives the keyboard's focus to the window.
  void Focus(const Window& window);
  /// Presses keys, such as {"Tab", "shift+Tab", "Return"}, one after the other, with the keyboard's focus on
  /// the window.
  void Keys(const Window& window, const std::vector<std::string>& keys);
  /// Presses a key in a window of such a title, if there is one now.
  void TryKey(const std::string& title, const std::string& key);
  /// Types a text with the keyboard's focus on the window.
  void Type(const Window& window, const std::string& text);
  /// Types a text wherever the keyboard's focus is.
  void TypeAnywhere(const std::string& text);
  /// Clicks a place of the window, in pixels at 100 % scale from its upper left corner.
  void Click(const Window& window, int x, int y, int times = 1);

  /// Where a window is on the screen, in real pixels.
  struct Area {
    int left = 0, top = 0, width = 0, height = 0;
    bool Contains(int x, int y) const {
      return x >= left && x < left + width && y >= top && y < top + height;
    }
  };
  Area AreaOf(const Window& window);
  std::pair<int, int> SizeOf(const Window& window) {
    const Area area = AreaOf(window);
    return {area.width, area.height};
  }
  /// Gives the window another size, as a user who drags its border; real pixels.
  void Resize(const Window& window, int width, int height);

  /// Moves the window and gives it a size; real pixels.
  void Place(const Window& window, int x, int y, int width, int height);

  /// Has LibreOffice draw its windows by GTK, as on most desktops, from its next start on; in the desktop's
  /// own look or in that of a theme.
  void UseGtk(const std::string& theme = "") {
    environment_["SAL_USE_VCLPLUGIN"] = "gtk3";
    if (!theme.empty()) environment_["GTK_THEME"] = theme;
  }
  /// How far the darkest and the lightest point of a part of a window are from each other, from 0 to 1. The
  /// part is in pixels at 100 % scale.
  double Contrast(const Window& window, const Area& part);
  /// What tells one look of a part of a window from another; the part in pixels at 100 % scale.
  std::string Look(const Window& window, const Area& part);
  /// Makes a window the active one, as its button in a task bar does. Needs a window manager.
  void Activate(const Window& window);
  /// Which of two windows covers the other where they overlap: true for `upper`. Needs a window manager.
  bool IsAbove(const Window& upper, const Window& lower);

  /// How many windows of whatever kind X has.
  int WindowCount();
  /// How many files the program of a window has open.
  std::size_t OpenFilesOf(const Window& window);
  /// Keeps a picture of a window, or of the whole screen, as <QVA_PICTURES>/libreoffice-<name>.png, where the
  /// environment names such a folder. For a scale other than 100 % the name ends with the scale.
  void Picture(const std::string& name, const Window& window = "root");

 private:
  /// What a command of the screen prints. Nothing when it fails.
  std::string Output(const std::vector<std::string>& command, bool* went_through = nullptr);
  /// What ImageMagick's `format` tells of a part of a window, whose colours have been turned to greys.
  std::string Measure(const Window& window, const Area& part, const std::string& format);
  /// Returns once the window has been painted, which LibreOffice does when it has nothing else to do: until
  /// then options and tabs do not know where they are, and take no click.
  void WaitUntilPainted(const Window& window);
  /// Returns once nothing goes on in the programs of the windows that were waited for.
  void Settle();
  std::string ProcessOf(const Window& window);
  /// Repeats a command of xdotool until it goes through: a window that has just come may refuse.
  void Do(std::vector<std::string> arguments);
  /// What must not happen twice: keys and clicks.
  void Once(std::vector<std::string> arguments);

  std::filesystem::path folder_;
  int dpi_ = 96;
  std::map<std::string, std::string> environment_;
  std::set<std::string> processes_;  ///< of the windows that were waited for
  std::unique_ptr<Process> server_;
  std::unique_ptr<Process> manager_;
};

}  // namespace qva
