#include "platform/posix/PosixPlatform.h"

#include "platform/variables.h"

namespace qva {
namespace {

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
      message_box_(EnvironmentVariable(variables::kAnswers), EnvironmentVariable(variables::kMessageLog),
                   clock_),
      forms_(EnvironmentVariable(variables::kFormAnswers), EnvironmentVariable(variables::kMessageLog),
             clock_, locale_),
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
