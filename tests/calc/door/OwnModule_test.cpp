// A module of ours leaves Basic's libraries again, whatever fails; what it hands us lets nothing out.
#include "platform/calc/OwnModule.h"

#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/XInvocation.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProviderFactory.hpp>
#include <com/sun/star/uno/DeploymentException.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase3.hxx>
#include <cppuhelper/implbase4.hxx>
#include <ooo/vba/XErrObject.hpp>

#include "platform/calc/UnoText.h"
#include "platform/text.h"
#include "server/calc/BasicError.h"

namespace qva::calc {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

/// A LibreOffice that has libraries, each of which is the one set of modules, and runs no scripts.
class LibrariesOnly
    : public cppu::WeakImplHelper4<css::uno::XComponentContext, css::lang::XMultiComponentFactory,
                                   css::script::XLibraryContainer, css::container::XNameContainer> {
 public:
  std::vector<std::string> told;
  bool has_own = false;
  bool takes_modules = true;
  Any scripts;

  Any SAL_CALL getValueByName(const OUString&) override { return scripts; }
  Reference<css::lang::XMultiComponentFactory> SAL_CALL getServiceManager() override { return this; }
  Reference<css::uno::XInterface> SAL_CALL
  createInstanceWithContext(const OUString&, const Reference<css::uno::XComponentContext>&) override {
    return static_cast<css::script::XLibraryContainer*>(this);
  }
  Reference<css::uno::XInterface> SAL_CALL createInstanceWithArgumentsAndContext(
      const OUString&, const Sequence<Any>&, const Reference<css::uno::XComponentContext>&) override {
    return {};
  }
  Sequence<OUString> SAL_CALL getAvailableServiceNames() override { return {}; }

  Reference<css::container::XNameContainer> SAL_CALL createLibrary(const OUString& name) override {
    Tell("create", name);
    has_own = true;
    return this;
  }
  Reference<css::container::XNameAccess> SAL_CALL createLibraryLink(const OUString&, const OUString&,
                                                                    sal_Bool) override {
    return {};
  }
  void SAL_CALL removeLibrary(const OUString& name) override {
    Tell("remove library", name);
    has_own = false;
  }
  sal_Bool SAL_CALL isLibraryLoaded(const OUString&) override { return true; }
  void SAL_CALL loadLibrary(const OUString&) override {}

  void SAL_CALL insertByName(const OUString& name, const Any&) override {
    Tell("insert", name);
    if (!takes_modules) throw css::uno::RuntimeException();
    has_own = true;
  }
  void SAL_CALL removeByName(const OUString& name) override {
    Tell("remove", name);
    has_own = false;
  }
  void SAL_CALL replaceByName(const OUString&, const Any&) override {}
  Any SAL_CALL getByName(const OUString&) override { return {}; }
  Sequence<OUString> SAL_CALL getElementNames() override { return {}; }
  sal_Bool SAL_CALL hasByName(const OUString&) override { return has_own; }
  css::uno::Type SAL_CALL getElementType() override { return {}; }
  sal_Bool SAL_CALL hasElements() override { return has_own; }

 private:
  void Tell(const std::string& what, const OUString& name) {
    told.push_back(what + " " + ToUtf8(FromUno(name)));
  }
};

/// Finds no script, and not for a reason of UNO's.
class NoScripts : public cppu::WeakImplHelper1<css::script::provider::XScriptProvider> {
 public:
  Reference<css::script::provider::XScript> SAL_CALL getScript(const OUString&) override {
    throw std::bad_alloc();
  }
};

/// Basic's Err, of which only raising is asked.
class Err : public cppu::WeakImplHelper1<ooo::vba::XErrObject> {
 public:
  sal_Int32 raised = 0;
  bool is_short_of_memory = false;

