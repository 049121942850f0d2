// What tests of the library's windows in LibreOffice share.
#pragma once

#include <filesystem>
#include <string>

#include "tests/calc/calc_fixture.h"
#include "tests/calc/desktop.h"
#include "tests/test_paths.h"

namespace qva {

inline constexpr char kPeriod[] = "Ataskaitinio periodo nustatymai";
inline constexpr char kDate[] = "Pasirinkite data";
inline constexpr char kMessage[] = "QVA_Varnholt";

class CalcWindows : public CalcTest {
 protected:
  /// Starts a macro that shows windows: keyboard and mouse may take minutes on a busy machine.
  void StartShown(const std::string& macro, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"--show", "--timeout", "300"});
    StartMacro(macro, std::move(options), desktop.environment());
  }

  /// Presses a key that ends a window, and waits for its end.
  void Leave(const Desktop::Window& window, const std::string& key) {
    desktop.Keys(window, {key});
    desktop.WaitUntilGone(window);
  }

  /// Puts a text in the place of the old one.
  void Fill(const Desktop::Window& window, int x, int y, const std::string& text) {
    desktop.Click(window, x, y);
    desktop.Keys(window, {"ctrl+a"});
    desktop.Type(window, text);
  }

  /// Waits for another line of the macro.
  void WaitForLines(std::size_t count) {
    desktop.WaitFor("line " + std::to_string(count) + " of the macro",
                    [&] { return Lines().size() >= count; });
  }

  Desktop desktop{folder / "desktop"};
};

}  // namespace qva
