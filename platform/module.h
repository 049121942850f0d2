// The entry of a module of automation classes that is loaded at run time, such as the embedded host: what an
// in-process server is on Windows, where nothing loads modules.
#pragma once

#include "platform/services.h"

namespace qva {

inline constexpr char kOpenModuleName[] = "QvaOpenModule";

/// Exported by the module under kOpenModuleName, with C linkage. Opens it on the given services, which must
/// outlive it; the result creates the module's objects and lives as long as the process. A module stays
/// loaded. Does not raise: a module that cannot work answers null.
using OpenModule = ObjectFactory* (*)(const Services& services);

}  // namespace qva
