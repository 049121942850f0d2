#include "server/calc/OpenWorkbook.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProviderSupplier.hpp>
#include <com/sun/star/script/provider/theMasterScriptProviderFactory.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <osl/file.hxx>
#include <stdexcept>
#include <vector>

#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

using css::beans::PropertyValue;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;
using rtl::OUString;

using css::script::provider::XScript;
using css::script::provider::XScriptProvider;

/// The name of what stands in LibreOffice's libraries for a moment: no macro may have it.
const OUString kOwnName("QVA_VarnholtRun");

OUString UrlOf(const std::string& path) {
  OUString url;
  osl::FileBase::getFileURLFromSystemPath(ToUno(FromUtf8(path)), url);
  return url;
}

PropertyValue Property(const char* name, const Any& value) {
  PropertyValue property;
  property.Name = OUString::createFromAscii(name);
  property.Value = value;
  return property;
}

/// The library of the workbook's own macros: the first that LibreOffice did not put there itself.
OUString OwnLibrary(const Reference<css::script::XLibraryContainer>& libraries) {
  for (const OUString& name : libraries->getElementNames()) {
    if (name != "Standard") return name;
  }
  throw std::runtime_error("the workbook has no library of macros");
}

Any Invoke(const Reference<XScript>& script, const Sequence<Any>& arguments) {
  Sequence<sal_Int16> changed;
  Sequence<Any> values;
  return script->invoke(arguments, changed, values);
}

Reference<XScript> FindScript(const Reference<XScriptProvider>& scripts, const OUString& name,
                              const char* location) {
  return scripts->getScript("vnd.sun.star.script:" + name +
                            "?language=Basic&location=" + OUString::createFromAscii(location));
}

/// A module's own spelling of a name in any letter case, as Basic finds it.
OUString ModuleNamed(const Reference<css::container::XNameContainer>& modules, const OUString& name) {
  for (const OUString& module : modules->getElementNames()) {
    if (module.equalsIgnoreAsciiCase(name)) return module;
  }
  throw std::runtime_error("the workbook has no module " + ToUtf8(FromUno(name)));
}

/// Whether the module of a library compiles. LibreOffice would pass over one that does not. Asked of a copy,
/// which can be run without effect.
bool Compiles(const Reference<XScriptProvider>& scripts, const OUString& library,
              const Reference<css::container::XNameContainer>& modules, const OUString& module) {
  OUString source;
  modules->getByName(module) >>= source;
  modules->insertByName(kOwnName, Any(OUString(source + "\nFunction " + kOwnName + "Compiles()\n" + kOwnName +
                                               "Compiles = 1\nEnd Function\n")));
  Any result;
  try {
    result =
        Invoke(FindScript(scripts, library + "." + kOwnName + "." + kOwnName + "Compiles", "document"), {});
  } catch (const css::uno::Exception&) {
    // Without a script there is no result.
  }
  modules->removeByName(kOwnName);
  return result.hasValue();
}

/// A macro of ours that calls another one and gives back the error that it did not handle, which LibreOffice
/// would end it with without a word. It stands in a library of the application, so that no document that is
/// saved meanwhile has it, for as long as the object lives.
class Caller {
 public:
  explicit Caller(const Reference<css::uno::XComponentContext>& context)
      : libraries_(context->getServiceManager()->createInstanceWithContext(
                       "com.sun.star.script.ApplicationScriptLibraryContainer", context),
                   UNO_QUERY_THROW) {
    Remove();
    libraries_->createLibrary(kOwnName)->insertByName(
        "Caller", Any(OUString("Option VBASupport 1\n"
                               "Function Run(Macro)\n"
                               "  On Error GoTo Failed\n"
                               "  Err.Clear\n"
                               "  Macro.invoke Array(), Array(), Array()\n"
                               "  Run = Array()\n"
                               "  Exit Function\n"
                               "Failed:\n"
                               "  Run = Array(Err.Number, Err.Source, Err.Description)\n"
                               "End Function\n")));
    script_ =
        FindScript(css::script::provider::theMasterScriptProviderFactory::get(context)->createScriptProvider(
                       Any(OUString("user"))),
                   kOwnName + ".Caller.Run", "application");
  }
  ~Caller() {
    try {
      Remove();
    } catch (const css::uno::Exception&) {
      // The next one removes it.
    }
  }
  Caller(const Caller&) = delete;
  Caller& operator=(const Caller&) = delete;

  /// Nothing when the macro was ended by an End statement.
  Any Call(const Reference<XScript>& macro) const { return Invoke(script_, SequenceOf({Any(macro)})); }

 private:
  void Remove() const {
    if (libraries_->hasByName(kOwnName)) libraries_->removeLibrary(kOwnName);
  }

  Reference<css::script::XLibraryContainer> libraries_;
  Reference<XScript> script_;
};

}  // namespace

