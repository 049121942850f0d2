// Objects of both directions live to the end of a call in which the last who held them lets go.
#include <com/sun/star/beans/XIntrospection.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/XAutomationInvocation.hpp>
#include <com/sun/star/uno/DeploymentException.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase3.hxx>

#include "platform/calc/UnoObject.h"
#include "platform/member_table.h"
#include "platform/memory/MemoryPlatform.h"
#include "server/calc/PublishedObject.h"
#include "tests/raised_error.h"

namespace qva::calc {
namespace {

using css::script::XAutomationInvocation;
using css::uno::XComponentContext;

/// An object of LibreOffice's with the one property Alpha, and LibreOffice's description of it.
class OneProperty : public cppu::WeakImplHelper3<css::beans::XIntrospection, css::beans::XIntrospectionAccess,
                                                 css::beans::XPropertySet> {
 public:
  std::function<Any()> getter;

  Any SAL_CALL getPropertyValue(const OUString&) override { return getter(); }
  sal_Bool SAL_CALL hasProperty(const OUString& name, sal_Int32) override { return name == "Alpha"; }
  sal_Bool SAL_CALL hasMethod(const OUString&, sal_Int32) override { return false; }
  Reference<css::beans::XIntrospectionAccess> SAL_CALL inspect(const Any&) override { return this; }
  Reference<css::uno::XInterface> SAL_CALL queryAdapter(const css::uno::Type&) override {
    return static_cast<css::beans::XPropertySet*>(this);
  }

  sal_Int32 SAL_CALL getSuppliedMethodConcepts() override { return 0; }
  sal_Int32 SAL_CALL getSuppliedPropertyConcepts() override { return 0; }
  css::beans::Property SAL_CALL getProperty(const OUString&, sal_Int32) override { return {}; }
  Sequence<css::beans::Property> SAL_CALL getProperties(sal_Int32) override { return {}; }
  Reference<css::reflection::XIdlMethod> SAL_CALL getMethod(const OUString&, sal_Int32) override {
    return {};
  }
  Sequence<Reference<css::reflection::XIdlMethod>> SAL_CALL getMethods(sal_Int32) override { return {}; }
  Sequence<css::uno::Type> SAL_CALL getSupportedListeners() override { return {}; }
  Reference<css::beans::XPropertySetInfo> SAL_CALL getPropertySetInfo() override { return {}; }
  void SAL_CALL setPropertyValue(const OUString&, const Any&) override {}
  void SAL_CALL addPropertyChangeListener(const OUString&,
                                          const Reference<css::beans::XPropertyChangeListener>&) override {}
  void SAL_CALL removePropertyChangeListener(const OUString&,
                                             const Reference<css::beans::XPropertyChangeListener>&) override {
  }
  void SAL_CALL addVetoableChangeListener(const OUString&,
                                          const Reference<css::beans::XVetoableChangeListener>&) override {}
  void SAL_CALL removeVetoableChangeListener(const OUString&,
                                             const Reference<css::beans::XVetoableChangeListener>&) override {
  }
};

/// A LibreOffice that can describe that one.
class Describing : public cppu::WeakImplHelper1<XComponentContext> {
 public:
  explicit Describing(const rtl::Reference<OneProperty>& described) : described_(described) {}
  Any SAL_CALL getValueByName(const OUString&) override {
    return Any(Reference<css::beans::XIntrospection>(described_.get()));
  }
  Reference<css::lang::XMultiComponentFactory> SAL_CALL getServiceManager() override {
    throw css::uno::DeploymentException();
  }

 private:
  rtl::Reference<OneProperty> described_;
};

/// An object of ours whose member does what the test says.
class Doing : public Described<Doing> {
 public:
  explicit Doing(std::function<void()> action) : action_(std::move(action)) {}
  static ClassBuilder Describe() {
    return ClassBuilder(u"Doing", "Does what a test says").Method<&Doing::Alpha>(u"Alpha");
  }

 private:
  std::u16string Alpha() {
    action_();
    return last_words_;
  }

  std::function<void()> action_;
  std::u16string last_words_ = u"last words";
};

class ObjectInItsCall : public testing::Test {
 protected:
  ObjectInItsCall() {
    InstallServices(platform_.services());
    InstallConversion(new Describing(target), &PublishedObject::Of);
  }
  ~ObjectInItsCall() override {
    InstallConversion({}, nullptr);
    InstallServices({});
  }

  /// The one reference to an object of ours that macros hold.
  void Publish(std::function<void()> action) {
    published.set(PublishedObject::Of(MakeRef<Doing>(std::move(action))), UNO_QUERY_THROW);
  }
  /// Lets go of an object and holds that it stays alive.
  template <class Holder>
  static void LetGo(Holder& holder) {
    const long alive = Object::LiveCount();
    holder = {};
    EXPECT_EQ(Object::LiveCount(), alive) << "the call itself keeps the object";
  }

  rtl::Reference<OneProperty> target{new OneProperty};
  Reference<XAutomationInvocation> published;

 private:
  MemoryPlatform platform_;
};

TEST_F(ObjectInItsCall, OfLibreOfficesLivesToItsEnd) {
  const long alive = Object::LiveCount();
  ObjectPtr object = MakeRef<UnoObject>(Any(Reference<css::beans::XPropertySet>(target.get())));
  target->getter = [&] {
    LetGo(object);
    return Any(OUString("last words"));
  };
  Object& raw = *object;
  Arguments none;
  EXPECT_EQ(raw.Invoke(Access::Get, u"Alpha", none), Value(u"last words"));
  EXPECT_EQ(Object::LiveCount(), alive);
}

TEST_F(ObjectInItsCall, OfLibreOfficesLivesToItsEndAlsoWhereItFails) {
  const long alive = Object::LiveCount();
  ObjectPtr object = MakeRef<UnoObject>(Any(Reference<css::beans::XPropertySet>(target.get())));
  target->getter = [&]() -> Any {
    LetGo(object);
    throw AutomationError(kApplicationDefined);
  };
  Object& raw = *object;
  Arguments none;
  EXPECT_EQ(RaisedBy([&] { raw.Invoke(Access::Get, u"Alpha", none); }), kApplicationDefined);
  EXPECT_EQ(Object::LiveCount(), alive);
}

TEST_F(ObjectInItsCall, OfOursLivesToItsEnd) {
  const long alive = Object::LiveCount();
  Publish([this] { LetGo(published); });
  XAutomationInvocation& raw = *published;
  Sequence<sal_Int16> positions;
  Sequence<Any> values;
  EXPECT_EQ(raw.invoke("Alpha", {}, positions, values), Any(OUString("last words")));
  EXPECT_EQ(Object::LiveCount(), alive);
}

TEST_F(ObjectInItsCall, OfOursLivesToItsEndAlsoWhereItFails) {
  const long alive = Object::LiveCount();
  Publish([this] {
    LetGo(published);
    throw AutomationError(kApplicationDefined);
  });
  XAutomationInvocation& raw = *published;
  Sequence<sal_Int16> positions;
  Sequence<Any> values;
  EXPECT_THROW(raw.invoke("Alpha", {}, positions, values), css::script::BasicErrorException);
  EXPECT_EQ(Object::LiveCount(), alive);
}

}  // namespace
}  // namespace qva::calc
