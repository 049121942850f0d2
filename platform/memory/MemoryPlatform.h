// The in-memory twin of the whole seam in one place. A service that the seam gains gets its twin here.
#pragma once

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

/// One of each, in its first state. Excel itself is no service: make a memory::Application
/// (platform/memory/excel/Application.h).
///
///   MemoryPlatform platform;
///   InstallServices(platform.services());
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

  /// Borrows the members: they must outlive the use of the result.
  Services services() {
    return {.object_factory = &object_factory,
            .registry = &registry,
            .environment = &environment,
            .locale = &locale,
            .clock = &clock,
            .message_box = &message_box,
            .forms = &forms,
            .list_chooser = &list_chooser,
            .files = &files};
  }
};

}  // namespace qva
