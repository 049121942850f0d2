#include "platform/calc/Screen.h"

#include "platform/calc/SheetDocument.h"

namespace qva::calc {

Value SetScreenUpdating(const ObjectPtr&, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  const bool on = arguments.positional[0].ToBoolean();
  for (const auto& document : WorkbookDocuments()) {
    if (!on && !document->hasControllersLocked()) document->lockControllers();
    while (on && document->hasControllersLocked()) document->unlockControllers();
  }
  return {};
}

}  // namespace qva::calc
