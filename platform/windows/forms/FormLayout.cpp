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

std::vector<RECT> FormLayout::Places(SIZE inner, UiScale scale) const {
  const int more_width = inner.cx - scale(resizer_.start_width());
  const int more_height = inner.cy - scale(resizer_.start_height());
  std::vector<RECT> places;
  for (std::size_t i = 0; i < parents_.size(); ++i) {
    const ui::Bounds& bounds = description_.controls[i].bounds;
    // Both edges are scaled, not the size, so that those that meet at 100 % meet at every scale.
    RECT place{scale(bounds.left), scale(bounds.top), scale(bounds.left + bounds.width),
               scale(bounds.top + bounds.height)};
    const Following following = resizer_.Of(i);
    OffsetRect(&place, following.moves_right ? more_width : 0, following.moves_down ? more_height : 0);
    if (following.widens) place.right += more_width;
    if (following.heightens) place.bottom += more_height;
    if (parents_[i] != i) OffsetRect(&place, places[parents_[i]].left, places[parents_[i]].top);
    places.push_back(place);
  }
  return places;
}

}  // namespace qva::windows
