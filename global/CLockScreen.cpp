#include "global/CLockScreen.h"

#include "global/Globals.h"
#include "platform/excel_constants.h"

namespace qva {

ClassBuilder CLockScreen::Describe() {
  return ClassBuilder(u"CLockScreen", "Freezes the screen for as long as it lives");
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
