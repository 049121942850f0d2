// The seam's services on Windows, all together.
#pragma once

#include "platform/forms/form_list_chooser.h"
#include "platform/forms/unattended_forms.h"
#include "platform/services.h"
#include "platform/windows/AnsiRegistry.h"
#include "platform/windows/ComObjectFactory.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/WindowsEnvironment.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsLocale.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/WindowsMessageBox.h"

namespace qva::windows {

/// Owns one of each service. Forms and lists are windows, but where nobody sits - QVA_VARNHOLT_FORM_ANSWERS
/// names a file, or the process has no visible desktop - they are answered by that file.
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
  UnattendedForms unattended_forms_;
  NativeForms native_forms_;
  FormListChooser native_lists_{native_forms_};
  WindowsFiles files_{object_factory_, locale_};
  Services services_;
};

/// Installs Windows' services for the library, once in the life of the module; later calls do nothing.
void InstallPlatform();

}  // namespace qva::windows
