// The module's entry.
#include "platform/module.h"

#include <dlfcn.h>

#include <memory>
#include <vector>

#include "host/EmbeddedHost.h"
#include "host/HostStore.h"
#include "platform/filesystem/native_file.h"

namespace {

/// The folder "host" beside the file of this module; empty when the file is not known.
std::filesystem::path ResourcesBesideModule() {
  Dl_info module{};
  if (!dladdr(reinterpret_cast<const void*>(&ResourcesBesideModule), &module) || !module.dli_fname) return {};
  return std::filesystem::absolute(module.dli_fname).parent_path() / "host";
}

}  // namespace

extern "C" __attribute__((visibility("default"))) qva::ObjectFactory* QvaOpenModule(
    const qva::Services& services) noexcept try {
  auto options = qva::embedded::OptionsFromEnvironment(qva::EnvironmentVariable, ResourcesBesideModule());
  if (!options || !services.message_box) return nullptr;
  // Conversions of values ask the services, and the module has a copy of the seam of its own.
  qva::InstallServices(services);
  // Never destroyed: the module's objects may be in use until the process is gone.
  static auto& opened = *new std::vector<std::unique_ptr<qva::embedded::EmbeddedHost>>;
  opened.push_back(std::make_unique<qva::embedded::EmbeddedHost>(std::move(*options), services));
  return opened.back().get();
} catch (...) {
  return nullptr;
}

extern "C" __attribute__((visibility("default"))) void QvaPrepareModule() noexcept {
  qva::IgnoreFailures([] {
    auto options = qva::embedded::OptionsFromEnvironment(qva::EnvironmentVariable, ResourcesBesideModule());
    if (options) qva::embedded::HostStore(std::move(*options), nullptr).Open();
  });
}
