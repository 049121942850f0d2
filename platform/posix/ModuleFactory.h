// Creation of objects by factories of this process and by modules that are loaded at run time.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/object_factory.h"
#include "platform/services.h"

namespace qva {

/// Asks its factories in turn, then its modules in turn; one that answers 429 (cannot create the object)
/// passes the question on to the next. Any other error goes to the caller.
///
/// Linux alone has it. On Windows COM creates the objects of other libraries by their identifiers
/// (platform/windows/ComObjectFactory.h): what is a module here is an in-process server there.
///
/// A module (platform/module.h) is loaded when a question first reaches it, and never unloaded. One that
/// cannot be loaded or opened is not tried again; when nobody else creates the object either, the
/// 429 that Create raises names its path and the reason, too.
class ModuleFactory : public ObjectFactory {
 public:
  /// `services` is handed to the modules; it and the factories must outlive this object, `services` the
  /// modules' objects too.
  ModuleFactory(const Services& services, std::vector<ObjectFactory*> factories,
                std::vector<std::filesystem::path> modules);

  ObjectPtr Create(std::u16string_view programmatic_identifier) override;

 private:
  struct Module {
    std::filesystem::path path;
    ObjectFactory* factory = nullptr;  ///< null until it is open
    std::string failure;               ///< why it cannot be opened
  };

  void Open(Module& module) const;

  const Services& services_;
  std::vector<ObjectFactory*> factories_;
  std::vector<Module> modules_;
};

}  // namespace qva
