#include "platform/posix/PosixPlatform.h"

#include <cstdlib>

namespace qva {
namespace {

std::filesystem::path PathFromEnvironment(const char* variable) {
  const char* path = std::getenv(variable);
  return path ? path : "";
}

std::vector<ObjectFactory*> With(std::vector<ObjectFactory*> factories, ObjectFactory& last) {
  factories.push_back(&last);
  return factories;
}

}  // namespace

PosixPlatform::PosixPlatform(std::vector<std::filesystem::path> modules,
                             std::vector<ObjectFactory*> factories)
    : registry_(UserRegistryPath(),
                [this](const std::u16string& problem) {
                  services_.message_box->Show(problem, vbCritical | vbOKOnly, u"");
                }),
      message_box_(PathFromEnvironment("QVA_VARNHOLT_ANSWERS"),
                   PathFromEnvironment("QVA_VARNHOLT_MESSAGE_LOG"), clock_),
      forms_(PathFromEnvironment("QVA_VARNHOLT_FORM_ANSWERS"),
             PathFromEnvironment("QVA_VARNHOLT_MESSAGE_LOG"), clock_, locale_),
      files_(UserDrivesPath(), locale_),
      object_factory_(services_, With(std::move(factories), recordset_factory_), std::move(modules)),
      services_{.object_factory = &object_factory_,
                .registry = &registry_,
                .environment = &environment_,
                .locale = &locale_,
                .clock = &clock_,
                .message_box = &message_box_,
                .forms = &forms_,
                .list_chooser = &forms_,
                .files = &files_} {
}

}  // namespace qva
