#include "tests/calc/desktop.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tests/files.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

/// Whether a process sleeps, and how much of the processor it has used.
struct Activity {
  bool sleeps = true;
  long ticks = 0;
  bool operator==(const Activity&) const = default;
};

/// A process that is gone sleeps.
Activity ActivityOf(const std::string& process) {
  const std::string stat = FileContent("/proc/" + process + "/stat", "");
  const std::size_t name_end = stat.rfind(')');
  if (name_end == stat.npos) return {};
  std::istringstream fields(stat.substr(name_end + 1));
  std::string state, field;
  fields >> state;
  for (int i = 4; i < 14; ++i) fields >> field;  // up to the times, fields 14 and 15 of proc(5)
  long user = 0, system = 0;
  fields >> user >> system;
  return {state != "R" && state != "D", user + system};
}

}  // namespace

Desktop::Desktop(fs::path folder) : folder_(std::move(folder)) {
  if (const char* dpi = std::getenv("QVA_DESKTOP_DPI")) dpi_ = std::stoi(dpi);
  fs::create_directories(folder_);
  const fs::path number = folder_ / "display";
  // The server itself looks for a number that is free and writes it when it is ready.
  server_ = std::make_unique<Process>(
      std::vector<std::string>{
          "sh", "-c",
          "exec Xvfb -displayfd 3 -screen 0 1500x1100x24 -nolisten tcp -noreset -r 3> '" + number.string() +
              "'"},
      std::map<std::string, std::string>{}, folder_ / "display.txt");
  WaitFor("the screen", [&] { return FileContent(number, "").ends_with('\n'); });
  std::string display = FileContent(number, "");
  display.pop_back();
  environment_ = {{"DISPLAY", ":" + display},
                  {"SAL_USE_VCLPLUGIN", "gen"},
                  {"SAL_FORCEDPI", std::to_string(dpi_)},
                  {"XAUTHORITY", "/dev/null"}};
}

void Desktop::Manage() {
  std::map<std::string, std::string> environment = environment_;
  environment["XDG_CONFIG_HOME"] = folder_.string();
  manager_ = std::make_unique<Process>(
      std::vector<std::string>{"openbox", "--config-file", "/etc/xdg/openbox/rc.xml"}, environment,
      folder_ / "manager.txt");
  WaitFor("the window manager", [&] {
    return Output({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"}).find("window id") != std::string::npos;
  });
}

void Desktop::Activate(const Window& window) {
  Do({"windowactivate", window});
  Settle();
}

bool Desktop::IsAbove(const Window& upper, const Window& lower) {
  // From the lowest to the highest, in hexadecimal.
  std::string stack = Output({"xprop", "-root", "_NET_CLIENT_LIST_STACKING"});
  std::ranges::replace(stack, '\n', ',');
  const auto place = [&](const Window& window) {
    std::ostringstream number;
    number << "0x" << std::hex << std::stoul(window) << ',';
    const std::size_t found = stack.find(number.str());
    if (found == stack.npos) throw std::runtime_error("The window manager does not know a window: " + stack);
    return found;
  };
  return place(upper) > place(lower);
}

std::string Desktop::Output(const std::vector<std::string>& command, bool* went_through) {
  const fs::path output = folder_ / "output.txt";
  std::vector<std::string> arguments = {"sh", "-c", "exec \"$@\" > '" + output.string() + "'", "sh"};
  arguments.insert(arguments.end(), command.begin(), command.end());
  Process process(arguments, environment_, folder_ / "errors.txt");
  const bool ok = process.Wait(kPatience) == 0;
  if (went_through) *went_through = ok;
  return ok ? FileContent(output, "") : std::string();
}

void Desktop::Do(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "xdotool");
  std::string what;
  for (const std::string& argument : arguments) what += argument + " ";
  WaitFor(what, [&] {
    bool went_through = false;
    Output(arguments, &went_through);
    // xdotool goes on after X's refusals and only prints them.
    return went_through && FileContent(folder_ / "errors.txt", "").find("rror") == std::string::npos;
  });
}

void Desktop::Once(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "xdotool");
  bool went_through = false;
  Output(arguments, &went_through);
  if (!went_through) throw std::runtime_error("xdotool could not " + arguments[1]);
}

void Desktop::WaitFor(const std::string& what, const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) {
      const std::string complaint = FileContent(folder_ / "errors.txt", "");
      const fs::path picture = fs::temp_directory_path() / "qva-desktop-failure.png";
      if (!environment_.empty()) Output({"import", "-window", "root", picture.string()});
      throw std::runtime_error("Waited in vain for: " + what + "; the screen is in " + picture.string() +
                               "; the last complaint: " + complaint);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
  }
}

Desktop::Window Desktop::FindWindow(const std::string& title, const Window& other_than) {
  Window window;
  WaitFor("a window \"" + title + "\"", [&] {
    std::istringstream lines(Output({"xdotool", "search", "--onlyvisible", "--name", title}));
    for (std::string line; std::getline(lines, line);) {
      if (line != other_than) window = line;
    }
    return !window.empty();
  });
  processes_.insert(ProcessOf(window));
  return window;
}

Desktop::Window Desktop::WaitForWindow(const std::string& title, const Window& other_than) {
  const Window window = FindWindow(title, other_than);
  WaitUntilPainted(window);
  Settle();
  // A field that has just got the focus takes the first click of another one for nothing for a moment.
  std::this_thread::sleep_for(std::chrono::milliseconds(400));
  return window;
}

