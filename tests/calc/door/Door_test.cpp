// The door for LibreOffice without a LibreOffice behind it: every operation of the public classes as Basic
// calls it, while memory is short.
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/XAutomationInvocation.hpp>
#include <com/sun/star/uno/DeploymentException.hpp>
#include <cppuhelper/implbase1.hxx>

#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "server/calc/ObjectFactoryService.h"
#include "server/calc/PublishedObject.h"
#include "tests/operations/Operations.h"

namespace qva::calc {
namespace {

using css::script::XAutomationInvocation;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

/// A process without services.
class NoOffice : public cppu::WeakImplHelper1<css::uno::XComponentContext> {
 public:
  Any SAL_CALL getValueByName(const OUString&) override { return {}; }
  Reference<css::lang::XMultiComponentFactory> SAL_CALL getServiceManager() override {
    throw css::uno::DeploymentException("no office", nullptr);
  }
};

class Door : public OperationStage, public testing::WithParamInterface<const Operation*> {
 protected:
  Door() {
    factory();  // takes the services of the machine, which are not to be used
    InstallOwnServices();
  }

  static Reference<css::lang::XMultiServiceFactory> factory() {
    static auto& made =
        *new Reference<css::lang::XMultiServiceFactory>(new ObjectFactoryService(new NoOffice));
    return made;
  }

  /// What a macro has in its hands: the object and the arguments.
  struct Passed {
    Reference<XAutomationInvocation> object;
    Sequence<Any> arguments;
  };
  Passed Prepare() {
    const ReadyCall ready = GetParam()->prepare(*this);
    ShutDown();
    Passed passed;
    if (ready.object) passed.object.set(PublishedObject::Of(ready.object), css::uno::UNO_QUERY_THROW);
    std::vector<Any> arguments;
    for (const Value& value : ready.arguments.positional) arguments.push_back(ToAny(value));
    passed.arguments = Sequence<Any>(arguments.data(), static_cast<sal_Int32>(arguments.size()));
    return passed;
  }

  /// Calls it as Basic does. The letter of what came of it: '.' for any result.
  static char Call(Passed& passed, const OUString& name) {
    const Operation& operation = *GetParam();
    Sequence<sal_Int16> positions;
    Sequence<Any> values;
    try {
      if (operation.kind == Operation::Kind::Create) {
        passed.object.set(factory()->createInstance(name), css::uno::UNO_QUERY);
        return passed.object.is() ? '.' : '?';
      }
      const bool is_property = passed.object->hasProperty(name);
      const bool is_put = operation.kind == Operation::Kind::Put || operation.kind == Operation::Kind::PutRef;
      if (is_put && is_property) {
        passed.object->setValue(name, passed.arguments[0]);
      } else if (is_put) {
        passed.object->invokePutProperty(name, passed.arguments, positions, values);
      } else if (is_property) {
        passed.object->getValue(name);
      } else {
        passed.object->invoke(name, passed.arguments, positions, values);
      }
      return '.';
    } catch (const css::script::BasicErrorException& error) {
      return error.ErrorCode == kOutOfMemory ? 'M' : error.ErrorCode == operation.own_error ? 'X' : '?';
    } catch (...) {
      return '!';
    }
  }
};

TEST_P(Door, LetsNothingOutButErrorsWhicheverAllocationFails) {
  const Operation& operation = *GetParam();
  const OUString name =
      ToUno(operation.member.empty() ? u"QVA_Varnholt." + std::u16string(operation.class_name)
                                     : std::u16string(operation.member));
  const char undisturbed = operation.undisturbed == 'X' ? 'X' : '.';
  {
    Passed passed = Prepare();
    ASSERT_EQ(Call(passed, name), undisturbed);
  }
  for (const auto repeat : {OutOfMemory::Repeat::Once, OutOfMemory::Repeat::ForEver}) {
    int told = 0;
    for (long n = 1; !HasFailure(); ++n) {
      SCOPED_TRACE(n);
      ShutDown();
      const long live = Object::LiveCount();
      bool has_failed = false;
      {
        Passed passed = Prepare();
        char outcome = '?';
        {
          const OutOfMemory memory(n, repeat);
          outcome = Call(passed, name);
          has_failed = memory.has_failed();
        }
        EXPECT_TRUE(outcome == undisturbed || (has_failed && outcome == 'M')) << outcome;
        told += outcome == 'M';
        // Where memory stays short, what tidies up cannot do so either: the next call begins anew.
        const bool begins_anew =
            operation.begins_anew || (operation.tidies_up && repeat == OutOfMemory::Repeat::ForEver);
        if (has_failed && !begins_anew) {
          Passed anew = Prepare();
          EXPECT_EQ(Call(anew, name), undisturbed) << "the next call";
        }
      }
      ShutDown();
      EXPECT_EQ(Object::LiveCount(), live) << "objects stay alive";
      if (!has_failed) break;
    }
    // A member may need no memory, or do without.
    if (operation.kind == Operation::Kind::Create) {
      EXPECT_GT(told, 0);
    }
    RecordProperty(repeat == OutOfMemory::Repeat::Once ? "told_once" : "told_for_ever", told);
  }
}

std::vector<const Operation*> AllCalls() {
  std::vector<const Operation*> calls;
  for (const Operation& operation : Operations()) {
    if (operation.kind != Operation::Kind::Release) calls.push_back(&operation);
  }
  return calls;
}

INSTANTIATE_TEST_SUITE_P(Calc, Door, testing::ValuesIn(AllCalls()),
                         [](const testing::TestParamInfo<const Operation*>& info) {
                           return info.param->TestName();
                         });

}  // namespace
}  // namespace qva::calc
