// The library in a folder whose name no code page holds whole.
#include "platform/text.h"
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

class Folder : public testing::Test {
 protected:
  Folder() { std::filesystem::copy_file(LibraryPath(), file_); }
  ~Folder() override { EXPECT_TRUE(DeleteFileW(file_.c_str())) << "the library is no longer in use"; }

  /// Loads the library and calls an entry.
  template <class... Arguments>
  HRESULT CallEntry(const char* name, Arguments... arguments) const {
    HMODULE module = LoadLibraryW(file_.c_str());
    EXPECT_NE(module, nullptr);
    const auto entry = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(Arguments...)>(
        reinterpret_cast<void*>(GetProcAddress(module, name)));
    const HRESULT code = entry(arguments...);
    FreeLibrary(module);
    return code;
  }

  const TemporaryFolder folder_{L"Įmonės šablonai ąčęėįšųūž 漢 "};
  const std::filesystem::path file_ = folder_ / L"QVA_Varnholt.dll";
};

TEST_F(Folder, IsRegisteredAndLoadedUnderItsName) {
  ASSERT_EQ(CallEntry("DllRegisterServer"), S_OK);
  EXPECT_EQ(GetModuleHandleW(file_.c_str()), nullptr);
  {
    CLSID class_id{};
    EXPECT_EQ(CLSIDFromProgID(L"QVA_Varnholt.CTools", &class_id), S_OK);
    ComPtr<_CTools> tools;
    EXPECT_EQ(tools.Obtain([&](_CTools** received) {
      return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(_CTools),
                              reinterpret_cast<void**>(received));
    }),
              S_OK);
    EXPECT_NE(GetModuleHandleW(file_.c_str()), nullptr);

    // The description that the object reads from its own file, and the one that a project refers to.
    ComPtr<ITypeInfo> type;
    if (tools) {
      EXPECT_EQ(type.Obtain([&](ITypeInfo** received) { return tools->GetTypeInfo(0, 0, received); }), S_OK);
    }
    EXPECT_TRUE(type);
    Bstr path;
    EXPECT_EQ(QueryPathOfRegTypeLib(LIBID_QVA_Varnholt, 1, 0, 0, path.Receive()), S_OK);
    EXPECT_EQ(ToUtf8(windows::TextOf(path.get())), ToUtf8(windows::TextOf(file_.c_str())));
  }
  CoFreeUnusedLibrariesEx(0, 0);
  EXPECT_EQ(GetModuleHandleW(file_.c_str()), nullptr);
  EXPECT_EQ(CallEntry("DllUnregisterServer"), S_OK);
}

TEST_F(Folder, StandsInTheRegistryScript) {
  const std::filesystem::path script = folder_ / L"Žurnalas 漢.reg";
  const std::wstring command = L"dryrun:" + script.wstring();
  ASSERT_EQ((CallEntry<BOOL, LPCWSTR>("DllInstall", TRUE, command.c_str())), S_OK);
  const std::wstring name = folder_.path().filename();
  EXPECT_NE(WideContent(script).find(L"\\\\" + name + L"\\\\QVA_Varnholt.dll\""), std::wstring::npos);
}

}  // namespace
}  // namespace qva::com
