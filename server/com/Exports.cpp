// The entries of the in-process server: class factories, unloading and self-registration.
#include <string>
#include <string_view>

#include "global/Globals.h"
#include "global/StartUp.h"
#include "platform/windows/Busy.h"
#include "platform/windows/Handle.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/OwnObject.h"
#include "platform/windows/WideText.h"
#include "platform/windows/services/WindowsPlatform.h"
#include "server/com/CallLog.h"
#include "server/com/LibraryRegistration.h"
#include "server/com/ServerClasses.h"
#include "server/com/ServerEntries.h"
#include "server/com/ServerModule.h"

namespace qva::com {
namespace {

/// The registration of this file, from where it lies now.
Registration OwnRegistration() {
  return DescribeRegistration(windows::WideText(windows::OwnFile()));
}

/// Lets go of what the library holds by itself: the globals that outlive the last gExcelObject, the host's
/// tools.
void LetGo() {
  const windows::BusyBudget operation;
  ResetGlobals();
  ShutDown();
}

/// Writes a file for the user's tools. Raises nothing; result as for the exports.
HRESULT WriteUnicodeFile(const std::wstring& path, const std::wstring& content) {
  const windows::Handle file = windows::OwnFileHandle(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return HRESULT_FROM_WIN32(GetLastError());
  const std::wstring text = L'\xFEFF' + content;
  DWORD written = 0;
  const BOOL done = WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)),
                              &written, nullptr);
  return done ? S_OK : HRESULT_FROM_WIN32(GetLastError());
}

}  // namespace
}  // namespace qva::com

using namespace qva;
using namespace qva::com;

extern "C" {

/// RPC_E_WRONG_THREAD while another thread has objects or locks.
STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  return Guard([&]() -> HRESULT {
    const ServerClass* server_class = FindServerClass(class_id);
    if (!server_class) return CLASS_E_CLASSNOTAVAILABLE;
    const Claim claim;
    if (!claim.is_granted()) return ReportOtherThread();
    if (claim.is_new()) LetGo();  // of what is the former thread's
    windows::InstallPlatform();
    StartCallLog();
    windows::InstallOwnObjectWrapper(&WrapObject);
    const auto create = [server_class] { return CreatePublicObject(*server_class->public_class); };
    return NewClassFactory(create, interface_id, result);
  });
}

/// S_OK when no COM object and no lock is left. What the library itself still holds is let go of first:
/// unloading would end it just so. S_FALSE while another thread is being let in.
STDAPI DllCanUnloadNow() {
  return Guard([]() -> HRESULT {
    if (UseCount() != 0) return S_FALSE;
    {
      const Claim claim;
      if (!claim.is_granted()) return S_FALSE;
      LetGo();
    }
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

/// As the two above, or for one hive alone: L"user" and L"machine" register and unregister there or fail.
/// After either, or alone, L"report:<file>" has the reason of a failure written into a file. L"dryrun:<file>"
/// writes what would be registered as a registry script and changes nothing.
STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  return Guard([&]() -> HRESULT {
    constexpr std::wstring_view kDryRun = L"dryrun:";
    constexpr std::wstring_view kReport = L"report:";
    std::wstring_view command = command_line ? command_line : L"";
    if (command.starts_with(kDryRun)) {
      return WriteUnicodeFile(std::wstring(command.substr(kDryRun.size())),
                              RegistryScript(OwnRegistration(), ProbeScope()));
    }
    std::wstring report;
    if (const std::size_t place = command.find(kReport); place != command.npos) {
      report = command.substr(place + kReport.size());
      command = command.substr(0, place);
      if (command.ends_with(L' ')) command.remove_suffix(1);
    }

    const Registration own = OwnRegistration();
    std::optional<RegistrationFailure> failure;
    if (command.empty()) {
      failure = install ? RegisterWherePermitted(own) : Unregister(own);
    } else if (command == L"user" || command == L"machine") {
      const Scope scope = command == L"user" ? Scope::User : Scope::Machine;
      failure = install ? Register(own, scope) : Unregister(own, scope);
    } else {
      return E_INVALIDARG;
    }

    const HRESULT code = ReportRegistration(failure);
    if (failure && !report.empty()) {
      wchar_t number[11];
      wsprintfW(number, L"0x%08lX", code);
      WriteUnicodeFile(report, number + (L": " + failure->Message()) + L"\r\n");
    }
    return code;
  });
}

}  // extern "C"
