// What makes our windows modal to all of LibreOffice.
#pragma once

#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <rtl/ref.hxx>
#include <vector>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// While this lives, no window of LibreOffice takes the user's input but the active document's own, to which
/// LibreOffice makes its dialogs modal itself, and dialogs that open meanwhile; documents that open meanwhile
/// take none either.
///
/// At the end the document that was the active one is the active one again, and stays so when the focus has
/// come to rest: LibreOffice activates the document whose window gets it, and a window manager gives it to
/// any. To Basic's unqualified Range and Worksheets that would be another workbook in the middle of a macro.
class OthersDisabled {
 public:
  OthersDisabled();
  ~OthersDisabled();
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;

 private:
  class NewWindows;

  /// Disables nothing yet. From its end on the destructor runs, whatever happens.
  explicit OthersDisabled(const Reference<css::frame::XFrame>& frame);

  void Disable(const Reference<css::awt::XWindow2>& window);
  void ActivateDocument() const;
  /// Returns once the document has kept the focus for a while, or nobody gives it any.
  void Settle() const;

  Reference<css::frame::XFrame> frame_;   ///< of the active document; null when there is none
  Reference<css::awt::XWindow2> window_;  ///< its window
  Reference<css::awt::XExtendedToolkit> toolkit_;
  rtl::Reference<NewWindows> new_windows_;
  std::vector<Reference<css::awt::XWindow2>> disabled_;
};

}  // namespace qva::calc
