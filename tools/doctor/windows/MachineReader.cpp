#include "tools/doctor/windows/MachineReader.h"

#include <set>

#include "platform/host.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "platform/windows/AnsiRegistry.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/WindowsLocale.h"
#include "server/com/CallLog.h"
#include "server/com/Registration.h"
#include "tools/doctor/windows/ProgramFiles.h"
#include "tools/doctor/windows/RegistryReader.h"

namespace qva::doctor {
namespace {

/// Office's versions that Excel's object model is the same in.
constexpr int kFirstOffice = 11;
constexpr int kLastOffice = 16;

std::u16string OfficeVersion(int number) {
  return NumberText(number) + u".0";
}

std::u16string WindowsVersion() {
  RTL_OSVERSIONINFOW version{.dwOSVersionInfoSize = sizeof version};
  // GetVersionEx tells the version that the program was made for.
  using Get = LONG(WINAPI*)(RTL_OSVERSIONINFOW*);
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  const auto get = reinterpret_cast<Get>(
      reinterpret_cast<void*>(system ? GetProcAddress(system, "RtlGetVersion") : nullptr));
  if (!get || get(&version) != 0) return u"?";
  return NumberText(version.dwMajorVersion) + u"." + NumberText(version.dwMinorVersion) + u"." +
         NumberText(version.dwBuildNumber);
}

bool Is64BitWindows() {
  BOOL is_emulated = FALSE;
  return kOwnBitness == Bitness::x64 || (IsWow64Process(GetCurrentProcess(), &is_emulated) && is_emulated);
}

/// Whether this process has more than a user's rights and therefore sees no registration of the user's. Where
/// the account control is off it sees them all the same.
bool IsElevated() {
  constexpr std::u16string_view kPolicy = u"Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\System";
  if (ReadNumber(Root::Machine, kPolicy, u"EnableLUA", View::x64).value_or(1) == 0) return false;
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return false;
  const windows::Handle owner(token);
  alignas(TOKEN_MANDATORY_LABEL) char buffer[sizeof(TOKEN_MANDATORY_LABEL) + SECURITY_MAX_SID_SIZE];
  DWORD size = 0;
  if (!GetTokenInformation(token, TokenIntegrityLevel, buffer, sizeof buffer, &size)) return false;
  const PSID level = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(buffer)->Label.Sid;
  const DWORD last = *GetSidSubAuthorityCount(level) - 1u;
  return *GetSidSubAuthority(level, last) > SECURITY_MANDATORY_MEDIUM_RID;
}

/// The Excels that Windows names, in whatever place.
class Excels {
 public:
  Excels() {
    constexpr std::u16string_view kAppPath =
        u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\excel.exe";
    for (const View view : {View::x64, View::x86}) {
      for (const Root root : {Root::User, Root::Machine}) {
        Add(ReadText(root, kAppPath, u"", view).value_or(u""));
      }
      for (int number = kLastOffice; number >= kFirstOffice; --number) {
        const auto folder = ReadText(
            Root::Machine, u"Software\\Microsoft\\Office\\" + OfficeVersion(number) + u"\\Excel\\InstallRoot",
            u"Path", view);
        if (folder) Add(*folder + (folder->ends_with(u'\\') ? u"" : u"\\") + u"EXCEL.EXE");
      }
    }
  }

  std::vector<ExcelFacts> Found() && { return std::move(found_); }

 private:
  void Add(std::u16string path) {
    if (path.starts_with(u'"')) path = path.substr(1, path.find(u'"', 1) - 1);
    if (path.empty() || !seen_.insert(ToLower(path)).second) return;
    found_.push_back({LookAt(path)});
  }

  std::set<std::u16string> seen_;
  std::vector<ExcelFacts> found_;
};

/// The versions whose settings count: those of the Excels that are there, and of the one that macros get.
std::set<std::u16string> VersionsOf(const std::vector<ExcelFacts>& excels) {
  std::set<std::u16string> versions;
  for (const ExcelFacts& excel : excels) {
    const std::u16string& version = excel.file.version;
    if (!version.empty()) versions.insert(version.substr(0, version.find(u'.')) + u".0");
  }
  return versions;
}

/// A setting: the administrator's where there is one, else the user's.
struct Setting {
  std::int32_t value = -1;
  bool is_policy = false;
};

Setting SettingOf(const std::u16string& version, std::u16string_view name) {
  const std::u16string key = u"Microsoft\\Office\\" + version + u"\\Excel\\Security";
  for (const Root root : {Root::User, Root::Machine}) {
    const auto policy = ReadNumber(root, u"Software\\Policies\\" + key, name, View::x64);
    if (policy) return {static_cast<std::int32_t>(*policy), true};
  }
  const auto own = ReadNumber(Root::User, u"Software\\" + key, name);
  return own ? Setting{static_cast<std::int32_t>(*own)} : Setting{};
}

TrustFacts TrustOf(const std::u16string& version) {
  const Setting macros = SettingOf(version, u"VBAWarnings");
  const Setting access = SettingOf(version, u"AccessVBOM");
  return {.version = version,
          .macros = macros.value,
          .is_macros_policy = macros.is_policy,
          .project_access = access.value,
          .is_project_access_policy = access.is_policy};
}

}  // namespace

MachineFacts LookAtMachine() {
  MachineFacts facts;
  facts.doctor_version = QVA_DOCTOR_VERSION;
  facts.windows_version = WindowsVersion();
  facts.is_64bit = Is64BitWindows();
  facts.is_elevated = IsElevated();
  facts.code_page = GetACP();
  windows::AnsiRegistry registry;
  facts.book_setting = GetSetting(registry, windows::WindowsLocale(), host::kSettingsApplication,
                                  host::kFormsSection, host::kBookSetting, u"");
  facts.call_log =
      ReadText(Root::User, windows::TextOf(com::kOwnKey), windows::TextOf(com::kCallLogValue)).value_or(u"");
  facts.excels = Excels().Found();
  for (const std::u16string& version : VersionsOf(facts.excels)) facts.trusts.push_back(TrustOf(version));
  return facts;
}

}  // namespace qva::doctor
