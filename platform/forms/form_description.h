// What every form factory asks of a description first.
#pragma once

#include "platform/controls.h"

namespace qva {

/// Raises 51 (Internal error) for a description in which a name stands twice or a control before its parent.
void RequireConsistent(const ui::FormDescription& description);

}  // namespace qva
