#include "platform/windows/services/WindowsPlatform.h"

#include "platform/variables.h"

namespace qva::windows {

WindowsPlatform::WindowsPlatform()
    : unattended_forms_(EnvironmentVariable(variables::kFormAnswers),
                        EnvironmentVariable(variables::kMessageLog), clock_, locale_),
      services_{.object_factory = &object_factory_,
                .registry = &registry_,
                .environment = &environment_,
                .locale = &locale_,
                .clock = &clock_,
                .message_box = &message_box_,
                .forms = &unattended_forms_,
                .list_chooser = &unattended_forms_,
                .files = &files_} {
  if (EnvironmentVariable(variables::kFormAnswers).empty() && HasVisibleDesktop()) {
    services_.forms = &native_forms_;
    services_.list_chooser = &native_lists_;
  }
}

void InstallPlatform() {
  // Never destroyed: objects may outlive every static one.
  static WindowsPlatform* const platform = [] {
    auto* created = new WindowsPlatform;
    InstallServices(created->services());
    return created;
  }();
  (void)platform;
}

}  // namespace qva::windows
