// Every member of every class, called by name and through its place in the vtable with the same arguments:
// the log of calls tells which member ran, and with what.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "server/PublicClasses.h"
#include "tests/com/client/member_calls.h"

namespace qva::com {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

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
  enum class Way { ByName, ByVtable };

  /// Calls a member of a new object, `left_out` being the place of an optional argument that is not given.
  Outcome CallMember(const ClassDescription& table, std::size_t place, Way way,
                     std::size_t left_out = kNone) {
    const Member& member = table.members()[place];
    Invoke(*control_, IdOf(*control_, L"Reset"), kCall);
    user_key_.Empty();
    const auto excel = NewRegistered(L"QVA_TestBench.Excel");
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    short count = 0;
    EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
    const auto object = ComPtr<IDispatch>::Adopt(NewPublic(table.name()));
    std::deque<TestArgument> arguments = ArgumentsOf(member);
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
    const Answer answer =
        InvokeMember(object, IdOf(object, windows::WideText(member.name).c_str()), member, arguments);
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

  OwnUserKey user_key_;
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
