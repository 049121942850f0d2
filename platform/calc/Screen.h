// What the user sees around the cells: whether the screen follows, the status bar, a window's title.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Application.ScreenUpdating = …: LibreOffice counts how often the screen was turned off, Excel does not. So
/// a screen that is off is not turned off again, and one that is turned on is on, however often a macro had
/// turned it off. As with LibreOffice's own, all workbooks are meant.
///
/// Excel turns the screen on when a macro ends, LibreOffice does not. So it is turned on when the last of the
/// Applications goes that turned it off, since nobody else would: a screen lock that outlives the connection
/// does not find its Excel any more.
Value SetScreenUpdating(const ObjectPtr& application, const Arguments& arguments);

/// Application.StatusBar: False, since LibreOffice tells no text that a macro put there.
Value StatusBar(const ObjectPtr& application, const Arguments& arguments);

/// Application.StatusBar = …: a status bar that the user has hidden stays so; LibreOffice's own would show
/// it.
Value SetStatusBar(const ObjectPtr& application, const Arguments& arguments);

/// Window.Caption = …: the title that the window has while it shows this workbook. LibreOffice's own would
/// stay for good: its start window, which takes the last workbook's place, would be called like the report.
Value SetCaption(const ObjectPtr& window, const Arguments& arguments);

}  // namespace qva::calc
