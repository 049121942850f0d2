#include "platform/forms/form_layout.h"

#include <algorithm>
#include <utility>

#include "platform/forms/form_description.h"

namespace qva {

FormLayout::FormLayout(const ui::FormDescription& description) : description_(description) {
  RequireConsistent(description);
}

void FormLayout::StartResizer(int width, int height,
                              const std::function<Mode(std::u16string_view name)>& mode) {
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

Following FormLayout::Of(std::size_t control) const {
  return followings_.empty() ? Following{} : followings_.at(control);
}

std::vector<ui::Bounds> FormLayout::Places(int width, int height,
                                           const std::function<int(int)>& scale) const {
  const int wider = width - scale(start_width_);
  const int higher = height - scale(start_height_);
  std::vector<ui::Bounds> places;
  for (const ui::ControlDescription& control : description_.controls) {
    const ui::ControlDescription* parent = ParentOf(description_, control);
    const ui::Bounds outer =
        parent ? places[static_cast<std::size_t>(parent - description_.controls.data())] : ui::Bounds{};
    const Following following = Of(places.size());
    const ui::Bounds& bounds = control.bounds;
    // Both edges are scaled, not the size, so that those that meet at 100 % meet at every scale.
    const int left = scale(bounds.left);
    const int top = scale(bounds.top);
    places.push_back({outer.left + left + (following.moves_right ? wider : 0),
                      outer.top + top + (following.moves_down ? higher : 0),
                      scale(bounds.left + bounds.width) - left + (following.widens ? wider : 0),
                      scale(bounds.top + bounds.height) - top + (following.heightens ? higher : 0)});
  }
  return places;
}

bool FormLayout::StandsBelowGrid(const ui::ControlDescription& control) const {
  return std::ranges::any_of(description_.controls, [&](const ui::ControlDescription& other) {
    return other.kind == ui::ControlKind::Grid && other.parent == control.parent &&
           other.page == control.page && control.bounds.top >= other.bounds.top + other.bounds.height;
  });
}

}  // namespace qva
