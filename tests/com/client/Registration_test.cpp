// What registration does where it is refused, what it leaves when it fails, and the library without any.
#include <windows.h>

#include <sddl.h>

#include <utility>

#include "platform/error.h"
#include "platform/text.h"
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

using testing::HasSubstr;

constexpr wchar_t kClasses[] = L"Software\\Classes";
constexpr wchar_t kRecord[] = L"Software\\QVA_Varnholt\\Registration";
constexpr wchar_t kFirstClass[] = L"Software\\Classes\\QVA_Varnholt.gExcelObject";
/// A class in the middle: something is written before it and after it.
constexpr wchar_t kMiddleClass[] = L"Software\\Classes\\QVA_Varnholt.CSetPath";

bool KeyExists(HKEY hive, const wchar_t* path) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(hive, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

std::wstring TextIn(HKEY hive, const wchar_t* path, const wchar_t* name) {
  wchar_t text[1024] = {};
  DWORD bytes = sizeof text;
  RegGetValueW(hive, path, name, RRF_RT_REG_SZ, nullptr, text, &bytes);
  return text;
}

/// A key that registration needs, made for a while.
class TemporaryKey {
 public:
  TemporaryKey(HKEY hive, const wchar_t* path, DWORD options) : hive_(hive), path_(path) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(RegCreateKeyExW(hive, path, 0, nullptr, options, KEY_READ, nullptr, &key, &disposition),
              ERROR_SUCCESS);
    RegCloseKey(key);
    is_ours_ = disposition == REG_CREATED_NEW_KEY;
  }
  TemporaryKey(const TemporaryKey&) = delete;
  TemporaryKey& operator=(const TemporaryKey&) = delete;
  ~TemporaryKey() {
    if (is_ours_) RegDeleteTreeW(hive_, path_);
  }

 private:
  HKEY hive_;
  const wchar_t* path_;
  bool is_ours_ = false;
};

/// A key that ends with the session may hold no lasting one: whoever tries is refused.
class Obstacle : public TemporaryKey {
 public:
  explicit Obstacle(HKEY hive) : TemporaryKey(hive, kMiddleClass, REG_OPTION_VOLATILE) {}
};

/// Takes rights to a key away from everybody for a while.
class Refusal {
 public:
  static constexpr wchar_t kWriting[] = L"0x6";  // setting values and creating keys
  static constexpr wchar_t kEverything[] = L"KA";

  Refusal(HKEY hive, const wchar_t* path, const wchar_t* rights) {
    EXPECT_EQ(RegOpenKeyExW(hive, path, 0, READ_CONTROL | WRITE_DAC, &key_), ERROR_SUCCESS);
    DWORD size = 0;
    RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, nullptr, &size);
    before_.resize(size);
    EXPECT_EQ(RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data(), &size), ERROR_SUCCESS);
    const std::wstring text = std::wstring(L"D:(D;;") + rights + L";;;WD)(A;;KA;;;WD)";
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1,
                                                                     &descriptor, nullptr));
    EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    LocalFree(descriptor);
  }
  Refusal(const Refusal&) = delete;
  Refusal& operator=(const Refusal&) = delete;
  ~Refusal() {
    EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data()), ERROR_SUCCESS);
    RegCloseKey(key_);
  }

 private:
  HKEY key_ = nullptr;
  std::vector<char> before_;
};

class Registration : public ServerTest {
 protected:
  ~Registration() override {
    EXPECT_EQ(Unregister(), S_OK);
    ExpectNothingIn(HKEY_LOCAL_MACHINE);
    ExpectNothingIn(HKEY_CURRENT_USER);
  }

  HRESULT Register() const { return Export<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(); }
  HRESULT Unregister() const { return Export<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer")(); }
  HRESULT Install(const std::wstring& manner, BOOL install = TRUE) const {
    return Export<HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR)>("DllInstall")(install, manner.c_str());
  }
  HRESULT Uninstall(const std::wstring& manner) const { return Install(manner, FALSE); }
  static std::string FailureText() { return ToUtf8(TakeErrorObject().description); }