void Desktop::WaitUntilPainted(const Window& window) {
  std::string last;
  WaitFor("a window's picture", [&] {
    std::string picture = Output({"import", "-window", window, "-depth", "8", "gray:-"});
    const bool is_painted = picture.find_first_not_of(picture.substr(0, 1)) != picture.npos;
    return is_painted && std::exchange(last, picture) == picture;
  });
}

bool Desktop::HasWindow(const std::string& title) {
  return !Output({"xdotool", "search", "--onlyvisible", "--name", title}).empty();
}

void Desktop::WaitUntilGone(const Window& window) {
  WaitFor("the end of a window", [&] {
    bool known = false;
    const std::string state = Output({"xwininfo", "-id", window, "-stats"}, &known);
    return !known || state.find("IsViewable") == std::string::npos;
  });
}

void Desktop::Settle() {
  // What a gesture sets off goes through several queues of the screen and of LibreOffice; while anything is
  // in one of them, one of the two works, or waits for the processor.
  int quiet = 0;
  std::vector<Activity> last;
  WaitFor("the end of what a gesture set off", [&] {
    std::vector<Activity> now;
    for (const std::string& process : processes_) now.push_back(ActivityOf(process));
    const bool sleeps = std::ranges::all_of(now, &Activity::sleeps);
    quiet = sleeps && now == last ? quiet + 1 : 0;
    last = std::move(now);
    return quiet >= 4;
  });
}

void Desktop::Focus(const Window& window) {
  // A refused focus must not send keys elsewhere.
  Do({"windowfocus", "--sync", window});
}

void Desktop::Keys(const Window& window, const std::vector<std::string>& keys) {
  Focus(window);
  std::vector<std::string> arguments = {"key", "--delay", "20"};
  arguments.insert(arguments.end(), keys.begin(), keys.end());
  Once(std::move(arguments));
  Settle();
}

void Desktop::TryKey(const std::string& title, const std::string& key) {
  Output({"xdotool", "search", "--onlyvisible", "--name", title, "windowfocus", "--sync", "key", key});
}

void Desktop::Type(const Window& window, const std::string& text) {
  Focus(window);
  TypeAnywhere(text);
}

void Desktop::TypeAnywhere(const std::string& text) {
  Once({"type", "--delay", "20", "--", text});
  Settle();
}

void Desktop::Click(const Window& window, int x, int y, int times) {
  const auto pixels = [&](int length) { return std::to_string(static_cast<int>(length * scale())); };
  Do({"mousemove", "--window", window, pixels(x), pixels(y)});
  Once({"click", "--repeat", std::to_string(times), "--delay", "40", "1"});
  Settle();
}

Desktop::Area Desktop::AreaOf(const Window& window) {
  std::istringstream geometry(Output({"xdotool", "getwindowgeometry", "--shell", window}));
  Area area;
  const std::pair<const char*, int*> fields[] = {
      {"X=", &area.left}, {"Y=", &area.top}, {"WIDTH=", &area.width}, {"HEIGHT=", &area.height}};
  for (std::string line; std::getline(geometry, line);) {
    for (const auto& [name, field] : fields) {
      if (line.starts_with(name)) *field = std::stoi(line.substr(std::string_view(name).size()));
    }
  }
  return area;
}

void Desktop::Resize(const Window& window, int width, int height) {
  Do({"windowsize", window, std::to_string(width), std::to_string(height)});
}

void Desktop::Place(const Window& window, int x, int y, int width, int height) {
  Resize(window, width, height);
  Do({"windowmove", window, std::to_string(x), std::to_string(y)});
  Settle();
}

int Desktop::WindowCount() {
  const std::string tree = Output({"xwininfo", "-root", "-tree"});
  return static_cast<int>(std::ranges::count(tree, '\n'));
}

std::string Desktop::ProcessOf(const Window& window) {
  std::string process = Output({"xdotool", "getwindowpid", window});
  if (process.ends_with('\n')) process.pop_back();
  return process;
}

std::size_t Desktop::OpenFilesOf(const Window& window) {
  const fs::directory_iterator files("/proc/" + ProcessOf(window) + "/fd");
  return static_cast<std::size_t>(std::distance(fs::begin(files), fs::end(files)));
}

std::string Desktop::Measure(const Window& window, const Area& part, const std::string& format) {
  const auto pixels = [&](int length) { return std::to_string(static_cast<int>(length * scale())); };
  const std::string crop =
      pixels(part.width) + "x" + pixels(part.height) + "+" + pixels(part.left) + "+" + pixels(part.top);
  const fs::path picture = folder_ / "part.png";
  Output({"import", "-window", window, picture.string()});
  return Output(
      {"convert", picture.string(), "-crop", crop, "-colorspace", "gray", "-format", format, "info:"});
}

double Desktop::Contrast(const Window& window, const Area& part) {
  return std::stod(Measure(window, part, "%[fx:maxima-minima]"));
}

std::string Desktop::Look(const Window& window, const Area& part) {
  return Measure(window, part, "%#");
}

void Desktop::Picture(const std::string& name, const Window& window) {
  const char* pictures = std::getenv("QVA_PICTURES");
  if (!pictures) return;
  std::this_thread::sleep_for(std::chrono::seconds(3));  // LibreOffice paints when it has nothing else to do
  const std::string scale = dpi_ == 96 ? "" : "-" + std::to_string(dpi_ * 100 / 96);
  const fs::path file = fs::path(pictures) / ("libreoffice-" + name + scale + ".png");
  Output({"import", "-window", window, "+dither", "-colors", "64", "PNG8:" + file.string()});
}

}  // namespace qva
