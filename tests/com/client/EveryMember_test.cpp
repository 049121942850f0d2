// Every member of every class, called by name and through its place in the vtable with the same arguments,
// from the object's own apartment and from another one: the log of calls tells which member ran, and with
// what.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/windows/Error.h"
#include "server/PublicClasses.h"
#include "tests/com/client/apartment.h"
#include "tests/com/client/member_calls.h"
#include "tests/files.h"
#include "tests/temporary_environment.h"

namespace qva::com {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

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
  LogOfCalls() { environment_.Set("QVA_VARNHOLT_CALL_LOG", file_); }

  const TemporaryFolder folder_;
  const fs::path file_ = folder_ / "calls";

 private:
  TemporaryEnvironment environment_;
};

class EveryMember : private LogOfCalls, public ServerTest {
 protected:
  /// Calls a member of a new object, `left_out` being the place of an argument that is not given, or the
  /// number of arguments for the pointer to the result.
  Outcome CallMember(const ClassDescription& table, std::size_t place, Door door,
                     std::size_t left_out = kNone) {
    const Member& member = table.members()[place];
    Invoke(*control_, IdOf(*control_, L"Reset"), kCall);
    user_key_.Empty();
    const auto excel = NewRegistered(L"QVA_TestBench.Excel");
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    short count = 0;
    EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
    const ComPtr<IDispatch> object = NewPublic(table.name());
    const OwnObjects own = NewOwnObjects(member);
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
        OwnObjects arrived;
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
                            std::size_t left_out, const OwnObjects& own) {
    SetErrorInfo(0, nullptr);
    const Member& member = table.members()[place];
    std::deque<TestArgument> arguments = ArgumentsOf(member, own);
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
    const Answer answer =
        InvokeMember(object, IdOf(object, windows::WideText(member.name).c_str()), member, arguments);
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

  OwnUserKey user_key_;
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
