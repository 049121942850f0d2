// Every member of every class, called by name and through its place in the vtable with the same arguments,
// from the object's own apartment and from another one: the log of calls tells which member ran, and with
// what.
#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "platform/text.h"
#include "platform/windows/Counted.h"
#include "platform/windows/Error.h"
#include "server/PublicClasses.h"
#include "server/com/AutomationTypes.h"
#include "tests/com/bench/BenchTypeInfo.h"
#include "tests/com/client/apartment.h"
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

namespace fs = std::filesystem;

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

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// A new object of a public class of the library that is loaded, registered or not.
ComPtr<IDispatch> NewPublic(std::u16string_view class_name) {
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
  ComPtr<IDispatch> object;
  EXPECT_EQ(object.Obtain([&](IDispatch** received) {
    return factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(received));
  }),
            S_OK);
  return object;
}

/// A way in: late-bound or through the vtable, from the object's own apartment or from another one.
struct Door {
  bool is_late;
  bool is_near;
};
constexpr Door kLate{true, true};
constexpr Door kVtable{false, true};

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
        value->pdispVal = own ? own.Detach() : NewNamed(L"Object" + std::to_wstring(number));
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
  static IDispatch* NewNamed(std::wstring type) {
    auto* object = new NamedObject(std::move(type));
    object->AddRef();
    return object;
  }

  const Parameter* parameter_;
  Variant value_;
  VARIANT passed_ = {};
};

/// What is left of a call, readable; objects by their types.
struct Outcome {
  HRESULT code = S_OK;
  ErrorObject error;
  std::string result;
  std::vector<std::string> variables;
  // In the log.
  std::string member;
  std::string arguments;
  std::string logged;

  friend bool operator==(const Outcome&, const Outcome&) = default;
  friend void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << outcome.member << " " << outcome.arguments << " " << outcome.logged << ": " << std::hex
         << outcome.code << " " << ToUtf8(outcome.error.source) << " " << ToUtf8(outcome.error.description)
         << " result " << outcome.result << " variables";
    for (const std::string& variable : outcome.variables) *out << " " << variable;
  }
};

std::string Readable(const Value& value) {
  if (value.Is(Value::Type::Object))
    return value.IsNothing() ? "Nothing" : ToUtf8(value.ToObject()->TypeName());
  return ToUtf8(value.ToText());
}

/// Switches the log on before the library is loaded.
class LogOfCalls {
 protected:
  LogOfCalls() { SetEnvironmentVariableW(L"QVA_VARNHOLT_CALL_LOG", file_.c_str()); }
  LogOfCalls(const LogOfCalls&) = delete;
  LogOfCalls& operator=(const LogOfCalls&) = delete;
  ~LogOfCalls() {
    SetEnvironmentVariableW(L"QVA_VARNHOLT_CALL_LOG", nullptr);
    fs::remove(file_);
  }

  const fs::path file_ = fs::temp_directory_path() / (L"qva-calls-" + std::to_wstring(GetCurrentProcessId()));
};