  void SAL_CALL Raise(const Any& number, const Any&, const Any&, const Any&, const Any&) override {
    if (is_short_of_memory) throw std::bad_alloc();
    number >>= raised;
  }
  void SAL_CALL Clear() override {}
  sal_Int32 SAL_CALL getNumber() override { return raised; }
  void SAL_CALL setNumber(sal_Int32) override {}
  sal_Int32 SAL_CALL getHelpContext() override { return 0; }
  void SAL_CALL setHelpContext(sal_Int32) override {}
  OUString SAL_CALL getHelpFile() override { return {}; }
  void SAL_CALL setHelpFile(const OUString&) override {}
  OUString SAL_CALL getDescription() override { return {}; }
  void SAL_CALL setDescription(const OUString&) override {}
  OUString SAL_CALL getSource() override { return {}; }
  void SAL_CALL setSource(const OUString&) override {}
};

/// Runs any script, which hands over Err.
class HandingOver
    : public cppu::WeakImplHelper3<css::script::provider::XScriptProviderFactory,
                                   css::script::provider::XScriptProvider, css::script::provider::XScript> {
 public:
  const rtl::Reference<Err> err{new Err};

  Reference<css::script::provider::XScriptProvider> SAL_CALL createScriptProvider(const Any&) override {
    return this;
  }
  Reference<css::script::provider::XScript> SAL_CALL getScript(const OUString&) override { return this; }
  Any SAL_CALL invoke(const Sequence<Any>& arguments, Sequence<sal_Int16>& changed,
                      Sequence<Any>& values) override {
    const Reference<css::script::XInvocation> taker(arguments[0], css::uno::UNO_QUERY_THROW);
    const Reference<ooo::vba::XErrObject> handed(err.get());
    return taker->invoke("Take", SequenceOf({Any(handed)}), changed, values);
  }
};

using testing::ElementsAre;

TEST(OwnModule, LeavesALibraryWhereNoScriptsAreRun) {
  const rtl::Reference<LibrariesOnly> office(new LibrariesOnly);
  PrepareErrors(office.get());
  EXPECT_THAT(office->told, ElementsAre("create QVA_VarnholtOwn1", "insert QVA_VarnholtOwn1",
                                        "remove library QVA_VarnholtOwn1"));
}

TEST(OwnModule, LeavesALibraryThatTakesNoModule) {
  const rtl::Reference<LibrariesOnly> office(new LibrariesOnly);
  office->takes_modules = false;
  EXPECT_THROW(OwnModule(office.get(), ""), css::uno::RuntimeException);
  EXPECT_FALSE(office->has_own);
}

TEST(OwnModule, LeavesADocumentWhereNoScriptIsFound) {
  const rtl::Reference<LibrariesOnly> modules(new LibrariesOnly);
  const auto find = [&] { OwnModule(new NoScripts, "Standard", modules.get(), "").Find("Main"); };
  EXPECT_THROW(find(), std::bad_alloc);
  EXPECT_THAT(modules->told, ElementsAre("insert QVA_VarnholtOwn1", "remove QVA_VarnholtOwn1"));
}

TEST(OwnModule, HandsOverErrWhichTellsOfError7WhereThereIsNoMemory) {
  const rtl::Reference<LibrariesOnly> office(new LibrariesOnly);
  const rtl::Reference<HandingOver> scripts(new HandingOver);
  office->scripts <<= Reference<css::script::provider::XScriptProviderFactory>(scripts.get());
  PrepareErrors(office.get());
  EXPECT_FALSE(office->has_own);
  RaiseInMacro(AutomationError(kOverflow));
  EXPECT_EQ(scripts->err->raised, kOverflow);
  scripts->err->is_short_of_memory = true;
  try {
    RaiseInMacro(AutomationError(kOverflow));
    ADD_FAILURE() << "raises nothing";
  } catch (const css::script::BasicErrorException& error) {
    EXPECT_EQ(error.ErrorCode, kOutOfMemory);
  }
  ReleaseErrors();
}

TEST(OwnModule, HasANameOfItsOwnWhileAnotherOneRuns) {
  const rtl::Reference<LibrariesOnly> outer(new LibrariesOnly);
  const rtl::Reference<LibrariesOnly> inner(new LibrariesOnly);
  const OwnModule first(new NoScripts, "Standard", outer.get(), "");
  const OwnModule second(new NoScripts, "Standard", inner.get(), "");
  EXPECT_THAT(outer->told, ElementsAre("insert QVA_VarnholtOwn1"));
  EXPECT_THAT(inner->told, ElementsAre("insert QVA_VarnholtOwn2"));
}

}  // namespace
}  // namespace qva::calc
