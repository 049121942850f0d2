// Gathers what programs of this process's bitness meet.
#pragma once

#include <functional>

#include "tools/doctor/Facts.h"

namespace qva::doctor {

/// Looks at registrations and files, loads the library, creates objects of its classes, loads the accounting
/// system's and asks it for the book and the archive. All of that runs other people's code, which may end the
/// process or never return: `keep` is called with what is known before each step that does. The thread must
/// have entered an apartment.
BitnessFacts Probe(const std::function<void(const BitnessFacts&)>& keep);

}  // namespace qva::doctor
