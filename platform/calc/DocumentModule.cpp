#include "platform/calc/DocumentModule.h"

#include "platform/calc/OwnModule.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {

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
  const OwnModule own(Context(), OUString::createFromAscii(kFunction));
  return RunScript(own.Find("Main"), SequenceOf({Any(module)}));
}

}  // namespace qva::calc
