#include "global/StartUp.h"

#include "platform/services.h"
#include "platform/settings.h"

namespace qva {

StartUpState& TheStartUpState() {
  // Never destroyed, as the globals are not: the objects' servers may be gone before us.
  static StartUpState& state = *new StartUpState;
  return state;
}

void StartUp() {
  StartUpState& state = TheStartUpState();
  if (state.initialised != 0) return;
  const Services& services = GetServices();
  IgnoreErrors([] { TheMessageResource(); });
  IgnoreErrors([&] { state.host_tools = host::ClientTools::Create(*services.object_factory); });
  const Value form_debug = GetSetting(*services.registry, *services.locale, host::kSettingsApplication,
                                      host::kGeneralSection, host::kFormDebugSetting, u"0");
  state.form_debug = form_debug.ToBoolean();
  state.initialised = 1;
}

void ShutDown() {
  TheStartUpState() = {};
}

const host::MessageResource& TheMessageResource() {
  host::MessageResource& kept = TheStartUpState().message_resource;
  if (!kept) {
    // Kept only when initialised, so that a failure is tried again instead of answering without texts.
    auto resource = host::MessageResource::Create(*GetServices().object_factory);
    resource.Init(host::kMessageResourceLibrary);
    kept = resource;
  }
  return kept;
}

std::u16string HostText(std::int32_t number) {
  return TheMessageResource().Text(number);
}

const host::ClientTools& TheClientTools() {
  host::ClientTools& kept = TheStartUpState().client_tools;
  if (!kept) kept = host::ClientTools::Create(*GetServices().object_factory);
  return kept;
}

const host::DataAccess& TheDataAccess() {
  host::DataAccess& kept = TheStartUpState().data_access;
  if (!kept) kept = host::DataAccess::Create(*GetServices().object_factory);
  return kept;
}

}  // namespace qva
