// A module of ours leaves Basic's libraries again, whatever fails.
#include "platform/calc/OwnModule.h"

#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/uno/DeploymentException.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase4.hxx>

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

  Any SAL_CALL getValueByName(const OUString&) override { return {}; }
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