  static void ExpectNothingIn(HKEY hive) {
    EXPECT_FALSE(KeyExists(hive, kFirstClass));
    EXPECT_FALSE(KeyExists(hive, kMiddleClass));
    EXPECT_FALSE(KeyExists(hive, ClassKey().c_str()));
    EXPECT_FALSE(KeyExists(hive, L"Software\\QVA_Varnholt"));
  }
  static void ExpectAllIn(HKEY hive, const wchar_t* remembered_as) {
    EXPECT_TRUE(KeyExists(hive, kFirstClass));
    EXPECT_TRUE(KeyExists(hive, kMiddleClass));
    EXPECT_EQ(TextIn(hive, (ClassKey() + L"\\InprocServer32").c_str(), L""), LibraryPath());
    EXPECT_EQ(TextIn(hive, kRecord, sizeof(void*) == 8 ? L"win64" : L"win32"), remembered_as);
  }
  /// The key of the class that is registered last.
  static std::wstring ClassKey() {
    wchar_t text[39];
    StringFromGUID2(CLSID_CEnvironment, text, 39);
    return std::wstring(L"Software\\Classes\\CLSID\\") + text;
  }
};

TEST_F(Registration, StandsInTheMachinesHiveAndRemembersIt) {
  EXPECT_EQ(Register(), S_OK);
  ExpectAllIn(HKEY_LOCAL_MACHINE, L"machine");
  ExpectNothingIn(HKEY_CURRENT_USER);
}

TEST_F(Registration, StandsInTheUsersHiveWhereTheMachinesIsRefused) {
  {
    const Refusal refusal(HKEY_LOCAL_MACHINE, kClasses, Refusal::kWriting);
    EXPECT_EQ(Register(), S_OK);
  }
  ExpectAllIn(HKEY_CURRENT_USER, L"user");
  ExpectNothingIn(HKEY_LOCAL_MACHINE);
}

TEST_F(Registration, StandsInTheUsersHiveWhereASingleKeyOfTheMachinesIsRefused) {
  {
    const TemporaryKey key(HKEY_LOCAL_MACHINE, kMiddleClass, REG_OPTION_NON_VOLATILE);
    const Refusal refusal(HKEY_LOCAL_MACHINE, kMiddleClass, Refusal::kWriting);
    EXPECT_EQ(Register(), S_OK);
    EXPECT_FALSE(KeyExists(HKEY_LOCAL_MACHINE, kFirstClass)) << "what came before the refusal is taken back";
  }
  ExpectAllIn(HKEY_CURRENT_USER, L"user");
  ExpectNothingIn(HKEY_LOCAL_MACHINE);
}

TEST_F(Registration, ForTheUserLeavesTheMachinesWhole) {
  EXPECT_EQ(Register(), S_OK);
  EXPECT_EQ(Install(L"user"), S_OK);
  ExpectAllIn(HKEY_LOCAL_MACHINE, L"machine");
  ExpectAllIn(HKEY_CURRENT_USER, L"user");
}

TEST_F(Registration, ForTheMachineTakesOverFromTheUsers) {
  EXPECT_EQ(Install(L"user"), S_OK);
  EXPECT_EQ(Register(), S_OK);
  ExpectAllIn(HKEY_LOCAL_MACHINE, L"machine");
  ExpectNothingIn(HKEY_CURRENT_USER);
}

