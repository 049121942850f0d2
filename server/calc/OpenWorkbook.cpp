#include "server/calc/OpenWorkbook.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProviderSupplier.hpp>
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

const OUString kRunModule("QVA_VarnholtRun");

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

}  // namespace

OpenWorkbook::OpenWorkbook(const Reference<css::uno::XComponentContext>& context, const std::string& path) {
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
  modules->insertByName(kRunModule,
                        Any(ToUno(FromUtf8("Option VBASupport 1\n"
                                           "Function Run()\n"
                                           "  On Error GoTo Failed\n"
                                           "  Err.Clear\n"
                                           "  " +
                                           procedure +
                                           "\n"
                                           "  Run = Array()\n"
                                           "  Exit Function\n"
                                           "Failed:\n"
                                           "  Run = Array(Err.Number, Err.Source, Err.Description)\n"
                                           "End Function\n"))));
  const Reference<css::script::provider::XScriptProviderSupplier> supplier(model_, UNO_QUERY_THROW);
  const auto script = supplier->getScriptProvider()->getScript(
      "vnd.sun.star.script:" + library_name + "." + kRunModule + ".Run?language=Basic&location=document");
  Any outcome;
  try {
    Sequence<sal_Int16> changed;
    Sequence<Any> values;
    outcome = script->invoke({}, changed, values);
  } catch (const css::uno::Exception&) {
    modules->removeByName(kRunModule);
    throw;
  }
  modules->removeByName(kRunModule);

  Sequence<Any> error;
  if (!(outcome >>= error)) {
    throw std::runtime_error("the macro " + macro +
                             " does not compile, or it was ended by an End statement or by quitting Excel");
  }
  if (error.getLength() != 3) return;
  throw AutomationError(FromAny(error[0]).ToInt32(), FromAny(error[1]).ToText(), FromAny(error[2]).ToText());
}

void OpenWorkbook::PrintToPdf(const std::string& path) const {
  Reference<css::frame::XStorable>(model_, UNO_QUERY_THROW)
      ->storeToURL(UrlOf(path), SequenceOf({Property("FilterName", Any(OUString("calc_pdf_Export")))}));
}

}  // namespace qva::calc
