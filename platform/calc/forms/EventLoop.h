// LibreOffice's event loop and its screen.
#pragma once

#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <functional>

namespace qva::calc {

/// LibreOffice's toolkit. Raises UNO's exceptions when there is none.
css::uno::Reference<css::awt::XToolkit> Toolkit();

/// Does something as the next event of LibreOffice's loop, with its lock held. What it raises is lost.
void Post(std::function<void()> action);

/// The window of the document that the user works in; null when there is none.
css::uno::Reference<css::awt::XWindowPeer> DocumentWindow();

/// Makes the document that is the active one now the active one again at its end. LibreOffice activates the
/// document whose window gets the focus when a dialog goes, which may be any; to Basic's unqualified Range
/// and Worksheets that would be another workbook in the middle of a macro.
class KeepsActiveDocument {
 public:
  KeepsActiveDocument();
  ~KeepsActiveDocument();
  KeepsActiveDocument(const KeepsActiveDocument&) = delete;
  KeepsActiveDocument& operator=(const KeepsActiveDocument&) = delete;

 private:
  css::uno::Reference<css::frame::XFrame> frame_;  ///< null when there is no document
};

/// Whether a user can see LibreOffice's windows: there is a document, and it is on a screen.
bool IsOnScreen();

}  // namespace qva::calc
