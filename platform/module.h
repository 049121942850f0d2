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

inline constexpr char kPrepareModuleName[] = "QvaPrepareModule";

/// Exported by a module that can do beforehand what takes time, such as making its database: called in a
/// process of which copies are made later, and which creates no objects itself. Does not raise.
using PrepareModule = void (*)();

}  // namespace qva
