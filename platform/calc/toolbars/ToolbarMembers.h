// Excel's command bars, hot keys and what their buttons need, which LibreOffice's model lacks or has in part.
#pragma once

#include <span>

#include "platform/calc/MemberOverrides.h"

namespace qva::calc {

/// The members, for AddOverrides.
std::span<const Override> ToolbarOverrides();

}  // namespace qva::calc
