#include "platform/windows/forms/FormLayout.h"

#include <algorithm>

#include "platform/forms/form_description.h"

namespace qva::windows {

FormLayout::FormLayout(const ui::FormDescription& description) : description_(description) {
  RequireConsistent(description);
  const auto& controls = description.controls;
  for (const ui::ControlDescription& control : controls) {
    const std::u16string& holder = control.parent.empty() ? control.name : control.parent;
    parents_.push_back(static_cast<std::size_t>(
        std::ranges::find(controls, holder, &ui::ControlDescription::name) - controls.begin()));
  }
}

void FormLayout::StartResizer(int width, int height,
                              const std::function<Mode(std::u16string_view name)>& mode) {
  start_width_ = width;
  start_height_ = height;
  modes_.clear();
  for (const ui::ControlDescription& control : description_.controls) {
    modes_.push_back(mode ? mode(control.name) : std::nullopt);
  }
}

bool FormLayout::StandsBelowGrid(const ui::ControlDescription& control) const {
  return std::ranges::any_of(description_.controls, [&](const ui::ControlDescription& other) {
    return other.kind == ui::ControlKind::Grid && other.parent == control.parent &&
           other.page == control.page && control.bounds.top >= other.bounds.top + other.bounds.height;
  });
}

std::vector<RECT> FormLayout::Places(SIZE inner, UiScale scale) const {
  const int more_width = modes_.empty() ? 0 : inner.cx - scale(start_width_);
  const int more_height = modes_.empty() ? 0 : inner.cy - scale(start_height_);
  std::vector<RECT> places;
  const Mode none;
  for (std::size_t i = 0; i < parents_.size(); ++i) {
    const ui::ControlDescription& control = description_.controls[i];
    const ui::Bounds& bounds = control.bounds;
    // Both edges are scaled, not the size, so that those that meet at 100 % meet at every scale.
    RECT place{scale(bounds.left), scale(bounds.top), scale(bounds.left + bounds.width),
               scale(bounds.top + bounds.height)};
    const Mode& mode = modes_.empty() ? none : modes_[i];
    const bool grows =
        !mode && (control.kind == ui::ControlKind::TabControl || control.kind == ui::ControlKind::Grid);
    const bool is_in_corner = !mode && control.kind == ui::ControlKind::Button && parents_[i] == i;
    if (mode == ui::ResizeMode::MoveWithWidth || is_in_corner) OffsetRect(&place, more_width, 0);
    if (mode == ui::ResizeMode::StretchWithWidth || grows) place.right += more_width;
    if (grows) {
      place.bottom += more_height;
    } else if (is_in_corner || StandsBelowGrid(control)) {
      OffsetRect(&place, 0, more_height);
    }
    if (parents_[i] != i) OffsetRect(&place, places[parents_[i]].left, places[parents_[i]].top);
    places.push_back(place);
  }
  return places;
}

}  // namespace qva::windows
