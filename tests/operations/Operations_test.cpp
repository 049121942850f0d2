// Whatever fails beneath an operation, each of its host calls and each of its allocations in turn: nothing
// but what is agreed leaves it, nothing stays alive of it, and the next call of it works.
#include <new>
#include <set>

#include "tests/member_names.h"
#include "tests/operations/Operations.h"

namespace qva {
namespace {

using testing::MatchesRegex;

/// A member under the name that its entry has.
std::string NameOf(const ClassDescription& table, const Member& member) {
  return ToUtf8(table.name()) + "." + NameOf(member);
}

TEST(Operations, AreEveryMemberAndEveryCreationOfThePublicClasses) {
  std::multiset<std::string> listed;
  for (const Operation& operation : Operations()) {
    if (operation.kind != Operation::Kind::Release) listed.insert(operation.Name());
  }
  std::multiset<std::string> published;
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    published.insert(ToUtf8(table.name()));
    for (const Member& member : table.members()) published.insert(NameOf(table, member));
  }
  EXPECT_EQ(listed, published);
}

class EveryOperation : public OperationStage, public testing::WithParamInterface<const Operation*> {
 protected:
  /// Something that fails from the n-th time on at which it can: once, or ever after.
  enum class Fault { HostCall, HostCalls, HostCallForWantOfMemory, Allocation, Allocations };

  /// All that comes behind so many times is long: there the next call is made after every 16th failure only,
  /// and what fails ever after is tried at every fourth time. What fails once is tried at each.
  static constexpr long kShort = 100;

  /// What becomes of the operation when the fault comes at the first time, at the second one, and so on,
  /// until it does not come to it any more.
  std::string Outcomes(Fault fault) {
    const Operation& operation = *GetParam();
    std::string left;
    {
      // What is made on first use is not this call's.
      Attempt attempt(*this);
      EXPECT_EQ(attempt.Call(), operation.undisturbed);
      if (operation.leaves) left = operation.leaves(*this, attempt.object());
    }
    std::string outcomes;
    const bool lasts = fault == Fault::HostCalls || fault == Fault::Allocations;
    for (long n = 1; !HasFailure(); n += lasts && n > kShort ? 4 : 1) {
      SCOPED_TRACE(n);
      const bool is_followed = n <= kShort || (n - kShort) % 16 == 1;
      ShutDown();
      const long live = Object::LiveCount();
      const std::size_t keys = platform.registry.OpenHandles();
      {
        Attempt attempt(*this);
        const auto [outcome, came] = CallWith(attempt, fault, n);
        if (!came) {
          EXPECT_EQ(outcome, operation.undisturbed);
          break;
        }
        outcomes += outcome;
        if (!is_followed) continue;
        if (operation.kind != Operation::Kind::Release) {
          const bool has_raised = outcome == 'E' || outcome == 'X' || outcome == 'M';
          // What did its part, or did as if, is not called twice: the next call begins anew.
          if (!has_raised || operation.begins_anew || (operation.tidies_up && lasts)) {
            attempt.PrepareAnew(*this);
          }
          attempt.CallAgain();
          EXPECT_EQ(attempt.Outcome(), operation.undisturbed) << "the next call";
          if (operation.leaves) {
            EXPECT_EQ(operation.leaves(*this, attempt.object()), left);
          }
        }
      }
      ShutDown();
      // What a failed call left in an object, the one that follows takes away.
      EXPECT_LE(Object::LiveCount(), live) << "objects stay alive";
      EXPECT_EQ(platform.registry.OpenHandles(), keys) << "registry keys stay open";
    }
    return outcomes;
  }

 private:
  /// One call that is prepared.
  class Attempt {
   public:
    explicit Attempt(EveryOperation& stage) : operation_(*GetParam()) { PrepareAnew(stage); }

    /// Lets go of the former objects first.
    void PrepareAnew(EveryOperation& stage) {
      ready_ = {};
      arguments_ = {};
      result_ = {};
      ready_ = operation_.prepare(stage);
      arguments_ = ready_.arguments;
      // The start-up's objects are made anew, on their first use.
      ShutDown();
    }

    /// The same call, with the arguments as they were.
    void CallAgain() {
      ready_.arguments = arguments_;
      Make();
    }

    /// Makes the call and gives the letter that stands for what became of it.
    char Call() {
      Make();
      return Outcome();
    }

