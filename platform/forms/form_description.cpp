#include "platform/forms/form_description.h"

#include <algorithm>
#include <map>

namespace qva {

void RequireConsistent(const ui::FormDescription& description) {
  const auto require = [](bool holds, const std::u16string& name) {
    if (holds) return;
    throw AutomationError(kInternalError, u"The form's description contradicts itself at " + name);
  };
  std::map<std::u16string_view, ui::ControlKind> before;
  const auto is = [&](const std::u16string& name, ui::ControlKind kind) {
    const auto found = before.find(name);
    return found != before.end() && found->second == kind;
  };
  for (const ui::ControlDescription& control : description.controls) {
    const std::u16string& parent = control.parent;
    require(parent.empty() || is(parent, ui::ControlKind::Frame) || is(parent, ui::ControlKind::TabControl),
            control.name);
    require(before.emplace(control.name, control.kind).second, control.name);
  }
  for (const ui::ControlDescription& control : description.controls) {
    require(control.keys_for.empty() || is(control.keys_for, ui::ControlKind::Grid), control.name);
  }
  for (const std::u16string& button : {description.default_button, description.cancel_button}) {
    require(button.empty() || is(button, ui::ControlKind::Button), button);
  }
}

const ui::ControlDescription* ParentOf(const ui::FormDescription& form,
                                       const ui::ControlDescription& control) {
  if (control.parent.empty()) return nullptr;
  return &*std::ranges::find(form.controls, control.parent, &ui::ControlDescription::name);
}

std::optional<int> PageOf(const ui::FormDescription& form, const ui::ControlDescription& control) {
  const ui::ControlDescription* parent = ParentOf(form, control);
  if (!parent) return std::nullopt;
  return parent->kind == ui::ControlKind::TabControl ? control.page : PageOf(form, *parent);
}

}  // namespace qva