OpenWorkbook::OpenWorkbook(const Reference<css::uno::XComponentContext>& context, const std::string& path)
    : context_(context) {
  const OUString url = UrlOf(path);
  // Not hidden, since LibreOffice refuses part of its Excel model to the window of a hidden workbook, or
  // crashes on it; without a display nothing is seen of it anyway.
  std::vector<PropertyValue> properties{
      Property("MacroExecutionMode", Any(sal_Int16{css::document::MacroExecMode::ALWAYS_EXECUTE_NO_WARN})),
  };
  // LibreOffice takes a flat document for one of another format when it meets certain words in its macros.
  if (url.endsWithIgnoreAsciiCase(".fods")) {
    properties.push_back(Property("FilterName", Any(OUString("OpenDocument Spreadsheet Flat XML"))));
  }
  model_ = css::frame::Desktop::create(context)->loadComponentFromURL(
      url, "_blank", 0,
      Sequence<PropertyValue>(properties.data(), static_cast<sal_Int32>(properties.size())));
  if (!model_.is()) throw std::runtime_error("the workbook cannot be opened");
}

OpenWorkbook::~OpenWorkbook() {
  if (is_kept_) return;
  try {
    Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true);
  } catch (const css::uno::Exception&) {
    // The end of LibreOffice closes it, too.
  }
}

void OpenWorkbook::RunMacro(const std::string& macro) const {
  const std::size_t last_point = macro.rfind('.');
  if (last_point == macro.npos) throw std::runtime_error("the macro is not named as Module.Procedure");
  const std::size_t point = macro.find('.');
  const bool names_library = point != last_point;
  const std::string procedure = names_library ? macro.substr(point + 1) : macro;
  const Reference<css::script::XLibraryContainer> libraries(
      Reference<css::beans::XPropertySet>(model_, UNO_QUERY_THROW)->getPropertyValue("BasicLibraries"),
      UNO_QUERY_THROW);
  const OUString library_name =
      names_library ? ToUno(FromUtf8(macro.substr(0, point))) : OwnLibrary(libraries);
  if (!libraries->hasByName(library_name))
    throw std::runtime_error("the workbook has no library " + ToUtf8(FromUno(library_name)));
  libraries->loadLibrary(library_name);
  const Reference<css::container::XNameContainer> modules(libraries->getByName(library_name),
                                                          UNO_QUERY_THROW);
  const Reference<XScriptProvider> scripts =
      Reference<css::script::provider::XScriptProviderSupplier>(model_, UNO_QUERY_THROW)->getScriptProvider();
  const OUString module = ModuleNamed(modules, ToUno(FromUtf8(procedure.substr(0, procedure.find('.')))));
  const Reference<XScript> called =
      FindScript(scripts, library_name + "." + ToUno(FromUtf8(procedure)), "document");
  if (!Compiles(scripts, library_name, modules, module)) {
    throw std::runtime_error("the macro " + macro + " does not compile");
  }
  Call(called, macro);
}

void OpenWorkbook::RunAutoClose() const {
  const Reference<css::script::XLibraryContainer> libraries(
      Reference<css::beans::XPropertySet>(model_, UNO_QUERY_THROW)->getPropertyValue("BasicLibraries"),
      UNO_QUERY_THROW);
  const OUString library = OwnLibrary(libraries);
  const Reference<XScriptProvider> scripts =
      Reference<css::script::provider::XScriptProviderSupplier>(model_, UNO_QUERY_THROW)->getScriptProvider();
  const Reference<css::container::XNameContainer> modules(libraries->getByName(library), UNO_QUERY_THROW);
  for (const OUString& module : modules->getElementNames()) {
    Reference<XScript> macro;
    try {
      macro = FindScript(scripts, library + "." + module + ".Auto_Close", "document");
    } catch (const css::uno::Exception&) {
      continue;  // it has none
    }
    Call(macro, ToUtf8(FromUno(module)) + ".Auto_Close");
  }
}

void OpenWorkbook::Call(const Reference<XScript>& called, const std::string& macro) const {
  const Any outcome = Caller(context_).Call(called);

  Sequence<Any> error;
  if (!(outcome >>= error)) {
    throw std::runtime_error("the macro " + macro + " was ended by an End statement or by quitting Excel");
  }
  if (error.getLength() != 3) return;
  throw AutomationError(FromAny(error[0]).ToInt32(), FromAny(error[1]).ToText(), FromAny(error[2]).ToText());
}

void OpenWorkbook::PrintToPdf(const std::string& path) const {
  Reference<css::frame::XStorable>(model_, UNO_QUERY_THROW)
      ->storeToURL(UrlOf(path), SequenceOf({Property("FilterName", Any(OUString("calc_pdf_Export")))}));
}

}  // namespace qva::calc