    /// The call alone, which allocates nothing besides.
    void Make() {
      try {
        outcome_ = '.';
        switch (operation_.kind) {
          case Operation::Kind::Create:
            result_ = CreatePublicObject(*public_class_);
            break;
          case Operation::Kind::Release:
            ready_.object.reset();
            break;
          default:
            result_ = ready_.object->Invoke(access_, operation_.member, ready_.arguments);
        }
      } catch (const AutomationError& error) {
        const bool is_host_calls = error.number() == kAutomationFailed && error.source() == u"Server";
        outcome_ = is_host_calls ? 'E' : error.number() == operation_.own_error ? 'X' : '?';
      } catch (const std::bad_alloc&) {
        outcome_ = 'M';
      } catch (...) {
        outcome_ = '!';
      }
    }

    const ObjectPtr& object() const { return ready_.object; }

    char Outcome() {
      if (outcome_ != '.') return outcome_;
      return LetterOf(operation_.outcome.empty() ? result_ : qva::Get(ready_.object, operation_.outcome));
    }

   private:
    static Access AccessOf(Operation::Kind kind) {
      switch (kind) {
        case Operation::Kind::Get:
          return Access::Get;
        case Operation::Kind::Put:
          return Access::Put;
        case Operation::Kind::PutRef:
          return Access::PutRef;
        default:
          return Access::Call;
      }
    }
    static char LetterOf(const Value& value) {
      switch (value.type()) {
        case Value::Type::Empty:
          return '.';
        case Value::Type::Boolean:
          return value.As<bool>() ? 'T' : 'F';
        case Value::Type::Text:
          return value.As<std::u16string>().empty() ? 's' : 'S';
        case Value::Type::Object:
          return value.IsNothing() ? 'N' : 'O';
        default:
          const std::int32_t number = value.ToInt32();
          return number >= 0 && number <= 9 ? static_cast<char>('0' + number) : '#';
      }
    }

    const Operation& operation_;
    const PublicClass* public_class_ =
        FindPublicClass(u"QVA_Varnholt." + std::u16string(operation_.class_name));
    const Access access_ = AccessOf(operation_.kind);
    ReadyCall ready_;
    Arguments arguments_;  ///< before the call changed them
    Value result_;
    char outcome_ = '?';
  };

  /// The outcome, and whether the fault came.
  std::pair<char, bool> CallWith(Attempt& attempt, Fault fault, long n) {
    bool came = false;
    if (fault == Fault::Allocation || fault == Fault::Allocations) {
      const OutOfMemory memory(
          n, fault == Fault::Allocation ? OutOfMemory::Repeat::Once : OutOfMemory::Repeat::ForEver);
      attempt.Make();
      came = memory.has_failed();
    } else {
      failure =
          CallFailure(n, AutomationError(kAutomationFailed, u"Server", u"The call failed"),
                      fault == Fault::HostCalls ? CallFailure::Repeat::ForEver : CallFailure::Repeat::Once);
      if (fault == Fault::HostCallForWantOfMemory) failure.Reset(n, CallFailure::Kind::NoMemory);
      attempt.Make();
      came = failure.has_failed();
      failure.Reset(0);
    }
    return {attempt.Outcome(), came};
  }
};

TEST_P(EveryOperation, EndsAsAgreedWhicheverHostCallsFail) {
  const Operation& operation = *GetParam();
  const std::string_view all = operation.when_all_calls_fail_from_it_on;
  const std::string once = Outcomes(Fault::HostCall);
  EXPECT_THAT(once, MatchesRegex(std::string(operation.when_a_call_fails)));
  EXPECT_THAT(Outcomes(Fault::HostCalls),
              MatchesRegex(std::string(all.empty() ? operation.when_a_call_fails : all)));
  EXPECT_THAT(Outcomes(Fault::HostCallForWantOfMemory),
              MatchesRegex(std::string(operation.when_memory_is_short)));
  RecordProperty("host_calls", static_cast<int>(once.size()));
}

TEST_P(EveryOperation, TellsOfAWantOfMemoryAndLosesNothingWhicheverAllocationFails) {
  const Operation& operation = *GetParam();
  const std::string once = Outcomes(Fault::Allocation);
  EXPECT_THAT(once, MatchesRegex(std::string(operation.when_memory_is_short)));
  EXPECT_THAT(Outcomes(Fault::Allocations), MatchesRegex(std::string(operation.when_memory_is_short)));
  RecordProperty("allocations", static_cast<int>(once.size()));
}

std::vector<const Operation*> AllOperations() {
  std::vector<const Operation*> all;
  for (const Operation& operation : Operations()) all.push_back(&operation);
  return all;
}

INSTANTIATE_TEST_SUITE_P(Public, EveryOperation, testing::ValuesIn(AllOperations()),
                         [](const testing::TestParamInfo<const Operation*>& info) {
                           return info.param->TestName();
                         });

}  // namespace
}  // namespace qva