class EveryMember : private LogOfCalls, public ServerTest {
 protected:
  EveryMember() {
    // What members write for the user goes to a key of the test's own.
    RegCreateKeyW(HKEY_CURRENT_USER, kOwnKey, &own_key_);
    EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, own_key_), ERROR_SUCCESS);
  }
  ~EveryMember() override {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(own_key_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kOwnKey);
  }

  /// Calls a member of a new object, `left_out` being the place of an argument that is not given, or the
  /// number of arguments for the pointer to the result.
  Outcome CallMember(const ClassDescription& table, std::size_t place, Door door,
                     std::size_t left_out = kNone) {
    const Member& member = table.members()[place];
    Invoke(*control_, IdOf(*control_, L"Reset"), kCall);
    RegDeleteTreeW(own_key_, nullptr);
    const auto excel = NewRegistered(L"QVA_TestBench.Excel");
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    short count = 0;
    EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
    const ComPtr<IDispatch> object = NewPublic(table.name());
    std::map<std::size_t, ComPtr<IDispatch>> own;  // the library's objects among the arguments
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
      const std::u16string_view object_class = member.parameters[i].object_class;
      if (!object_class.empty()) own[i] = NewPublic(object_class);
    }
    fs::resize_file(file_, 0);
    Outcome outcome;
    if (door.is_near) {
      outcome = CallMember(*object, table, place, door, left_out, own);
    } else {
      SetErrorInfo(0, nullptr);
      Parcel parcel(*object);
      std::map<std::size_t, Parcel> parcels;
      for (const auto& [i, argument] : own) parcels.emplace(i, *argument);
      other_apartment_.Run([&] {
        std::map<std::size_t, ComPtr<IDispatch>> arrived;
        for (auto& [i, argument] : parcels) arrived[i] = argument.Open();
        const ComPtr<IDispatch> there = parcel.Open();
        if (there) outcome = CallMember(*there, table, place, door, left_out, arrived);
      });
      // Not every system's channel carries the error object; one that does not leaves it here.
      if (outcome.code != S_OK && outcome.error == ErrorObject()) outcome.error = TakeErrorObject();
    }
    ReadLog(outcome);
    return outcome;
  }

  /// Compares what comes of every member through each door, with all its arguments and without each optional
  /// one, with what comes of it by name.
  void ExpectTheSameThrough(std::initializer_list<Door> doors) {
    std::size_t called = 0;
    std::size_t left_out = 0;
    for (const PublicClass& public_class : PublicClasses()) {
      const ClassDescription& table = public_class.description();
      for (std::size_t place = 0; place < table.members().size(); ++place) {
        const Member& member = table.members()[place];
        const std::string name = NameOf(table, member);
        SCOPED_TRACE(name);
        const Outcome by_name = CallMember(table, place, kLate);
        EXPECT_EQ(by_name.member, name);
        for (const Door door : doors) EXPECT_EQ(CallMember(table, place, door), by_name);
        ++called;
        for (std::size_t i = 0; i < member.parameters.size(); ++i) {
          if (!member.parameters[i].optional) continue;
          SCOPED_TRACE("without " + ToUtf8(member.parameters[i].name));
          const Outcome without = CallMember(table, place, kLate, i);
          EXPECT_EQ(without.member, name);
          for (const Door door : doors) {
            Outcome other = CallMember(table, place, door, i);
            // The log has it as it came: missing, or the default.
            if (!door.is_late) other.arguments = without.arguments;
            EXPECT_EQ(other, without);
          }
          ++left_out;
        }
      }
    }
    EXPECT_GT(called, 100u) << "the tables are there";
    EXPECT_GT(left_out, 20u);
  }

  /// As the log has it.
  static std::string NameOf(const ClassDescription& table, const Member& member) {
    const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
    return ToUtf8(table.name()) + "." + ToUtf8(member.name) + (is_put ? " =" : "");
  }

 private:
  /// The call itself, in the caller's apartment.
  static Outcome CallMember(IDispatch& object, const ClassDescription& table, std::size_t place, Door door,
                            std::size_t left_out, const std::map<std::size_t, ComPtr<IDispatch>>& own) {
    SetErrorInfo(0, nullptr);
    const Member& member = table.members()[place];
    std::deque<TestArgument> arguments;  // which stay where they are
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
      arguments.emplace_back(member.parameters[i], i, own.contains(i) ? own.at(i) : ComPtr<IDispatch>());
    }
    if (left_out < arguments.size()) arguments[left_out].LeaveOut(door);
    Outcome outcome = door.is_late
                          ? CallByName(object, member, arguments)
                          : CallByVtable(object, member, place, arguments, left_out != arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (i != left_out) outcome.variables.push_back(Readable(arguments[i].value()));
    }
    return outcome;
  }

  static Outcome CallByName(IDispatch& object, const Member& member, std::deque<TestArgument>& arguments) {
    const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
    std::vector<VARIANT> passed;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
      passed.push_back(*argument->passed());
    }
    const WORD flags = member.kind == MemberKind::Method ? DISPATCH_METHOD
                       : member.kind == MemberKind::Get  ? DISPATCH_PROPERTYGET
                       : member.kind == MemberKind::Put  ? DISPATCH_PROPERTYPUT
                                                         : DISPATCH_PROPERTYPUTREF;
    const DISPID id = IdOf(object, windows::WideText(member.name).c_str());
    const Answer answer = Invoke(object, id, flags, std::move(passed),
                                 is_put ? std::vector<DISPID>{DISPID_PROPERTYPUT} : std::vector<DISPID>{});
    Outcome outcome;
    outcome.code = answer.code == DISP_E_EXCEPTION ? answer.error_code : answer.code;
    outcome.error = {answer.source, answer.description};
    if (answer.code == DISP_E_TYPEMISMATCH) {
      outcome.code = ErrorResult(kTypeMismatch);
      outcome.error = {u"QVA_Varnholt", u"Type mismatch"};
    }
    if (answer.code == S_OK && member.result != ParameterType::None) outcome.result = Readable(answer.value);
    return outcome;
  }

  /// As a compiled client does it: by the place alone.
  static Outcome CallByVtable(IDispatch& object, const Member& member, std::size_t place,
                              std::deque<TestArgument>& arguments, bool with_result) {
    std::vector<VARTYPE> types;
    std::vector<VARIANTARG*> passed;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      const Parameter& parameter = member.parameters[i];
      const auto type = VariantType(parameter.type);
      types.push_back(parameter.by_reference ? static_cast<VARTYPE>(type | VT_BYREF) : type);
      passed.push_back(arguments[i].passed());
    }
    Variant result;
    VARIANT target = {};
    if (member.result != ParameterType::None) {
      result.get()->vt = VariantType(member.result);
      target.vt = static_cast<VARTYPE>(VariantType(member.result) | VT_BYREF);
      if (with_result) target.byref = &result.get()->byref;
      types.push_back(target.vt);
      passed.push_back(&target);
    }
    constexpr std::size_t kOfDispatch = 7;
    VARIANT code = {};
    EXPECT_EQ(DispCallFunc(&object, (kOfDispatch + place) * sizeof(void*), CC_STDCALL, VT_ERROR,
                           static_cast<UINT>(types.size()), types.data(), passed.data(), &code),
              S_OK);
    Outcome outcome;
    outcome.code = code.scode;
    if (outcome.code != S_OK) outcome.error = TakeErrorObject();
    if (outcome.code == S_OK && member.result != ParameterType::None) {
      outcome.result = Readable(windows::FromVariant(*result.get()));
    }
    return outcome;
  }

  /// The outermost call's line, which is written last.
  void ReadLog(Outcome& outcome) const {
    std::ifstream in(file_);
    std::string line;
    std::string last;
    while (std::getline(in, line)) {
      if (!line.empty()) last = line;
    }
    std::istringstream columns(last);
    for (int i = 0; i < 3; ++i) std::getline(columns, line, '\t');
    std::getline(columns, outcome.member, '\t');
    std::getline(columns, outcome.arguments, '\t');
    std::getline(columns, outcome.logged, '\t');
  }

  static constexpr const wchar_t* kOwnKey = L"Software\\QVA_Varnholt test of every member";
  HKEY own_key_ = nullptr;
  // One for all calls: under Wine a process has no more than some sixty apartments whose objects are called.
  OtherApartment other_apartment_;
  ComPtr<IDispatch> control_ = NewRegistered(L"QVA_TestBench.Control");
};

