#include "server/calc/BasicError.h"

#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/XInvocation.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProvider.hpp>
#include <com/sun/star/script/provider/theMasterScriptProviderFactory.hpp>
#include <cppuhelper/implbase1.hxx>
#include <ooo/vba/XErrObject.hpp>

#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"

namespace qva::calc {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

Reference<ooo::vba::XErrObject>& ErrObject() {
  static auto& object = *new Reference<ooo::vba::XErrObject>;
  return object;
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
    if (arguments.hasElements()) arguments[0] >>= ErrObject();
    return {};
  }
};

}  // namespace

void PrepareErrors(const Reference<css::uno::XComponentContext>& context) {
  if (ErrObject().is()) return;
  try {
    const Reference<css::script::XLibraryContainer> libraries(
        context->getServiceManager()->createInstanceWithContext(
            "com.sun.star.script.ApplicationScriptLibraryContainer", context),
        css::uno::UNO_QUERY_THROW);
    const OUString library("QVA_VarnholtErrors");
    if (libraries->hasByName(library)) libraries->removeLibrary(library);
    const Reference<css::container::XNameContainer> modules = libraries->createLibrary(library);
    modules->insertByName("HandOver", Any(OUString("Option VBASupport 1\n"
                                                   "Function Main(Taker)\n"
                                                   "  Dim ErrObject As Object\n"
                                                   "  Set ErrObject = Err\n"
                                                   "  Taker.Take ErrObject\n"
                                                   "End Function\n")));
    const auto providers = css::script::provider::theMasterScriptProviderFactory::get(context);
    const auto script = providers->createScriptProvider(Any(OUString("user")))
                            ->getScript(
                                "vnd.sun.star.script:QVA_VarnholtErrors.HandOver.Main?language=Basic"
                                "&location=application");
    Sequence<sal_Int16> changed;
    Sequence<Any> values;
    script->invoke(SequenceOf({Any(Reference<css::script::XInvocation>(new Taker))}), changed, values);
    libraries->removeLibrary(library);
  } catch (const css::uno::Exception&) {
    // RaiseInMacro has another way, if a poorer one.
  }
}

void RaiseInMacro(const AutomationError& error) {
  if (ErrObject().is()) {
    ErrObject()->Raise(Any(sal_Int32{error.number()}), Any(ToUno(error.source())),
                       Any(ToUno(error.description())), Any(), Any());
    return;
  }
  throw css::script::BasicErrorException(ToUno(error.description()), nullptr, error.number(),
                                         ToUno(error.description()));
}

ObjectPtr ErrObjectForMacro() {
  return ErrObject().is() ? ObjectPtr(MakeRef<UnoObject>(Any(ErrObject()))) : ObjectPtr();
}

void ReleaseErrors() {
  ErrObject().clear();
}

}  // namespace qva::calc
