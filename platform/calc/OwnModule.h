// Modules of Basic that are ours, and macros by their names.
#pragma once

#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/script/provider/XScriptProvider.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// A macro named as Library.Module.Procedure, of a document's provider ("document") or of the application's
/// ("application"). Raises UNO's exceptions.
Reference<css::script::provider::XScript> FindScript(
    const Reference<css::script::provider::XScriptProvider>& scripts, const OUString& name,
    const char* location);

/// Runs a macro. Raises UNO's exceptions.
Any RunScript(const Reference<css::script::provider::XScript>& script, const Sequence<Any>& arguments);

/// A module of our own that stands among Basic's for as long as the object lives, under a name that no macro
/// may have. While a macro of one runs, another one may come and go.
class OwnModule {
 public:
  /// In a library of its own, of the application, so that no document that is saved meanwhile has it.
  OwnModule(const Reference<css::uno::XComponentContext>& context, const OUString& source);
  /// In a document's library of that name and these modules.
  OwnModule(const Reference<css::script::provider::XScriptProvider>& scripts, const OUString& library,
            const Reference<css::container::XNameContainer>& modules, const OUString& source);
  ~OwnModule();
  OwnModule(const OwnModule&) = delete;
  OwnModule& operator=(const OwnModule&) = delete;

  /// Raises UNO's exceptions, also where the module does not compile.
  Reference<css::script::provider::XScript> Find(const char* procedure) const;

 private:
  OwnModule();

  inline static int living_ = 0;  ///< LibreOffice runs macros in one thread

  OUString name_;
  std::function<void()> take_out_;
  Reference<css::script::provider::XScriptProvider> scripts_;
  OUString library_;
  const char* location_ = nullptr;
};

}  // namespace qva::calc
