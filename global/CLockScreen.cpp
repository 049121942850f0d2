#include "global/CLockScreen.h"

#include "global/Globals.h"
#include "platform/excel_constants.h"

namespace qva {

const ClassDescription& CLockScreen::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CLockScreen", "Freezes the screen for as long as it lives");
  return description;
}

CLockScreen::CLockScreen() {
  const excel::Application application = TheGlobals().application;
  application.SetScreenUpdating(false);
  try {
    application.SetCursor(xlWait);
  } catch (...) {
    // There will be no instance whose release could thaw the screen.
    IgnoreErrors([&] { application.SetScreenUpdating(true); });
    throw;
  }
}

CLockScreen::~CLockScreen() {
  const excel::Application application = TheGlobals().application;
  IgnoreErrors([&] { application.SetScreenUpdating(true); });
  IgnoreErrors([&] { application.SetCursor(xlDefault); });
  IgnoreErrors([&] { application.ResetStatusBar(); });
}

}  // namespace qva
