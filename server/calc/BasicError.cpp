#include "server/calc/BasicError.h"

#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/XInvocation.hpp>
#include <cppuhelper/implbase1.hxx>
#include <ooo/vba/XErrObject.hpp>
#include <utility>

#include "platform/calc/OwnModule.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"

namespace qva::calc {
namespace {

/// Basic's Err object, once we have it. No Reference: nothing is to be released when the process ends.
ooo::vba::XErrObject* err_object = nullptr;

void Keep(ooo::vba::XErrObject* object) {
  if (object) object->acquire();
  if (ooo::vba::XErrObject* const former = std::exchange(err_object, object)) former->release();
}

/// What the handing-over macro calls, with Err as its argument.
class Taker : public cppu::WeakImplHelper1<css::script::XInvocation> {
 public:
  Reference<css::beans::XIntrospectionAccess> SAL_CALL getIntrospection() override { return {}; }
  sal_Bool SAL_CALL hasMethod(const OUString&) override { return true; }
  sal_Bool SAL_CALL hasProperty(const OUString&) override { return false; }
  void SAL_CALL setValue(const OUString&, const Any&) override {}
  Any SAL_CALL getValue(const OUString&) override { return {}; }
  Any SAL_CALL invoke(const OUString&, const Sequence<Any>& arguments, Sequence<sal_Int16>&,
                      Sequence<Any>&) override {
    Reference<ooo::vba::XErrObject> handed;
    if (arguments.hasElements() && (arguments[0] >>= handed)) Keep(handed.get());
    return {};
  }
};

}  // namespace

void PrepareErrors(const Reference<css::uno::XComponentContext>& context) {
  if (err_object) return;
  try {
    const OwnModule own(context,
                        "Option VBASupport 1\n"
                        "Function Main(Taker)\n"
                        "  Dim ErrObject As Object\n"
                        "  Set ErrObject = Err\n"
                        "  Taker.Take ErrObject\n"
                        "End Function\n");
    RunScript(own.Find("Main"), SequenceOf({Any(Reference<css::script::XInvocation>(new Taker))}));
  } catch (const css::uno::Exception&) {
    // RaiseInMacro has another way, if a poorer one.
  }
}

void RaiseInMacro(const AutomationError& error) {
  try {
    if (err_object) {
      err_object->Raise(Any(sal_Int32{error.number()}), Any(ToUno(error.source())),
                        Any(ToUno(error.description())), Any(), Any());
      return;
    }
    throw css::script::BasicErrorException(ToUno(error.description()), nullptr, error.number(),
                                           ToUno(error.description()));
  } catch (const css::uno::Exception&) {
    throw;
  } catch (...) {  // a text would need memory, too
    throw css::script::BasicErrorException(OUString(), nullptr, kOutOfMemory, OUString());
  }
}

ObjectPtr ErrObjectForMacro() {
  if (!err_object) return {};
  return MakeRef<UnoObject>(Any(Reference<ooo::vba::XErrObject>(err_object)));
}

void ReleaseErrors() {
  Keep(nullptr);
}

}  // namespace qva::calc
