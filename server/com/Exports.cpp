// The entries of the in-process server: class factories, unloading and self-registration.
#include <olectl.h>

#include <string>
#include <string_view>

#include "global/Globals.h"
#include "global/StartUp.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/OwnObject.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsPlatform.h"
#include "server/com/Registration.h"
#include "server/com/ServerClasses.h"
#include "server/com/ServerErrors.h"
#include "server/com/ServerModule.h"

namespace qva::com {
namespace {

/// Creates the objects of one class.
class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ServerClass& server_class) : server_class_(server_class) { Lock(); }
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    const bool is_known = interface_id == IID_IUnknown || interface_id == IID_IClassFactory;
    *result = is_known ? static_cast<IClassFactory*>(this) : nullptr;
    if (!is_known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG references = InterlockedDecrement(&references_);
    if (references == 0) delete this;
    return static_cast<ULONG>(references);
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      const auto object =
          windows::ComPtr<IDispatch>::Adopt(WrapObject(CreatePublicObject(*server_class_.public_class)));
      return object->QueryInterface(interface_id, result);
    } catch (...) {
      return ReportEarly(interface_id);
    }
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    lock ? Lock() : Unlock();
    return S_OK;
  }

 private:
  ~ClassFactory() { Unlock(); }

  const ServerClass& server_class_;
  LONG references_ = 0;
};

/// The registration of this file, from where it lies now.
Registration OwnRegistration() {
  return DescribeRegistration(windows::WideText(windows::OwnFile()));
}

/// Tells the user's tool (regsvr32 shows the code alone, debuggers and installers the text) what failed.
HRESULT ReportRegistration(const std::optional<RegistrationFailure>& failure) {
  if (!failure) return S_OK;
  const std::wstring message = failure->Message();
  OutputDebugStringW(message.c_str());
  SetErrorObject(GUID_NULL, L"QVA_Varnholt", message.c_str());
  return HRESULT_FROM_WIN32(static_cast<DWORD>(failure->code));
}

/// Writes the registry script where `path` says. Raises nothing; result as for the exports.
HRESULT WriteScript(const std::wstring& path, const std::wstring& script) {
  HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return HRESULT_FROM_WIN32(GetLastError());
  const std::wstring text = L'\xFEFF' + script;
  DWORD written = 0;
  const BOOL done =
      WriteFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written, nullptr);
  const HRESULT code = done ? S_OK : HRESULT_FROM_WIN32(GetLastError());
  CloseHandle(file);
  return code;
}

/// Runs the body of an export; nothing it throws leaves the library.
template <class Body>
HRESULT Guard(Body&& body) noexcept {
  try {
    return body();
  } catch (...) {
    return ReportEarly(GUID_NULL);
  }
}

}  // namespace
}  // namespace qva::com

using namespace qva;
using namespace qva::com;

extern "C" {

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  return Guard([&]() -> HRESULT {
    const ServerClass* server_class = FindServerClass(class_id);
    if (!server_class) return CLASS_E_CLASSNOTAVAILABLE;
    windows::InstallPlatform();
    windows::InstallOwnObjectWrapper(&WrapObject);
    const windows::ComPtr<IClassFactory> factory(new ClassFactory(*server_class));
    return factory->QueryInterface(interface_id, result);
  });
}

/// S_OK when no COM object and no lock is left. What the library itself still holds - the globals that
/// outlive the last gExcelObject, the host's tools - is let go of first: unloading would end it just so.
STDAPI DllCanUnloadNow() {
  return Guard([]() -> HRESULT {
    if (UseCount() != 0) return S_FALSE;
    ResetGlobals();
    ShutDown();
    return UseCount() == 0 && Object::LiveCount() == 0 ? S_OK : S_FALSE;
  });
}

/// Registers for the machine where this process may, otherwise for the user.
STDAPI DllRegisterServer() {
  return Guard([] { return ReportRegistration(RegisterWherePermitted(OwnRegistration())); });
}

STDAPI DllUnregisterServer() {
  return Guard([] { return ReportRegistration(Unregister(OwnRegistration())); });
}

/// As the two above; L"user" registers for the user even where the machine could be had, and
/// L"dryrun:<file>" writes what would be registered as a registry script and changes nothing.
STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  return Guard([&]() -> HRESULT {
    constexpr std::wstring_view kDryRun = L"dryrun:";
    const std::wstring_view command = command_line ? command_line : L"";
    if (command.starts_with(kDryRun)) {
      return WriteScript(std::wstring(command.substr(kDryRun.size())),
                         RegistryScript(OwnRegistration(), ProbeScope()));
    }
    if (!install) return DllUnregisterServer();
    if (command.empty()) return DllRegisterServer();
    if (command != L"user") return E_INVALIDARG;
    return ReportRegistration(Register(OwnRegistration(), Scope::User));
  });
}

}  // extern "C"
