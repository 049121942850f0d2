// The demo host where another host is registered: the bench's, for the machine.
#include <windows.h>

#include "platform/text.h"
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

using testing::HasSubstr;

constexpr HRESULT kAnotherHostIsThere = static_cast<HRESULT>(0x800704DA);
constexpr CLSID kDemoCommonObjects = {
    0x7c3f9e14, 0x2b86, 0x4a57, {0x9d, 0x1e, 0x4f, 0x60, 0xb8, 0x25, 0xd3, 1}};

class DemoHost : public testing::Test {
 protected:
  DemoHost() {
    std::wstring path = LibraryPath();
    path.replace(path.rfind(L'\\') + 1, path.npos, L"QVA_DemoHost.dll");
    module_ = LoadLibraryW(path.c_str());
    EXPECT_TRUE(module_) << GetLastError();
  }
  ~DemoHost() override {
    if (module_) FreeLibrary(module_);
  }

  template <class Function>
  Function Export(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  HRESULT Install(const wchar_t* manner) const {
    return Export<HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR)>("DllInstall")(TRUE, manner);
  }
  static bool IsRegisteredForUser() {
    HKEY key = nullptr;
    const bool is_there = RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt\\DemoHost", 0, KEY_READ,
                                        &key) == ERROR_SUCCESS;
    if (is_there) RegCloseKey(key);
    return is_there;
  }

 private:
  HMODULE module_ = nullptr;
};

TEST_F(DemoHost, RefusesToBeRegisteredAndNamesTheOtherOne) {
  EXPECT_EQ(Export<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(), kAnotherHostIsThere);
  const std::string reason = ToUtf8(TakeErrorObject().description);
  EXPECT_THAT(reason, HasSubstr("another host is registered by HKEY_LOCAL_MACHINE\\Software\\Classes\\"
                                "NVXCommonObjects.CommonObjects,"));
  for (const wchar_t* manner : {L"", L"user"}) EXPECT_EQ(Install(manner), kAnotherHostIsThere);
  EXPECT_FALSE(IsRegisteredForUser());
}

TEST_F(DemoHost, KnowsNoOtherMannerOfRegistration) {
  EXPECT_EQ(Install(L"machine"), E_INVALIDARG);
}

TEST_F(DemoHost, LeavesItsPlaceToAHostThatWasInstalledForTheMachineLater) {
  const auto get_class = Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(factory.Obtain([&](IClassFactory** received) {
    return get_class(kDemoCommonObjects, IID_IClassFactory, reinterpret_cast<void**>(received));
  }),
            S_OK);
  ComPtr<IDispatch> object;
  ASSERT_EQ(object.Obtain([&](IDispatch** received) {
    return factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(received));
  }),
            S_OK);
  UINT count = 0;
  EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u) << "the bench's objects describe themselves, the demo host's do not";
}

TEST_F(DemoHost, HasNoOtherClasses) {
  void* result = this;
  EXPECT_EQ(Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject")(
                CLSID_CTools, IID_IClassFactory, &result),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(result, nullptr);
}

}  // namespace
}  // namespace qva::com
