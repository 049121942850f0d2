// One of our objects as LibreOffice Basic sees it.
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/lang/XUnoTunnel.hpp>
#include <com/sun/star/script/XAutomationInvocation.hpp>
#include <cppuhelper/implbase3.hxx>
#include <span>

#include "platform/calc/Uno.h"
#include "platform/calc/UnoValue.h"
#include "server/calc/NamedService.h"
#include "server/calc/service_names.h"
#include "server/call_log.h"

namespace qva::calc {

/// Publishes an object by its member table. Names match in any letter case; named arguments, omitted optional
/// ones and arguments by reference work as in VBA. An argument that was given without a value is taken as
/// left out where the parameter is optional, as Nothing where it is an object. Errors are raised in the
/// calling macro. While it is published, the same object is the same UNO object.
class PublishedObject
    : public NamedService<cppu::WeakImplHelper3<css::script::XAutomationInvocation, css::lang::XServiceInfo,
                                                css::lang::XUnoTunnel>,
                          kPublishedObject>,
      public CarriesObject {
 public:
  /// The UNO object of an object that is not null.
  static Reference<css::uno::XInterface> Of(const ObjectPtr& object);

  const ObjectPtr& Carried() const override { return object_; }
  sal_Int64 SAL_CALL getSomething(const Sequence<sal_Int8>& identifier) override {
    return Tunnel(identifier);
  }

  Reference<css::beans::XIntrospectionAccess> SAL_CALL getIntrospection() override { return {}; }
  sal_Bool SAL_CALL hasMethod(const OUString& name) override;
  sal_Bool SAL_CALL hasProperty(const OUString& name) override;
  Any SAL_CALL getValue(const OUString& name) override;
  void SAL_CALL setValue(const OUString& name, const Any& value) override;
  Any SAL_CALL invoke(const OUString& name, const Sequence<Any>& arguments, Sequence<sal_Int16>& changed,
                      Sequence<Any>& values) override;
  Any SAL_CALL invokeGetProperty(const OUString& name, const Sequence<Any>& arguments,
                                 Sequence<sal_Int16>& changed, Sequence<Any>& values) override;
  Any SAL_CALL invokePutProperty(const OUString& name, const Sequence<Any>& arguments,
                                 Sequence<sal_Int16>& changed, Sequence<Any>& values) override;

 private:
  explicit PublishedObject(ObjectPtr object) : object_(std::move(object)) {}
  ~PublishedObject() override;

  using Passed = std::span<const Any>;

  Any Perform(Access access, const OUString& name, Passed arguments, Sequence<sal_Int16>& changed,
              Sequence<Any>& values);
  Any PerformLogged(Access access, const std::u16string& name, Passed arguments, Sequence<sal_Int16>& changed,
                    Sequence<Any>& values);
  Any PerformUnguarded(LoggedCall& logged, Access access, const std::u16string& name, Passed arguments,
                       Sequence<sal_Int16>& changed, Sequence<Any>& values);

  ObjectPtr object_;
};

}  // namespace qva::calc
