// The seam's services on Windows, all together.
#pragma once

#include "platform/services.h"
#include "platform/unattended_forms.h"
#include "platform/windows/AnsiRegistry.h"
#include "platform/windows/ComObjectFactory.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/WindowsEnvironment.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsLocale.h"
#include "platform/windows/WindowsMessageBox.h"

namespace qva::windows {

/// Owns one of each service.
class WindowsPlatform {
 public:
  WindowsPlatform();
  WindowsPlatform(const WindowsPlatform&) = delete;
  WindowsPlatform& operator=(const WindowsPlatform&) = delete;

  const Services& services() const { return services_; }

 private:
  ComObjectFactory object_factory_;
  AnsiRegistry registry_;
  WindowsEnvironment environment_;
  WindowsLocale locale_;
  WindowsClock clock_;
  WindowsMessageBox message_box_{clock_};
  UnattendedForms forms_;
  WindowsFiles files_{object_factory_, locale_};
  Services services_;
};

/// Installs Windows' services for the library, once in the life of the module; later calls do nothing.
void InstallPlatform();

}  // namespace qva::windows
