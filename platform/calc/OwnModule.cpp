#include "platform/calc/OwnModule.h"

#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/theMasterScriptProviderFactory.hpp>

#include "platform/calc/Uno.h"
#include "platform/error.h"

namespace qva::calc {

using css::container::XNameContainer;
using css::script::XLibraryContainer;
using css::script::provider::XScript;
using css::script::provider::XScriptProvider;

Reference<XScript> FindScript(const Reference<XScriptProvider>& scripts, const OUString& name,
                              const char* location) {
  return scripts->getScript("vnd.sun.star.script:" + name +
                            "?language=Basic&location=" + OUString::createFromAscii(location));
}

Any RunScript(const Reference<XScript>& script, const Sequence<Any>& arguments) {
  Sequence<sal_Int16> changed;
  Sequence<Any> values;
  return script->invoke(arguments, changed, values);
}

OwnModule::OwnModule() : name_("QVA_VarnholtOwn" + OUString::number(++living_)) {
}

// What is put in after the first constructor has ended is taken out by the destructor, also when this raises.

OwnModule::OwnModule(const Reference<css::uno::XComponentContext>& context, const OUString& source)
    : OwnModule() {
  const Reference<XLibraryContainer> libraries(
      context->getServiceManager()->createInstanceWithContext(
          "com.sun.star.script.ApplicationScriptLibraryContainer", context),
      UNO_QUERY_THROW);
  take_out_ = [libraries, name = name_] {
    if (libraries->hasByName(name)) libraries->removeLibrary(name);
  };
  take_out_();  // one that an earlier process left
  library_ = name_;
  libraries->createLibrary(library_)->insertByName(name_, Any(source));
  scripts_ = css::script::provider::theMasterScriptProviderFactory::get(context)->createScriptProvider(
      Any(OUString("user")));
  location_ = "application";
}

OwnModule::OwnModule(const Reference<XScriptProvider>& scripts, const OUString& library,
                     const Reference<XNameContainer>& modules, const OUString& source)
    : OwnModule() {
  scripts_ = scripts;
  library_ = library;
  location_ = "document";
  take_out_ = [modules, name = name_] {
    if (modules->hasByName(name)) modules->removeByName(name);
  };
  modules->insertByName(name_, Any(source));
}

OwnModule::~OwnModule() {
  --living_;
  // What stays is taken out by the next one.
  IgnoreFailures([&] {
    if (take_out_) take_out_();
  });
}

Reference<XScript> OwnModule::Find(const char* procedure) const {
  return FindScript(scripts_, library_ + "." + name_ + "." + OUString::createFromAscii(procedure), location_);
}

}  // namespace qva::calc
