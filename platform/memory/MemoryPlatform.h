// The in-memory twin of the whole seam in one place. A service that the seam gains gets its twin here, and
// its faults where it can fail.
#pragma once

#include "platform/memory/FaultyFiles.h"
#include "platform/memory/FaultyFormFactory.h"
#include "platform/memory/FaultyObjectFactory.h"
#include "platform/memory/FaultyRegistry.h"
#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryEnvironment.h"
#include "platform/memory/MemoryFiles.h"
#include "platform/memory/MemoryForms.h"
#include "platform/memory/MemoryLocale.h"
#include "platform/memory/MemoryMessageBox.h"
#include "platform/memory/MemoryObjectFactory.h"
#include "platform/memory/MemoryRegistry.h"
#include "platform/services.h"

namespace qva {

/// One of each, in its first state, with faults before those that can fail. Excel itself is no service: make
/// a memory::Application (platform/memory/excel/Application.h).
///
///   MemoryPlatform platform;
///   InstallServices(platform.services());
///   platform.files.SetFile(u"C:\\x.txt", "1");
///   platform.faults.files.Refuse(FaultyFiles::Operation::Copy, kDiskFull);
struct MemoryPlatform {
  MemoryObjectFactory object_factory;
  MemoryRegistry registry;
  MemoryEnvironment environment;
  MemoryLocale locale;
  MemoryClock clock;
  MemoryMessageBox message_box;
  MemoryForms forms;
  MemoryListChooser list_chooser;
  MemoryFiles files{locale, clock};

  /// What users of the services meet. Whoever calls the twins above meets no fault, and is not counted.
  struct Faults {
    FaultyObjectFactory object_factory;
    FaultyRegistry registry;
    FaultyFormFactory forms;
    FaultyFiles files;
  } faults{FaultyObjectFactory(object_factory), FaultyRegistry(registry), FaultyFormFactory(forms),
           FaultyFiles(files)};

  /// Borrows the members: they must outlive the use of the result.
  Services services() {
    return {.object_factory = &faults.object_factory,
            .registry = &faults.registry,
            .environment = &environment,
            .locale = &locale,
            .clock = &clock,
            .message_box = &message_box,
            .forms = &faults.forms,
            .list_chooser = &list_chooser,
            .files = &faults.files};
  }
};

}  // namespace qva
