#include "platform/calc/Screen.h"

#include "platform/calc/SheetDocument.h"
#include "platform/calc/UnoObject.h"

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

Value StatusBar(const ObjectPtr&, const Arguments&) {
  return false;
}

Value SetStatusBar(const ObjectPtr& application, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  if (!Get(application, u"DisplayStatusBar").ToBoolean()) return {};
  return static_cast<UnoObject&>(*application).InvokeOwn(Access::Put, u"StatusBar", arguments);
}

}  // namespace qva::calc
