// The seam's services on Linux, all together.
#pragma once

#include <filesystem>
#include <vector>

#include "platform/forms/unattended_forms.h"
#include "platform/forms/unattended_message_box.h"
#include "platform/posix/ModuleFactory.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/ProcessEnvironment.h"
#include "platform/posix/RegistryFile.h"
#include "platform/posix/SystemClock.h"
#include "platform/posix/SystemLocale.h"
#include "platform/recordset/RecordsetFactory.h"

namespace qva {

/// Owns one of each service. Message boxes and forms are unattended, by the files that the environment
/// variables QVA_VARNHOLT_ANSWERS, QVA_VARNHOLT_FORM_ANSWERS and QVA_VARNHOLT_MESSAGE_LOG name. What is wrong
/// with the registry's file is told by the message box.
class PosixPlatform {
 public:
  /// Objects come from `factories` (borrowed), then from `modules` (see ModuleFactory); recordsets, which no
  /// machine of this kind has, are the ones in memory unless a factory makes others.
  explicit PosixPlatform(std::vector<std::filesystem::path> modules,
                         std::vector<ObjectFactory*> factories = {});
  PosixPlatform(const PosixPlatform&) = delete;
  PosixPlatform& operator=(const PosixPlatform&) = delete;

  /// What to install, and what the modules are opened on. A front door with a service of its own, such as a
  /// real message box, puts it here before the first object is created.
  Services& services() { return services_; }

 private:
  RegistryFile registry_;
  ProcessEnvironment environment_;
  SystemLocale locale_;
  SystemClock clock_;
  UnattendedMessageBox message_box_;
  UnattendedForms forms_;
  PosixFiles files_;
  recordset::RecordsetFactory recordset_factory_;
  ModuleFactory object_factory_;
  Services services_;
};

}  // namespace qva
