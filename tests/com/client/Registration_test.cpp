// What registration leaves when it fails, and the library without any registration.
#include "platform/error.h"
#include "platform/text.h"
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

bool KeyExists(HKEY hive, const wchar_t* path) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(hive, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

class RegistrationFailures : public ServerTest {
 protected:
  // A key that ends with the session may hold no lasting one: whoever tries is refused.
  RegistrationFailures() {
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, kObstacle, 0, nullptr, REG_OPTION_VOLATILE, KEY_READ,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
  }
  ~RegistrationFailures() override { RegDeleteTreeW(HKEY_LOCAL_MACHINE, kObstacle); }

  static constexpr wchar_t kObstacle[] = L"Software\\Classes\\QVA_Varnholt.CSetPath";
};

TEST_F(RegistrationFailures, NameTheKeyAndTakeEverythingBack) {
  EXPECT_EQ(Export<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(),
            HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE));
  const std::string text = ToUtf8(TakeErrorObject().description);
  EXPECT_THAT(text,
              testing::HasSubstr("HKEY_LOCAL_MACHINE\\Software\\Classes\\QVA_Varnholt.CSetPath\\CLSID"));
  EXPECT_FALSE(KeyExists(HKEY_LOCAL_MACHINE, L"Software\\Classes\\QVA_Varnholt.gExcelObject"))
      << "it came before the failure";
  EXPECT_FALSE(KeyExists(HKEY_LOCAL_MACHINE, L"Software\\QVA_Varnholt"));
  EXPECT_FALSE(KeyExists(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt"));
}

class Install : public ServerTest {};

TEST_F(Install, RefusesAnUnknownManner) {
  EXPECT_EQ(Export<HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR)>("DllInstall")(TRUE, L"everywhere"), E_INVALIDARG);
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
