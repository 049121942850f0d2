// What every form factory asks of a description first.
#pragma once

#include "platform/controls.h"

namespace qva {

/// Raises 51 (Internal error) when the description contradicts itself: a name twice, a parent that does not
/// stand before or holds no controls, a default or cancel button that is none, keys for what is no grid.
void RequireConsistent(const ui::FormDescription& description);

}  // namespace qva
