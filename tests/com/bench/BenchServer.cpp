// The bench as an in-process COM server: Excel's and the host's stand-ins under programmatic identifiers.
#include <olectl.h>

#include <array>
#include <string>
#include <string_view>

#include "platform/filesystem/native_file.h"
#include "platform/host.h"
#include "platform/text.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/OwnObject.h"
#include "platform/windows/WideText.h"
#include "server/com/ComObject.h"
#include "server/com/ServerEntries.h"
#include "tests/com/bench/Bench.h"
#include "tests/com/bench/Control.h"
#include "tests/windows/test_types.h"

namespace qva::bench {
namespace {

constexpr std::u16string_view kExcel = u"QVA_TestBench.Excel";
constexpr std::u16string_view kControl = u"QVA_TestBench.Control";

struct BenchClass {
  std::u16string_view programmatic_identifier;
  CLSID class_id;
};

/// One family of identifiers, told apart by its last byte.
constexpr CLSID ClassId(BYTE number) {
  return {0x5e0c1a52, 0x9f0b, 0x4d0e, {0x8d, 0x53, 0x7f, 0x31, 0x0a, 0x64, 0xc9, number}};
}

/// The bench's own classes, and the host's by their places in its table.
constexpr auto kClasses = [] {
  constexpr std::size_t kOwn = 2;
  std::array<BenchClass, kOwn + std::size(host::kCreatableClasses)> classes{BenchClass{kControl, ClassId(1)},
                                                                            BenchClass{kExcel, ClassId(2)}};
  for (std::size_t place = kOwn; place < classes.size(); ++place) {
    classes[place] = {host::kCreatableClasses[place - kOwn], ClassId(static_cast<BYTE>(place + 1))};
  }
  return classes;
}();

/// A member that Excel answers wrongly, as the variable QVA_BENCH_LIE names it: "Interior.ColorIndex". Who
/// compares this Excel with another one must notice.
struct Lie {
  std::u16string member = ToLower(windows::TextOf(EnvironmentVariable("QVA_BENCH_LIE").c_str()));
  std::u16string type = member.substr(0, member.find(u'.'));
  DISPID id = DISPID_UNKNOWN;
};
Lie& TheLie() {
  static Lie& lie = *new Lie;
  return lie;
}

void Distort(VARIANT& value) {
  if (value.vt == VT_BOOL) {
    value.boolVal = value.boolVal ? VARIANT_FALSE : VARIANT_TRUE;
  } else if (value.vt == VT_I4) {
    ++value.lVal;
  } else if (value.vt == VT_BSTR) {
    const std::wstring text = (value.bstrVal ? value.bstrVal : L"") + std::wstring(L"?");
    SysReAllocString(&value.bstrVal, text.c_str());
  }
}

/// Counts lookups, turns calls away while the bench is busy, lies where it is told to, and tells its class as
/// the objects of real servers do.
class BenchObject final : public com::ComObject<IDispatch> {
 public:
  using ComObject::ComObject;

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    std::u16string asked = object().TypeName();
    for (UINT i = 0; i < count; ++i) asked += (i == 0 ? u"." : u" ") + windows::TextOf(names[i]);
    ++TheBench().lookups[ToLower(asked)];
    const HRESULT code = ComObject::GetIDsOfNames(reserved, names, count, locale, ids);
    if (code == S_OK && ToLower(asked) == TheLie().member) TheLie().id = ids[0];
    return code;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                                   VARIANT* result, EXCEPINFO* error, UINT* argument) override {
    if (TheBench().is_busy && object().TypeName() != Control::Description().name()) {
      ++TheBench().turned_away;
      return RPC_E_SERVERCALL_RETRYLATER;
    }
    const HRESULT code = ComObject::Invoke(id, reserved, locale, flags, arguments, result, error, argument);
    const bool is_lie = id == TheLie().id && ToLower(object().TypeName()) == TheLie().type;
    if (is_lie && code == S_OK && result) Distort(*result);
    return code;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** result) override {
    if (!result) return E_POINTER;
    *result = index == 0 ? windows::TypeOfName(std::u16string(object().TypeName())).Detach() : nullptr;
    return index == 0 ? S_OK : DISP_E_BADINDEX;
  }
};

ObjectPtr Create(std::u16string_view programmatic_identifier) {
  if (programmatic_identifier == kControl) return MakeRef<Control>();
  if (programmatic_identifier == kExcel) return TheBench().NewExcel();
  return TheBench().NewHostObject(programmatic_identifier);
}

/// Sets the default value of a key below the machine's classes, or another one.
HRESULT SetClassesValue(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  const std::wstring path = L"Software\\Classes\\" + key;
  return HRESULT_FROM_WIN32(
      static_cast<DWORD>(RegSetKeyValueW(HKEY_LOCAL_MACHINE, path.c_str(), name, REG_SZ, text.c_str(),
                                         static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)))));
}

}  // namespace
}  // namespace qva::bench

IDispatch* qva::com::NewComObject(const ObjectPtr& object) {
  auto* com_object = new bench::BenchObject(object);
  com_object->AddRef();
  return com_object;
}

using namespace qva;
using namespace qva::bench;

extern "C" {

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
  windows::InstallOwnObjectWrapper(&com::WrapObject);
  TheBench();
  for (const BenchClass& bench_class : kClasses) {
    if (bench_class.class_id != class_id) continue;
    const auto create = [&bench_class] { return Create(bench_class.programmatic_identifier); };
    return com::NewClassFactory(create, interface_id, result);
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return com::UseCount() == 0 ? S_OK : S_FALSE;
}

/// With the command line L"excel" Excel and the control alone are registered, and no host.
STDAPI DllInstall(BOOL, LPCWSTR command_line) {
  const bool with_host = std::wstring_view(command_line ? command_line : L"") != L"excel";
  for (const BenchClass& bench_class : kClasses) {
    if (!with_host && host::IsHostIdentifier(bench_class.programmatic_identifier)) continue;
    const std::wstring identifier = windows::WideText(bench_class.programmatic_identifier);
    const std::wstring class_key = L"CLSID\\" + com::GuidText(bench_class.class_id);
    SetClassesValue(identifier + L"\\CLSID", L"", com::GuidText(bench_class.class_id));
    SetClassesValue(class_key, L"", identifier);
    SetClassesValue(class_key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    const HRESULT code =
        SetClassesValue(class_key + L"\\InprocServer32", L"", windows::WideText(windows::OwnFile()));
    if (FAILED(code)) return code;
  }
  return S_OK;
}

STDAPI DllRegisterServer() {
  return DllInstall(TRUE, nullptr);
}

STDAPI DllUnregisterServer() {
  for (const BenchClass& bench_class : kClasses) {
    const std::wstring classes = L"Software\\Classes\\";
    const std::wstring identifier = windows::WideText(bench_class.programmatic_identifier);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (classes + identifier).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (classes + L"CLSID\\" + com::GuidText(bench_class.class_id)).c_str());
  }
  return S_OK;
}

}  // extern "C"
