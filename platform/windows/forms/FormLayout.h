// Where the controls of a form stand when it has a certain size.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/controls.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/UiScale.h"

namespace qva::windows {

class FormLayout {
 public:
  using Mode = std::optional<ui::ResizeMode>;

  /// The description is borrowed. Raises 51 when it contradicts itself.
  explicit FormLayout(const ui::FormDescription& description);

  /// As ui::Form::StartResizer.
  void StartResizer(int width, int height, const std::function<Mode(std::u16string_view name)>& mode);

  /// The controls' places within a form of this inner size, in pixels of the display.
  std::vector<RECT> Places(SIZE inner, UiScale scale) const;

 private:
  bool StandsBelowGrid(const ui::ControlDescription& control) const;

  const ui::FormDescription& description_;
  std::vector<std::size_t> parents_;  ///< of each control its parent's number, its own when it has none
  std::vector<Mode> modes_;           ///< empty until the resizer is started
  int start_width_ = 0;               ///< at 100 %
  int start_height_ = 0;
};

}  // namespace qva::windows
