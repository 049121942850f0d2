#include "platform/services.h"

#include "platform/error.h"

namespace qva {
namespace {

Services installed;

}  // namespace

void InstallServices(const Services& services) {
  installed = services;
}

const Services& GetServices() {
  if (!installed.object_factory) {
    throw AutomationError(kInternalError, u"The platform services are not installed");
  }
  return installed;
}

}  // namespace qva
