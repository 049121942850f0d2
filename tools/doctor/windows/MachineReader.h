// Gathers what does not depend on the bitness of a program.
#pragma once

#include "tools/doctor/Facts.h"

namespace qva::doctor {

/// The facts of Windows, Excel and the user's settings; the facts by bitness stay empty.
MachineFacts LookAtMachine();

}  // namespace qva::doctor
