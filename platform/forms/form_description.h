// What forms ask of their description.
#pragma once

#include <optional>

#include "platform/controls.h"

namespace qva {

/// Raises 51 (Internal error) when the description contradicts itself: a name twice, a parent that does not
/// stand before or holds no controls, a default or cancel button that is none, keys for what is no grid.
void RequireConsistent(const ui::FormDescription& description);

/// The frame or tab control that a control of a consistent description stands in; null for the form itself.
const ui::ControlDescription* ParentOf(const ui::FormDescription& form,
                                       const ui::ControlDescription& control);

/// The page that a control stands on, in a frame or not; nothing for those that always show.
std::optional<int> PageOf(const ui::FormDescription& form, const ui::ControlDescription& control);

/// Whether both are options, of which one alone is selected.
inline bool AreOneGroup(const ui::ControlDescription& one, const ui::ControlDescription& other) {
  return one.kind == ui::ControlKind::OptionButton && other.kind == one.kind && other.parent == one.parent;
}

}  // namespace qva
