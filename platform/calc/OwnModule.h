// Modules of Basic that are ours, and macros by their names.
#pragma once

#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/script/provider/XScriptProvider.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>

namespace qva::calc {

/// A macro named as Library.Module.Procedure, of a document's provider ("document") or of the application's
/// ("application"). Raises UNO's exceptions.
css::uno::Reference<css::script::provider::XScript> FindScript(
    const css::uno::Reference<css::script::provider::XScriptProvider>& scripts, const rtl::OUString& name,
    const char* location);

/// Runs a macro. Raises UNO's exceptions.
css::uno::Any RunScript(const css::uno::Reference<css::script::provider::XScript>& script,
                        const css::uno::Sequence<css::uno::Any>& arguments);

/// A module of our own that stands among Basic's for as long as the object lives, under a name that no macro
/// may have. While a macro of one runs, another one may come and go.
class OwnModule {
 public:
  /// In a library of its own, of the application, so that no document that is saved meanwhile has it.
  OwnModule(const css::uno::Reference<css::uno::XComponentContext>& context, const rtl::OUString& source);
  /// In a document's library of that name and these modules.
  OwnModule(const css::uno::Reference<css::script::provider::XScriptProvider>& scripts,
            const rtl::OUString& library, const css::uno::Reference<css::container::XNameContainer>& modules,
            const rtl::OUString& source);
  ~OwnModule();
  OwnModule(const OwnModule&) = delete;
  OwnModule& operator=(const OwnModule&) = delete;

  /// Raises UNO's exceptions, also where the module does not compile.
  css::uno::Reference<css::script::provider::XScript> Find(const char* procedure) const;

 private:
  OwnModule();

  inline static int living_ = 0;  ///< LibreOffice runs macros in one thread

  rtl::OUString name_;
  std::function<void()> take_out_;
  css::uno::Reference<css::script::provider::XScriptProvider> scripts_;
  rtl::OUString library_;
  const char* location_ = nullptr;
};

}  // namespace qva::calc
