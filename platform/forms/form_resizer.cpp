#include "platform/forms/form_resizer.h"

#include <algorithm>

namespace qva {

FormResizer::FormResizer(const ui::FormDescription& description) : description_(description) {
}

void FormResizer::Start(int width, int height, const std::function<Mode(std::u16string_view name)>& mode) {
  std::vector<Following> followings;
  for (const ui::ControlDescription& control : description_.controls) {
    const Mode own = mode ? mode(control.name) : std::nullopt;
    const bool grows =
        !own && (control.kind == ui::ControlKind::TabControl || control.kind == ui::ControlKind::Grid);
    const bool is_in_corner = !own && control.kind == ui::ControlKind::Button && control.parent.empty();
    followings.push_back({.moves_right = own == ui::ResizeMode::MoveWithWidth || is_in_corner,
                          .widens = own == ui::ResizeMode::StretchWithWidth || grows,
                          .moves_down = !grows && (is_in_corner || StandsBelowGrid(control)),
                          .heightens = grows});
  }
  followings_ = std::move(followings);
  start_width_ = width;
  start_height_ = height;
}

Following FormResizer::Of(std::size_t control) const {
  return followings_.empty() ? Following{} : followings_.at(control);
}

bool FormResizer::StandsBelowGrid(const ui::ControlDescription& control) const {
  return std::ranges::any_of(description_.controls, [&](const ui::ControlDescription& other) {
    return other.kind == ui::ControlKind::Grid && other.parent == control.parent &&
           other.page == control.page && control.bounds.top >= other.bounds.top + other.bounds.height;
  });
}

}  // namespace qva
