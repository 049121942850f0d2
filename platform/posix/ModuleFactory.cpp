#include "platform/posix/ModuleFactory.h"

#include <dlfcn.h>

#include "platform/cannot_create.h"
#include "platform/module.h"
#include "platform/text.h"

namespace qva {
namespace {

/// The object, or null when the factory does not have its class.
ObjectPtr TryCreate(ObjectFactory& factory, std::u16string_view programmatic_identifier) {
  try {
    return factory.Create(programmatic_identifier);
  } catch (const AutomationError& error) {
    if (error.number() != kCannotCreateObject) throw;
    return nullptr;
  }
}

std::string LastLoaderError() {
  const char* text = ::dlerror();
  return text ? text : "unknown error";
}

}  // namespace

ModuleFactory::ModuleFactory(const Services& services, std::vector<ObjectFactory*> factories,
                             std::vector<std::filesystem::path> modules)
    : services_(services), factories_(std::move(factories)) {
  for (std::filesystem::path& path : modules) modules_.push_back({.path = std::move(path)});
}

ObjectPtr ModuleFactory::Create(std::u16string_view programmatic_identifier) {
  for (ObjectFactory* factory : factories_) {
    if (ObjectPtr object = TryCreate(*factory, programmatic_identifier)) return object;
  }
  std::u16string cause(kNoSuchClass);
  for (Module& module : modules_) {
    if (!module.factory && module.failure.empty()) Open(module);
    if (!module.factory) {
      cause += u"\n" + FromUtf8(module.path.string() + ": " + module.failure);
    } else if (ObjectPtr object = TryCreate(*module.factory, programmatic_identifier)) {
      return object;
    }
  }
  throw CannotCreate(programmatic_identifier, cause);
}

void ModuleFactory::Open(Module& module) const {
  // Never unloaded: its objects and their code may outlive every handle.
  void* library = ::dlopen(module.path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!library) {
    module.failure = LastLoaderError();
    return;
  }
  const auto open = reinterpret_cast<OpenModule>(::dlsym(library, kOpenModuleName));
  if (!open) {
    module.failure = LastLoaderError();
    return;
  }
  module.factory = open(services_);
  if (!module.factory) module.failure = "the module cannot be opened";
}

}  // namespace qva
