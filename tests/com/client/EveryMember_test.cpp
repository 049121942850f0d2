// Every member of every class, called by name and through its place in the vtable with the same arguments:
// the log of calls tells which member ran, and with what.
#include <deque>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/text.h"
#include "platform/windows/Counted.h"
#include "server/PublicClasses.h"
#include "server/com/AutomationTypes.h"
#include "tests/com/bench/BenchTypeInfo.h"
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

/// A new object of a public class of the library that is loaded, registered or not; with a reference for the
/// caller.
IDispatch* NewPublic(std::u16string_view class_name) {
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
  IDispatch* object = nullptr;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&object)), S_OK);
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

/// What is left of a call, readable; objects by their types.
struct Outcome {
  std::string error;
  std::string result;
  std::vector<std::string> variables;
  std::string member;     ///< in the log
  std::string arguments;  ///< in the log

  friend bool operator==(const Outcome&, const Outcome&) = default;
  friend void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << outcome.member << " " << outcome.arguments << " -> " << outcome.result << " error "
         << outcome.error << " variables";
    for (const std::string& variable : outcome.variables) *out << " " << variable;
  }
};

std::string Readable(const Value& value) {
  if (value.Is(Value::Type::Object))
    return value.IsNothing() ? "Nothing" : ToUtf8(value.ToObject()->TypeName());
  return ToUtf8(value.ToText());
}

std::string ErrorText(HRESULT code, const std::u16string& source, const std::u16string& description) {
  if (code == S_OK) return "none";
  if (code == DISP_E_TYPEMISMATCH) code = ErrorResult(kTypeMismatch);
  std::ostringstream text;
  text << std::hex << code << " " << ToUtf8(source) << " " << ToUtf8(description);
  return text.str();
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

  enum class Way { ByName, ByVtable };

  /// Calls a member of a new object, `left_out` being the place of an optional argument that is not given.
  Outcome CallMember(const ClassDescription& table, std::size_t place, Way way,
                     std::size_t left_out = kNone) {
    const Member& member = table.members()[place];
    Invoke(*control_, IdOf(*control_, L"Reset"), kCall);
    RegDeleteTreeW(own_key_, nullptr);
    const auto excel = NewRegistered(L"QVA_TestBench.Excel");
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    short count = 0;
    EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
    const auto object = ComPtr<IDispatch>::Adopt(NewPublic(table.name()));
    std::deque<TestArgument> arguments;  // which stay where they are
    for (std::size_t i = 0; i < member.parameters.size(); ++i)
      arguments.emplace_back(member.parameters[i], i);
    if (left_out != kNone) arguments[left_out].LeaveOut(way == Way::ByName);
    fs::resize_file(file_, 0);
    Outcome outcome = way == Way::ByName ? CallByName(*object, member, arguments)
                                         : CallByVtable(*object, member, place, arguments);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (i != left_out) outcome.variables.push_back(Readable(arguments[i].value()));
    }
    ReadLog(outcome);
    return outcome;
  }

 private:
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
    outcome.error = answer.code == DISP_E_EXCEPTION
                        ? ErrorText(answer.error_code, answer.source, answer.description)
                        : ErrorText(answer.code, u"QVA_Varnholt", u"Type mismatch");
    if (answer.code == S_OK && member.result != ParameterType::None) outcome.result = Readable(answer.value);
    return outcome;
  }

  /// As a compiled client does it: by the place alone.
  static Outcome CallByVtable(IDispatch& object, const Member& member, std::size_t place,
                              std::deque<TestArgument>& arguments) {
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
      target.byref = &result.get()->byref;
      types.push_back(target.vt);
      passed.push_back(&target);
    }
    constexpr std::size_t kOfDispatch = 7;
    VARIANT code = {};
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(DispCallFunc(&object, (kOfDispatch + place) * sizeof(void*), CC_STDCALL, VT_ERROR,
                           static_cast<UINT>(types.size()), types.data(), passed.data(), &code),
              S_OK);
    const ErrorObject error = TakeErrorObject();
    Outcome outcome;
    outcome.error = ErrorText(code.scode, error.source, error.description);
    if (code.scode == S_OK && member.result != ParameterType::None) {
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
  }

  static constexpr const wchar_t* kOwnKey = L"Software\\QVA_Varnholt test of every member";
  HKEY own_key_ = nullptr;
  ComPtr<IDispatch> control_ = NewRegistered(L"QVA_TestBench.Control");
};

TEST_F(EveryMember, DoesThroughTheVtableWhatItDoesByName) {
  std::size_t called = 0;
  std::size_t left_out = 0;
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    for (std::size_t place = 0; place < table.members().size(); ++place) {
      const Member& member = table.members()[place];
      const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
      const std::string name = ToUtf8(table.name()) + "." + ToUtf8(member.name);
      SCOPED_TRACE(name);
      const Outcome by_name = CallMember(table, place, Way::ByName);
      EXPECT_EQ(by_name.member, name + (is_put ? " =" : ""));
      EXPECT_EQ(CallMember(table, place, Way::ByVtable), by_name);
      ++called;
      for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        if (!member.parameters[i].optional) continue;
        SCOPED_TRACE("without " + ToUtf8(member.parameters[i].name));
        Outcome without = CallMember(table, place, Way::ByName, i);
        EXPECT_EQ(without.member, name);
        // The log has it as it came: missing, or the default.
        Outcome early = CallMember(table, place, Way::ByVtable, i);
        early.arguments = without.arguments;
        EXPECT_EQ(early, without);
        ++left_out;
      }
    }
  }
  EXPECT_EQ(called, 120u);
  EXPECT_GT(left_out, 20u);
}

}  // namespace
}  // namespace qva::com
