#include "platform/calc/DocumentModule.h"

#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProvider.hpp>
#include <com/sun/star/script/provider/theMasterScriptProviderFactory.hpp>

#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

Any ObjectBehind(const css::script::NativeObjectWrapper& module) {
  // A workbook is no sheet of itself. What has no workbook at all ends in an error, and stays nothing.
  constexpr const char* kFunction =
      "Option VBASupport 1\n"
      "Function Main(Module)\n"
      "  Dim Book As Object\n"
      "  On Error GoTo Done\n"
      "  Set Book = Module.Application.ThisWorkbook\n"
      "  Set Main = Book\n"
      "  Set Main = Book.Worksheets(Module.Name)\n"
      "Done:\n"
      "End Function\n";
  const Reference<css::script::XLibraryContainer> libraries(
      Context()->getServiceManager()->createInstanceWithContext(
          "com.sun.star.script.ApplicationScriptLibraryContainer", Context()),
      css::uno::UNO_QUERY_THROW);
  const OUString library("QVA_VarnholtDocument");
  if (libraries->hasByName(library)) libraries->removeLibrary(library);
  libraries->createLibrary(library)->insertByName("Document", Any(OUString::createFromAscii(kFunction)));
  const auto script = css::script::provider::theMasterScriptProviderFactory::get(Context())
                          ->createScriptProvider(Any(OUString("user")))
                          ->getScript(
                              "vnd.sun.star.script:QVA_VarnholtDocument.Document.Main?language=Basic"
                              "&location=application");
  Sequence<sal_Int16> changed;
  Sequence<Any> values;
  const Any document = script->invoke(SequenceOf({Any(module)}), changed, values);
  libraries->removeLibrary(library);
  return document;
}

}  // namespace qva::calc