TEST_F(EveryMember, DoesThroughTheVtableWhatItDoesByName) {
  ExpectTheSameThrough({kVtable});
}

TEST_F(EveryMember, RefusesACallThatLacksAPointer) {
  const std::u16string text = windows::SystemText(E_POINTER);
  std::size_t results = 0;
  std::size_t references = 0;
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    for (std::size_t place = 0; place < table.members().size(); ++place) {
      const Member& member = table.members()[place];
      SCOPED_TRACE(NameOf(table, member));
      for (std::size_t i = 0; i <= member.parameters.size(); ++i) {
        const bool is_result = i == member.parameters.size();
        const bool is_needed = is_result
                                   ? member.result != ParameterType::None
                                   : member.parameters[i].by_reference && !member.parameters[i].optional;
        if (!is_needed) continue;
        const Outcome without = CallMember(table, place, kVtable, i);
        EXPECT_EQ(without.code, E_POINTER);
        EXPECT_EQ(without.error, (ErrorObject{u"QVA_Varnholt", text}));
        EXPECT_EQ(without.member, NameOf(table, member));
        EXPECT_EQ(without.logged, "! " + std::to_string(E_POINTER) + " QVA_Varnholt: " + ToUtf8(text));
        if (is_result) {
          EXPECT_EQ(without.arguments, CallMember(table, place, kLate).arguments);
        }
        ++(is_result ? results : references);
      }
    }
  }
  EXPECT_GT(results, 50u);
  EXPECT_EQ(references, 6u);
}

/// Registered, as the marshaller of type libraries needs it.
class EveryMemberFromAfar : public EveryMember {
 protected:
  EveryMemberFromAfar() { EXPECT_EQ(Export<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(), S_OK); }
  ~EveryMemberFromAfar() override {
    EXPECT_EQ(Export<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer")(), S_OK);
  }
};

TEST_F(EveryMemberFromAfar, DoesWhatItDoesNearby) {
  ExpectTheSameThrough({{.is_late = true, .is_near = false}, {.is_late = false, .is_near = false}});
}

}  // namespace
}  // namespace qva::com
