// Calls of any member of the public classes, with arguments that its table tells.
#pragma once

#include <deque>
#include <map>

#include "platform/member_table.h"
#include "platform/text.h"
#include "platform/windows/Counted.h"
#include "server/com/AutomationTypes.h"
#include "tests/com/client/client.h"
#include "tests/windows/test_types.h"

namespace qva::com {

/// An object without members that the log knows by its type.
class NamedObject final : public windows::Counted<IDispatch> {
 public:
  explicit NamedObject(std::u16string type) : type_(std::move(type)) {}

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** result) override {
    *result = windows::TypeOfName(type_).Detach();
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
  std::u16string type_;
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

/// A new object of the class.
inline ComPtr<IDispatch> NewPublic(std::u16string_view class_name) {
  ComPtr<IDispatch> object;
  EXPECT_EQ(object.Obtain([&](IDispatch** received) {
    return PublicFactory(class_name)
        ->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(received));
  }),
            S_OK);
  return object;
}

/// A way in: late-bound or through the vtable, from the object's own apartment or from another one.
struct Door {
  bool is_late;
  bool is_near;
};
inline constexpr Door kLate{true, true};
inline constexpr Door kVtable{false, true};

/// One argument of a call: a value that no other argument of its type has, but that there are two Booleans.
class TestArgument {
 public:
  /// `own` is an object of the library where the parameter wants one.
  TestArgument(const Parameter& parameter, std::size_t place, ComPtr<IDispatch> own)
      : parameter_(&parameter) {
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
        value->pdispVal = own ? own.Detach() : NewNamed(u"Object" + NumberText(number));
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
  /// null reference. What goes into another apartment is a variable with the default, since nothing comes
  /// back from there without one.
  void LeaveOut(Door door) {
    const Parameter& parameter = *parameter_;
    value_ = {};
    if (door.is_late || parameter.type == ParameterType::Any) {
      passed_ = qva::com::LeftOut();
    } else if (parameter.by_reference && door.is_near) {
      passed_.byref = nullptr;
    } else {
      value_ = windows::ToVariant(parameter.default_value);
      const VARTYPE type = VariantType(parameter.type);
      EXPECT_EQ(VariantChangeType(value_.get(), value_.get(), 0, type), S_OK);
      if (!parameter.by_reference) passed_ = *value_.get();
    }
  }

  VARIANT* passed() { return &passed_; }
  /// What is in the caller's variable now.
  Value value() { return windows::FromVariant(*value_.get()); }

 private:
  static IDispatch* NewNamed(std::u16string type) {
    auto* object = new NamedObject(std::move(type));
    object->AddRef();
    return object;
  }

  const Parameter* parameter_;
  Variant value_;
  VARIANT passed_ = {};
};

/// The library's objects among the arguments of a member, by their places.
using OwnObjects = std::map<std::size_t, ComPtr<IDispatch>>;
inline OwnObjects NewOwnObjects(const Member& member) {
  OwnObjects own;
  for (std::size_t i = 0; i < member.parameters.size(); ++i) {
    const std::u16string_view object_class = member.parameters[i].object_class;
    if (!object_class.empty()) own[i] = NewPublic(object_class);
  }
  return own;
}

/// An argument for each parameter of a member. They stay where they are.
inline std::deque<TestArgument> ArgumentsOf(const Member& member, const OwnObjects& own) {
  std::deque<TestArgument> arguments;
  for (std::size_t i = 0; i < member.parameters.size(); ++i) {
    arguments.emplace_back(member.parameters[i], i, own.contains(i) ? own.at(i) : ComPtr<IDispatch>());
  }
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
