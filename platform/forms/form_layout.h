// Where the controls of a form stand, and how they follow its size: the rules of ui::Form::StartResizer.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/controls.h"

namespace qva {

/// How a control follows its form's size. What stands in another control follows with it besides.
struct Following {
  bool moves_right = false;
  bool widens = false;
  bool moves_down = false;
  bool heightens = false;
};

class FormLayout {
 public:
  using Mode = std::optional<ui::ResizeMode>;

  /// The description is borrowed. Raises 51 when it contradicts itself.
  explicit FormLayout(const ui::FormDescription& description);

  /// As ui::Form::StartResizer; an empty `mode` gives none.
  void StartResizer(int width, int height, const std::function<Mode(std::u16string_view name)>& mode);

  /// What Places goes by: for the control of a number that the description has. Before the start nothing
  /// follows.
  Following Of(std::size_t control) const;

  /// The controls' places within a form whose inside is so wide and high, both in what `scale` makes of
  /// pixels at 100 %.
  std::vector<ui::Bounds> Places(int width, int height,
                                 const std::function<int(int)>& scale = std::identity()) const;

  /// The size that the resizer started from, in pixels at 100 % scale.
  int start_width() const { return start_width_; }
  int start_height() const { return start_height_; }

 private:
  bool StandsBelowGrid(const ui::ControlDescription& control) const;

  const ui::FormDescription& description_;
  std::vector<Following> followings_;  ///< empty until the start
  int start_width_ = 0;
  int start_height_ = 0;
};

}  // namespace qva
