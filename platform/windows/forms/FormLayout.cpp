#include "platform/windows/forms/FormLayout.h"

#include <algorithm>

namespace qva::windows {
namespace {

[[noreturn]] void Contradiction(std::u16string_view at) {
  throw AutomationError(kInternalError, u"QVA_Varnholt",
                        u"The form's description contradicts itself at " + std::u16string(at));
}

}  // namespace

FormLayout::FormLayout(const ui::FormDescription& description) : description_(description) {
  const auto& controls = description.controls;
  const auto number = [&](std::u16string_view name) {
    return static_cast<std::size_t>(std::ranges::find(controls, name, &ui::ControlDescription::name) -
                                    controls.begin());
  };
  for (std::size_t i = 0; i < controls.size(); ++i) {
    if (number(controls[i].name) != i) Contradiction(controls[i].name);
    const std::size_t parent = controls[i].parent.empty() ? i : number(controls[i].parent);
    if (parent > i || (parent < i && controls[parent].kind != ui::ControlKind::Frame &&
                       controls[parent].kind != ui::ControlKind::TabControl)) {
      Contradiction(controls[i].name);
    }
    parents_.push_back(parent);
  }
  for (const std::u16string& button : {description.default_button, description.cancel_button}) {
    if (button.empty()) continue;
    const std::size_t i = number(button);
    if (i == controls.size() || controls[i].kind != ui::ControlKind::Button) Contradiction(button);
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
