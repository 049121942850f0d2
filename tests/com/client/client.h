// What the tests of the COM server share: the loaded DLL, and calls as COM clients make them.
#pragma once

#include <gmock/gmock.h>
#include <windows.h>

#include <psapi.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "QVA_Varnholt_idl.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Variant.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/WideText.h"
#include "tests/files.h"

namespace qva::com {

using windows::Bstr;
using windows::ComPtr;
using windows::Variant;

/// The file of the server, beside the test program.
inline std::wstring LibraryPath() {
  std::wstring path(1024, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L'\\') + 1) + L"QVA_Varnholt.dll";
}

/// The content of a file of UTF-16.
inline std::wstring WideContent(const std::filesystem::path& file) {
  const std::string bytes = FileContent(file);
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  return text;
}

/// The code that a trappable error has as a result.
constexpr HRESULT ErrorResult(int number) {
  return static_cast<HRESULT>(0x800A0000u + static_cast<unsigned>(number));
}

/// What is no date: beyond the years 100 to 9999, and no number at all.
inline constexpr DATE kNoDates[] = {1e10,
                                    -1e10,
                                    1e300,
                                    -1e300,
                                    2958466,
                                    -657435,
                                    std::numeric_limits<DATE>::infinity(),
                                    -std::numeric_limits<DATE>::infinity(),
                                    std::numeric_limits<DATE>::quiet_NaN()};

/// The text and the source of the thread's error object, which is taken.
struct ErrorObject {
  std::u16string source;
  std::u16string description;

  friend bool operator==(const ErrorObject&, const ErrorObject&) = default;
};
inline ErrorObject TakeErrorObject() {
  ComPtr<IErrorInfo> info;
  info.Obtain([](IErrorInfo** received) { return GetErrorInfo(0, received); });
  if (!info) return {};
  Bstr source;
  Bstr description;
  info->GetSource(source.Receive());
  info->GetDescription(description.Receive());
  return {source.Text(), description.Text()};
}

/// The memory that this process alone holds.
inline SIZE_T PrivateBytes() {
  PROCESS_MEMORY_COUNTERS counters{.cb = sizeof counters};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

/// What a late-bound call gave.
struct Answer {
  HRESULT code = E_UNEXPECTED;
  Value value;
  UINT argument = 99;  ///< 99: not set
  HRESULT error_code = S_OK;
  std::u16string source;
  std::u16string description;
};

/// Invokes a member with arguments as they stand in DISPPARAMS: named ones first, the others from last to
/// first.
inline Answer Invoke(IDispatch& object, DISPID id, WORD flags, std::vector<VARIANT> arguments = {},
                     std::vector<DISPID> named = {}) {
  DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                        static_cast<UINT>(named.size())};
  Variant result;
  EXCEPINFO info{};
  Answer answer;
  answer.code = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result.get(), &info,
                              &answer.argument);
  answer.value = windows::FromVariant(*result);
  answer.error_code = info.scode;
  answer.source = Bstr::Adopt(info.bstrSource).Text();
  answer.description = Bstr::Adopt(info.bstrDescription).Text();
  return answer;
}

inline DISPID IdOf(IDispatch& object, const wchar_t* name) {
  auto* names = const_cast<wchar_t*>(name);
  DISPID id = DISPID_UNKNOWN;
  object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

constexpr WORD kCall = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

// VARIANTs that own nothing.
inline VARIANT Number(LONG number) {
  VARIANT variant{};
  variant.vt = VT_I4;
  variant.lVal = number;
  return variant;
}
inline VARIANT Text(const Bstr& text) {
  VARIANT variant{};
  variant.vt = VT_BSTR;
  variant.bstrVal = text.get();
  return variant;
}
inline VARIANT ObjectArgument(IDispatch* object) {
  VARIANT variant{};
  variant.vt = VT_DISPATCH;
  variant.pdispVal = object;
  return variant;
}
inline VARIANT LeftOut() {
  VARIANT variant{};
  variant.vt = VT_ERROR;
  variant.scode = DISP_E_PARAMNOTFOUND;
  return variant;
}
inline VARIANT ReferenceTo(VARTYPE type, void* variable) {
  VARIANT variant{};
  variant.vt = static_cast<VARTYPE>(type | VT_BYREF);
  variant.byref = variable;
  return variant;
}

/// Works with the DLL without its registration; nothing of it may be alive at the end of a test.
class ServerTest : public testing::Test {
 protected:
  ServerTest() {
    EXPECT_NE(module_, nullptr);
    EXPECT_EQ(CanUnload(), S_OK);
  }
  ~ServerTest() override {
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(CanUnload(), S_OK);
    FreeLibrary(module_);
    // Each test meets the library as a new process does. COM keeps what it loaded until it is asked.
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(LibraryPath().c_str()), nullptr);
  }

  template <class Function>
  Function Export(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  HRESULT CanUnload() const { return Export<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")(); }
  ComPtr<IClassFactory> Factory(REFCLSID class_id) const {
    ComPtr<IClassFactory> factory;
    factory.Obtain([&](IClassFactory** received) {
      return Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject")(
          class_id, IID_IClassFactory, reinterpret_cast<void**>(received));
    });
    return factory;
  }
  /// A new object of a public class, by its interface.
  template <class Interface>
  ComPtr<Interface> New(REFCLSID class_id) const {
    ComPtr<Interface> object;
    object.Obtain([&](Interface** received) {
      return Factory(class_id)->CreateInstance(nullptr, __uuidof(Interface),
                                               reinterpret_cast<void**>(received));
    });
    return object;
  }
  /// A new object of a registered class.
  static ComPtr<IDispatch> NewRegistered(const wchar_t* programmatic_identifier) {
    ComPtr<IDispatch> object;
    CLSID class_id;
    EXPECT_EQ(CLSIDFromProgID(programmatic_identifier, &class_id), S_OK);
    object.Obtain([&](IDispatch** received) {
      return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(received));
    });
    return object;
  }

 private:
  HMODULE module_ = LoadLibraryW(LibraryPath().c_str());
};

}  // namespace qva::com
