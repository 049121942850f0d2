// A form's description as lines of text, which tell where two of them differ.
#pragma once

#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/text.h"

namespace qva {

/// Each control by kind, name, caption, left and top, width and height, and where it stands: on which page of
/// what.
inline std::vector<std::string> FormLines(const ui::FormDescription& form) {
  static constexpr const char* kKinds[] = {"Label",      "TextBox",   "OptionButton", "Frame", "ComboBox",
                                           "DatePicker", "MonthView", "TabControl",   "Grid",  "Button"};
  std::vector<std::string> lines;
  for (const ui::ControlDescription& control : form.controls) {
    const ui::Bounds& bounds = control.bounds;
    lines.push_back(std::string(kKinds[static_cast<std::size_t>(control.kind)]) + " " + ToUtf8(control.name) +
                    " '" + ToUtf8(control.caption) + "' " + std::to_string(bounds.left) + "," +
                    std::to_string(bounds.top) + " " + std::to_string(bounds.width) + "x" +
                    std::to_string(bounds.height) + " " + ToUtf8(control.parent) + ":" +
                    std::to_string(control.page) + (control.read_only ? " read-only" : ""));
  }
  return lines;
}

}  // namespace qva
