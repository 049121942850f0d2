// Calls of any member of the public classes, with arguments that its table tells.
#pragma once

#include <deque>

#include "platform/member_table.h"
#include "platform/text.h"
#include "platform/windows/Counted.h"
#include "server/com/AutomationTypes.h"
#include "tests/com/bench/BenchTypeInfo.h"
#include "tests/com/client/client.h"

namespace qva::com {

/// An object without members that the log knows by its type.
class NamedObject final : public windows::Counted<IDispatch> {
 public:
  explicit NamedObject(std::wstring type) : type_(std::move(type)) {}

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** result) override {
    *result = bench::NewBenchTypeInfo(type_);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override {
    *id = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }

 private:
  std::wstring type_;
};

/// The factory of a public class of the library that is loaded, registered or not.
inline ComPtr<IClassFactory> PublicFactory(std::u16string_view class_name) {
  ComPtr<ITypeLib> library;
  library.Obtain(
      [](ITypeLib** received) { return LoadTypeLibEx(LibraryPath().c_str(), REGKIND_NONE, received); });
  std::wstring name = windows::WideText(class_name);
  ComPtr<ITypeInfo> type;
  MEMBERID member = 0;
  USHORT count = 1;
  type.Obtain(
      [&](ITypeInfo** received) { return library->FindName(name.data(), 0, received, &member, &count); });
  TYPEATTR* attributes = nullptr;
  EXPECT_EQ(type->GetTypeAttr(&attributes), S_OK);
  auto* class_object = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(LibraryPath().c_str()), "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  factory.Obtain([&](IClassFactory** received) {
    return class_object(attributes->guid, IID_IClassFactory, reinterpret_cast<void**>(received));
  });
  type->ReleaseTypeAttr(attributes);
  return factory;
}

/// A new object of the class, with a reference for the caller.
inline IDispatch* NewPublic(std::u16string_view class_name) {
  IDispatch* object = nullptr;
  EXPECT_EQ(
      PublicFactory(class_name)->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&object)),
      S_OK);
  return object;
}

/// One argument of a call: a value that no other argument of its type has, but that there are two Booleans.
class TestArgument {
 public:
  TestArgument(const Parameter& parameter, std::size_t place) : parameter_(&parameter) {
    VARIANT* value = value_.get();
    value->vt = VariantType(parameter.type);
    const auto number = static_cast<int>(place) + 1;
    switch (parameter.type) {
      case ParameterType::Boolean:
        value->boolVal = place % 2 == 0 ? VARIANT_TRUE : VARIANT_FALSE;
        break;
      case ParameterType::Byte:
        value->bVal = static_cast<BYTE>(number);
        break;
      case ParameterType::Int16:
        value->iVal = static_cast<SHORT>(20 + number);
        break;
      case ParameterType::Int32:
        value->lVal = 40 + number;
        break;
      case ParameterType::Date:
        value->date = 45000 + number;
        break;
      case ParameterType::Any:
        value->vt = VT_BSTR;
        [[fallthrough]];
      case ParameterType::Text:
        value->bstrVal = SysAllocString((L"text " + std::to_wstring(number)).c_str());
        break;
      case ParameterType::Object:
        value->pdispVal = parameter.object_class.empty() ? NewNamed(L"Object" + std::to_wstring(number))
                                                         : NewPublic(parameter.object_class);
        break;
      default:
        ADD_FAILURE() << "no test value for " << ToUtf8(parameter.name);
    }
    passed_ = *value;
    if (!parameter.by_reference) return;
    passed_.vt = static_cast<VARTYPE>(VariantType(parameter.type) | VT_BYREF);
    passed_.byref = parameter.type == ParameterType::Any ? static_cast<void*>(value) : &value->byref;
  }

  /// By name an argument is marked as missing; a compiled client passes the default of the type library, or a
  /// null reference.
  void LeaveOut(bool by_name) {
    const Parameter& parameter = *parameter_;
    value_ = {};
    if (by_name || parameter.type == ParameterType::Any) {
      passed_ = qva::com::LeftOut();
    } else if (parameter.by_reference) {
      passed_.byref = nullptr;
    } else {
      value_ = windows::ToVariant(parameter.default_value);
      const VARTYPE type = VariantType(parameter.type);
      EXPECT_EQ(VariantChangeType(value_.get(), value_.get(), 0, type), S_OK);
      passed_ = *value_.get();
    }
  }

  VARIANT* passed() { return &passed_; }
  /// What is in the caller's variable now.
  Value value() { return windows::FromVariant(*value_.get()); }

 private:
  static IDispatch* NewNamed(std::wstring type) {
    auto* object = new NamedObject(std::move(type));
    object->AddRef();
    return object;
  }

  const Parameter* parameter_;
  Variant value_;
  VARIANT passed_ = {};
};

/// An argument for each parameter of a member. They stay where they are.
inline std::deque<TestArgument> ArgumentsOf(const Member& member) {
  std::deque<TestArgument> arguments;
  for (std::size_t i = 0; i < member.parameters.size(); ++i) arguments.emplace_back(member.parameters[i], i);
  return arguments;
}

/// Lets what members write for the user go to a key of the test's own, while it lives.
class OwnUserKey {
 public:
  OwnUserKey() {
    RegCreateKeyW(HKEY_CURRENT_USER, kPath, &key_);
    EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, key_), ERROR_SUCCESS);
  }
  ~OwnUserKey() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(key_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
  }
  OwnUserKey(const OwnUserKey&) = delete;
  OwnUserKey& operator=(const OwnUserKey&) = delete;

  void Empty() { RegDeleteTreeW(key_, nullptr); }

 private:
  static constexpr const wchar_t* kPath = L"Software\\QVA_Varnholt test of every member";
  HKEY key_ = nullptr;
};

/// A call of the member with this identifier.
inline Answer InvokeMember(IDispatch& object, DISPID id, const Member& member,
                           std::deque<TestArgument>& arguments) {
  const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
  std::vector<VARIANT> passed;
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
    passed.push_back(*argument->passed());
  }
  const WORD flags = member.kind == MemberKind::Method ? DISPATCH_METHOD
                     : member.kind == MemberKind::Get  ? DISPATCH_PROPERTYGET
                     : member.kind == MemberKind::Put  ? DISPATCH_PROPERTYPUT
                                                       : DISPATCH_PROPERTYPUTREF;
  return Invoke(object, id, flags, std::move(passed),
                is_put ? std::vector<DISPID>{DISPID_PROPERTYPUT} : std::vector<DISPID>{});
}

}  // namespace qva::com
