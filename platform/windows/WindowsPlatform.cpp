#include "platform/windows/WindowsPlatform.h"

namespace qva::windows {

WindowsPlatform::WindowsPlatform()
    : services_{.object_factory = &object_factory_,
                .registry = &registry_,
                .environment = &environment_,
                .locale = &locale_,
                .clock = &clock_,
                .message_box = &message_box_} {
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
