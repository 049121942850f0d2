// LibreOffice's event loop and its screen.
#pragma once

#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <functional>

#include "platform/calc/Uno.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {

/// LibreOffice's toolkit. Raises UNO's exceptions when there is none.
Reference<css::awt::XToolkit> Toolkit();

/// Does something as the next event of LibreOffice's loop, with its lock held. What it raises is lost. Raises
/// UNO's exceptions when LibreOffice is ending.
void Post(std::function<void()> action, const Reference<css::uno::XComponentContext>& context = Context());

/// Has LibreOffice handle the events that wait, and paint what is to be painted, with a short pause before: a
/// user's clicks among them. Call it again until what is waited for has come. Raises UNO's exceptions when
/// LibreOffice is ending.
void HandleEvents();

/// The frame of the document that is the active one; null when there is none.
Reference<css::frame::XFrame> CurrentFrame();

/// The window of the document that the user works in; null when there is none.
Reference<css::awt::XWindowPeer> DocumentWindow();

/// Whether a user can see LibreOffice's windows: there is a document, and it is on a screen.
bool IsOnScreen();

}  // namespace qva::calc
