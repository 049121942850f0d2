// What runs once when the library is loaded, and the host objects that it keeps.
#pragma once

#include <cstdint>
#include <string>

#include "platform/host.h"

namespace qva {

/// State from start-up to the unloading of the library.
struct StartUpState {
  host::MessageResource message_resource;  ///< through TheMessageResource, which creates it on first use
  host::ClientTools host_tools;    ///< created at start-up and only kept; empty where the host has none
  host::ClientTools client_tools;  ///< through TheClientTools, which creates it on first use
  host::DataAccess data_access;    ///< through TheDataAccess, which creates it on first use
  bool form_debug = false;         ///< the host setting "AppFormDebug"; read here and nowhere consulted
  std::int32_t initialised = 0;    ///< 1 after a start-up that went through
};

StartUpState& TheStartUpState();

/// Runs the start-up unless it went through before; the front doors call this ahead of the first object.
/// Host components that are not there are no failure here: who needs one later gets the error then.
/// Raises 13 (Type mismatch) when the host setting "AppFormDebug" is no Boolean text; the next call tries
/// again.
void StartUp();

/// Releases what start-up set up, so that the next StartUp begins anew. For tests and for unloading.
void ShutDown();

/// The message resource object, initialised with host::kMessageResourceLibrary. Raises what its creation
/// raises.
const host::MessageResource& TheMessageResource();

/// The text of a host message. Raises what the resource object raises.
std::u16string HostText(std::int32_t number);

/// The host's client-tools object of the library. Raises what its creation raises.
const host::ClientTools& TheClientTools();

/// The host's data-access object of the library. Raises what its creation raises.
const host::DataAccess& TheDataAccess();

}  // namespace qva
