#include "server/calc/SampleJob.h"

#include <cppuhelper/exc_hlp.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <stdexcept>
#include <string>

#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/host.h"
#include "platform/posix/PosixFiles.h"
#include "platform/services.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "server/calc/BasicError.h"
#include "server/calc/ComponentFolder.h"
#include "server/calc/OpenWorkbook.h"

namespace qva::calc {
namespace {

using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

constexpr std::u16string_view kSampleBook = u"MEDVILNE";  ///< the embedded host's sample company
constexpr std::u16string_view kTitle = u"QVA_Varnholt";

/// The archive of the sample company; the library makes no more than its last folder.
constexpr std::u16string_view kFolders[] = {u"C:\\Pavyzdziai", u"C:\\Ataskaitos",
                                            u"C:\\Ataskaitos\\Archyvas"};

void MakeFolders(Files& files) {
  for (const std::u16string_view folder : kFolders) {
    if (!files.FolderExists(folder)) files.CreateFolder(folder);
  }
}

/// Without a current book no report connects to the host.
void ChooseSampleBook(const Services& services) {
  constexpr std::u16string_view kBook = u"P0";
  if (!GetSetting(*services.registry, *services.locale, host::kSettingsApplication, host::kFormsSection,
                  kBook, u"")
           .empty()) {
    return;
  }
  RegistryKey key = 0;
  const std::u16string path = u"Software\\VB and VBA Program Settings\\" +
                              std::u16string(host::kSettingsApplication) + u"\\" +
                              std::u16string(host::kFormsSection);
  if (services.registry->CreateKey(HKEY_CURRENT_USER_VALUE, path, kKeySetValue, {}, key) !=
      kRegistrySuccess) {
    return;  // the macro tells that there is no book
  }
  services.registry->SetValue(key, kBook, kRegSz, services.locale->ToAnsi(kSampleBook));
  services.registry->CloseKey(key);
}

}  // namespace

void SampleJob::Run(std::u16string_view name) const {
  // The services come with the first creation of an object.
  context_->getServiceManager()->createInstanceWithContext("com.sun.star.bridge.OleObjectFactory", context_);
  const Services& services = GetServices();
  MakeFolders(*services.files);
  ChooseSampleBook(services);
  const std::u16string file = std::u16string(name) + u".fods";
  const std::u16string copy = std::u16string(kFolders[0]) + u"\\" + file;
  services.files->Copy(FromUtf8((ComponentFolder() / "samples" / ToUtf8(file)).string()), copy);
  const PosixFiles places(UserDrivesPath(), *services.locale);
  OpenWorkbook workbook(context_, places.SystemPath(copy).string());
  workbook.Keep();
  workbook.RunMacro("Ataskaita.Main");
}

void SampleJob::trigger(const OUString& name) {
  std::u16string failure;
  try {
    Run(FromUno(name));
  } catch (const AutomationError& error) {
    failure = error.description();
  } catch (const css::uno::Exception&) {
    failure = ErrorOf(cppu::getCaughtException()).description();
  } catch (const std::exception& exception) {
    failure = FromUtf8(exception.what());
  }
  ReleaseErrors();
  if (failure.empty()) return;
  try {
    GetServices().message_box->Show(failure, vbCritical, kTitle);
  } catch (const AutomationError&) {
    // There were no services to show it by.
  }
}

OUString SampleJob::getImplementationName() {
  return "QVA_Varnholt.SampleJob";
}

sal_Bool SampleJob::supportsService(const OUString& name) {
  return cppu::supportsService(this, name);
}

Sequence<OUString> SampleJob::getSupportedServiceNames() {
  return SequenceOf({OUString("QVA_Varnholt.SampleJob")});
}

}  // namespace qva::calc
