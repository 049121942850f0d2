// The embedded host as an in-process COM server: the host's classes over SQLite, for a Windows on which the
// host system is not installed.
#include <filesystem>
#include <string_view>

#include "host/EmbeddedHost.h"
#include "platform/cannot_create.h"
#include "platform/filesystem/native_file.h"
#include "platform/variables.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/OwnObject.h"
#include "platform/windows/WideText.h"
#include "platform/windows/services/WindowsPlatform.h"
#include "server/com/ComObject.h"
#include "server/com/ServerEntries.h"
#include "server/com/ServerModule.h"
#include "server/demo/HostClasses.h"

namespace qva::demo {
namespace {

/// Another host is registered: the demo host does not come before it. As regsvr32 shows it, 0x800704DA.
constexpr HRESULT kAnotherHostIsThere = static_cast<HRESULT>(0x80070000 | ERROR_ALREADY_REGISTERED);

class HostObject final : public com::ComObject<IDispatch> {
 public:
  using ComObject::ComObject;
};

/// The host of this process, never destroyed: its objects may be in use until the process is gone.
embedded::EmbeddedHost& TheHost(std::u16string_view asked) {
  static embedded::EmbeddedHost* host = nullptr;
  if (host) return *host;
  auto options = embedded::OptionsFromEnvironment(
      EnvironmentVariable, std::filesystem::path(windows::WideText(windows::OwnFolder())) / L"host");
  if (!options) throw CannotCreate(asked, u"there is no place for the database");
  Services services = GetServices();
  // The answers of the library's forms are read there, and hold none for lists of another module.
  if (const auto answers = EnvironmentVariable(variables::kHostListAnswers); !answers.empty()) {
    services.list_chooser = new UnattendedForms(answers, EnvironmentVariable(variables::kMessageLog),
                                                *services.clock, *services.locale);
  }
  host = new embedded::EmbeddedHost(std::move(*options), services);
  return *host;
}

com::Registration OwnRegistration() {
  return DescribeRegistration(windows::WideText(windows::OwnFile()));
}

HRESULT RegisterUnlessThereIsAnother() {
  if (const auto key = ForeignKey()) {
    return com::ReportRefusal(kAnotherHostIsThere, L"QVA_DemoHost: another host is registered by " + *key +
                                                       L", and the demo host does not come before it");
  }
  return com::ReportRegistration(com::Register(OwnRegistration(), com::Scope::User));
}

}  // namespace
}  // namespace qva::demo

IDispatch* qva::com::NewComObject(const ObjectPtr& object) {
  auto* com_object = new demo::HostObject(object);
  com_object->AddRef();
  return com_object;
}

using namespace qva;
using namespace qva::demo;

extern "C" {

/// A host that was installed for the machine after the demo host was registered for the user is what the
/// caller gets: the user's registration would hide it. RPC_E_WRONG_THREAD while another thread has objects or
/// locks.
STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  return com::Guard([&]() -> HRESULT {
    const HostClass* host_class = FindHostClass(class_id);
    if (!host_class) return CLASS_E_CLASSNOTAVAILABLE;
    if (const auto installed = ForeignClass(*host_class, com::Scope::Machine)) {
      return CoGetClassObject(*installed, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, nullptr, interface_id,
                              result);
    }
    const com::Claim claim;
    if (!claim.is_granted()) return com::ReportOtherThread();
    windows::InstallPlatform();
    windows::InstallOwnObjectWrapper(&com::WrapObject);
    const auto create = [identifier = host_class->programmatic_identifier] {
      return TheHost(identifier).Create(identifier);
    };
    return com::NewClassFactory(create, interface_id, result);
  });
}

STDAPI DllCanUnloadNow() {
  return com::UseCount() == 0 && Object::LiveCount() == 0 ? S_OK : S_FALSE;
}

/// Registers for the current user, and for nobody else. Result: HRESULT 0x800704DA (ERROR_ALREADY_REGISTERED)
/// when someone else has a key of the host's classes, in the machine's hive or the user's; the thread's error
/// object then tells which, and nothing has changed. Otherwise the code of what the registry refused.
STDAPI DllRegisterServer() {
  return com::Guard([] { return RegisterUnlessThereIsAnother(); });
}

/// Removes what the demo host registered for the user, and nothing that another host has registered since.
STDAPI DllUnregisterServer() {
  return com::Guard([] { return com::ReportRegistration(com::Unregister(OwnRegistration())); });
}

/// As the two above; the command line may be empty or L"user".
STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  const std::wstring_view command = command_line ? command_line : L"";
  if (!command.empty() && command != L"user") return E_INVALIDARG;
  return install ? DllRegisterServer() : DllUnregisterServer();
}

}  // extern "C"
