// What the library asks of the machine it runs on, in one place.
#pragma once

#include "platform/clock.h"
#include "platform/controls.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/list_chooser.h"
#include "platform/locale.h"
#include "platform/message_box.h"
#include "platform/object_factory.h"
#include "platform/registry.h"

namespace qva {

/// One implementation of each interface of the seam. The members are borrowed, never owned. All of them, and
/// the objects that they give out, are used on the thread that installed them: nothing here guards itself.
struct Services {
  ObjectFactory* object_factory = nullptr;
  Registry* registry = nullptr;
  Environment* environment = nullptr;
  Locale* locale = nullptr;
  Clock* clock = nullptr;
  MessageBox* message_box = nullptr;
  ui::FormFactory* forms = nullptr;
  ListChooser* list_chooser = nullptr;
  Files* files = nullptr;
};

/// Sets the services that the library uses from now on. A front door does this once, before it creates the
/// first object; tests do it for each fixture. All members must be set and outlive the last object. Does not
/// raise.
void InstallServices(const Services& services);

/// The services in use. Raises 51 (Internal error) when none were installed.
const Services& GetServices();

}  // namespace qva
