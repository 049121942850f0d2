// Gathers what does not depend on the bitness of a program.
#pragma once

#include "tools/doctor/Facts.h"

namespace qva::doctor {

/// The facts of Windows, Excel and the user's settings; the facts by bitness stay empty.
MachineFacts LookAtMachine();

/// Where the library reads the file of its log of calls: of the current user's com::kOwnKey.
inline constexpr std::u16string_view kCallLogValue = u"CallLog";

}  // namespace qva::doctor
