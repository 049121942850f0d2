// Excel's command bars, hot keys and what their buttons need, which LibreOffice's model lacks or has in part.
// MemberOverrides.h is the way to it.
#pragma once

#include "platform/automation.h"

namespace qva::calc {

/// Application.CommandBars: the set of bars of the workbook whose macros run, or one of them.
Value CommandBars(const ObjectPtr& application, const Arguments& arguments);

/// Application.OnKey(Key, Procedure) for that workbook. LibreOffice's own forgets keys only by half.
Value OnKey(const ObjectPtr& application, const Arguments& arguments);

/// Application.DisplayCommentIndicator: the marks of comments in that workbook's window. Comments that are
/// shown in full besides (xlCommentAndIndicator) stay LibreOffice's own affair: the mark alone is switched.
Value DisplayCommentIndicator(const ObjectPtr& application, const Arguments& arguments);
Value SetDisplayCommentIndicator(const ObjectPtr& application, const Arguments& arguments);

/// Window.FreezePanes = …: freezes what is above and left of the active cell, where LibreOffice's own takes
/// the middle of the window.
Value SetFreezePanes(const ObjectPtr& window, const Arguments& arguments);

/// Application.Help(HelpFile, HelpContextID): shows the file with the program that the desktop has for it, or
/// index.html of a folder beside it that has its name without the extension, where there is one;
/// the topic is not looked up. Raises 1004 when there is no such file or no such program.
Value Help(const ObjectPtr& application, const Arguments& arguments);

/// Shape.Copy for a shape that is a picture: it then is what PasteFace of the same workbook's buttons takes.
/// Raises 1004 for any other shape.
Value CopyShape(const ObjectPtr& shape, const Arguments& arguments);

}  // namespace qva::calc