TEST_F(Registration, ForTheMachineAloneFailsWhereTheMachinesIsRefused) {
  {
    const TemporaryKey key(HKEY_LOCAL_MACHINE, kMiddleClass, REG_OPTION_NON_VOLATILE);
    const Refusal refusal(HKEY_LOCAL_MACHINE, kMiddleClass, Refusal::kWriting);
    EXPECT_EQ(Install(L"machine"), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
  }
  ExpectNothingIn(HKEY_LOCAL_MACHINE);
  ExpectNothingIn(HKEY_CURRENT_USER);
  EXPECT_EQ(Install(L"machine"), S_OK);
  ExpectAllIn(HKEY_LOCAL_MACHINE, L"machine");
}

TEST_F(Registration, GoesFromTheHiveThatIsNamedAlone) {
  EXPECT_EQ(Register(), S_OK);
  EXPECT_EQ(Install(L"user"), S_OK);
  EXPECT_EQ(Uninstall(L"user"), S_OK);
  ExpectAllIn(HKEY_LOCAL_MACHINE, L"machine");
  ExpectNothingIn(HKEY_CURRENT_USER);
  EXPECT_EQ(Install(L"user"), S_OK);
  EXPECT_EQ(Uninstall(L"machine"), S_OK);
  ExpectNothingIn(HKEY_LOCAL_MACHINE);
  ExpectAllIn(HKEY_CURRENT_USER, L"user");
}

TEST_F(Registration, IsTakenBackWhenTheUsersCannotBeTakenOver) {
  EXPECT_EQ(Install(L"user"), S_OK);
  {
    const Refusal refusal(HKEY_CURRENT_USER, kMiddleClass, Refusal::kEverything);
    EXPECT_EQ(Register(), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
    EXPECT_THAT(FailureText(), HasSubstr("HKEY_CURRENT_USER\\Software\\Classes\\QVA_Varnholt.CSetPath "));
    ExpectNothingIn(HKEY_LOCAL_MACHINE);
  }
  // The next one finds what is left.
}

TEST_F(Registration, NamesTheKeyAndTakesEverythingBackWhenItFails) {
  const Obstacle obstacle(HKEY_LOCAL_MACHINE);
  EXPECT_EQ(Register(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  EXPECT_THAT(FailureText(),
              HasSubstr("HKEY_LOCAL_MACHINE\\Software\\Classes\\QVA_Varnholt.CSetPath\\CLSID "));
  EXPECT_FALSE(KeyExists(HKEY_LOCAL_MACHINE, kFirstClass)) << "it came before the failure";
  EXPECT_FALSE(KeyExists(HKEY_LOCAL_MACHINE, L"Software\\QVA_Varnholt"));
  ExpectNothingIn(HKEY_CURRENT_USER);
}

TEST_F(Registration, NamesTheUsersKeyWhenBothHivesRefuse) {
  const TemporaryKey classes(HKEY_CURRENT_USER, kClasses, REG_OPTION_NON_VOLATILE);
  const Obstacle obstacle(HKEY_CURRENT_USER);
  const Refusal refusal(HKEY_LOCAL_MACHINE, kClasses, Refusal::kWriting);
  EXPECT_EQ(Register(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  EXPECT_THAT(FailureText(),
              HasSubstr("HKEY_CURRENT_USER\\Software\\Classes\\QVA_Varnholt.CSetPath\\CLSID "));
  EXPECT_FALSE(KeyExists(HKEY_CURRENT_USER, kFirstClass));
  ExpectNothingIn(HKEY_LOCAL_MACHINE);
}

TEST_F(Registration, LeavesAnEarlierOneAsItWasWhenItFails) {
  EXPECT_EQ(Register(), S_OK);
  const std::wstring server = ClassKey() + L"\\InprocServer32";
  const std::pair<const wchar_t*, std::wstring> earlier[] = {{kFirstClass, L"earlier text"},
                                                             {server.c_str(), L"C:\\earlier\\file.dll"}};
  for (const auto& [key, text] : earlier) {
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, L"", REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }
  const std::wstring version = ClassKey() + L"\\Version";
  RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, version.c_str(), L"");
  {
    // Refused at the very last step, and for the user, too.
    const Refusal refusal(HKEY_LOCAL_MACHINE, kRecord, Refusal::kWriting);
    const TemporaryKey classes(HKEY_CURRENT_USER, kClasses, REG_OPTION_NON_VOLATILE);
    const Obstacle obstacle(HKEY_CURRENT_USER);
    EXPECT_EQ(Register(), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  }
  for (const auto& [key, text] : earlier) EXPECT_EQ(TextIn(HKEY_LOCAL_MACHINE, key, L""), text);
  EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, version.c_str(), L"", RRF_RT_ANY, nullptr, nullptr, nullptr),
            ERROR_FILE_NOT_FOUND);
  EXPECT_TRUE(KeyExists(HKEY_LOCAL_MACHINE, kMiddleClass));
}

TEST_F(Registration, RefusesAnUnknownManner) {
  EXPECT_EQ(Install(L"everywhere"), E_INVALIDARG);
}

TEST_F(Registration, WritesTheReasonOfAFailureIntoTheReport) {
  const TemporaryFolder folder;
  const std::wstring report = folder / L"qva report.txt";
  EXPECT_EQ(Install(L"machine report:" + report), S_OK);
  EXPECT_FALSE(std::filesystem::exists(report));
  EXPECT_EQ(Uninstall(L"machine report:" + report), S_OK);
  ExpectNothingIn(HKEY_LOCAL_MACHINE);

  const Obstacle obstacle(HKEY_LOCAL_MACHINE);
  for (const wchar_t* command : {L"machine report:", L"report:"}) {
    EXPECT_EQ(Install(command + report), HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
    EXPECT_THAT(ToUtf8(windows::TextOf(WideContent(report).c_str())),
                HasSubstr("0x800703FD: QVA_Varnholt: the registry key "
                          "HKEY_LOCAL_MACHINE\\Software\\Classes\\QVA_Varnholt.CSetPath\\CLSID "));
  }
}

TEST_F(Registration, GoesToTheSameHiveInADryRun) {
  const TemporaryFolder folder;
  const std::wstring file = folder / L"qva_dry_run.reg";
  const auto script = [&] {
    EXPECT_EQ(Install(L"dryrun:" + file), S_OK);
    return WideContent(file);
  };
  const std::wstring machine = script();
  EXPECT_NE(machine.find(L"[HKEY_LOCAL_MACHINE\\"), machine.npos);
  EXPECT_EQ(machine.find(L"[HKEY_CURRENT_USER\\"), machine.npos);
  const Refusal refusal(HKEY_LOCAL_MACHINE, kClasses, Refusal::kWriting);
  const std::wstring user = script();
  EXPECT_EQ(user.find(L"[HKEY_LOCAL_MACHINE\\"), user.npos);
  EXPECT_NE(user.find(L"[HKEY_CURRENT_USER\\"), user.npos);
}

/// Puts the manifest beside the library in force.
class Manifest : public testing::Test {
 protected:
  Manifest() {
    std::wstring path = LibraryPath();
    path.replace(path.rfind(L".dll"), 4, L".manifest");
    ACTCTXW context{.cbSize = sizeof context, .lpSource = path.c_str()};
    context_ = CreateActCtxW(&context);
    EXPECT_NE(context_, INVALID_HANDLE_VALUE) << GetLastError();
    EXPECT_TRUE(ActivateActCtx(context_, &cookie_));
  }
  ~Manifest() override {
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
  }

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
};

TEST_F(Manifest, MakesEveryClassCreatableWithoutRegistration) {
  ASSERT_FALSE(KeyExists(HKEY_CLASSES_ROOT, L"QVA_Varnholt.CTools")) << "the library is registered";
  // All but CLockScreen, which cannot be made without an application.
  for (const wchar_t* identifier :
       {L"QVA_Varnholt.gExcelObject", L"QVA_Varnholt.CTools", L"QVA_Varnholt.CRepPeriod",
        L"QVA_Varnholt.CDatePic", L"QVA_Varnholt.CReports", L"QVA_Varnholt.CSaveForm",
        L"QVA_Varnholt.CSetPath", L"QVA_Varnholt.CToolbar", L"QVA_Varnholt.CButtonProperties",
        L"QVA_Varnholt.CToolbars", L"QVA_Varnholt.CDefaultButtons", L"QVA_Varnholt.CCommandsEvent",
        L"QVA_Varnholt.CEnvironment"}) {
    CLSID class_id{};
    ASSERT_EQ(CLSIDFromProgID(identifier, &class_id), S_OK);
    ComPtr<IDispatch> object;
    EXPECT_EQ(object.Obtain([&](IDispatch** received) {
      return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(received));
    }),
              S_OK);
    EXPECT_TRUE(object);
  }
}

}  // namespace
}  // namespace qva::com
