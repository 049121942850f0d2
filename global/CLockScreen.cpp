#include "global/CLockScreen.h"

#include "global/Globals.h"
#include "platform/excel_constants.h"

namespace qva {

const ClassDescription& CLockScreen::Description() {
  static const ClassDescription& description =
      ClassBuilder(u"CLockScreen", "Freezes the screen for as long as it lives");
  return description;
}

CLockScreen::CLockScreen() {
  const excel::Application application = TheGlobals().application;
  try {
    application.SetScreenUpdating(false);
    application.SetCursor(xlWait);
  } catch (...) {
    // There will be no instance whose release could thaw the screen.
    IgnoreFailures([&] { application.SetScreenUpdating(true); });
    throw;
  }
}

CLockScreen::~CLockScreen() {
  const excel::Application application = TheGlobals().application;
  IgnoreFailures([&] { application.SetScreenUpdating(true); });
  IgnoreFailures([&] { application.SetCursor(xlDefault); });
  IgnoreFailures([&] { application.ResetStatusBar(); });
}

}  // namespace qva
