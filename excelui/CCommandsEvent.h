// The commands behind the default buttons of a report toolbar.
#pragma once

#include <cstdint>
#include <string>

#include "excelui/CDefaultButtons.h"
#include "excelui/ConnectedExcel.h"
#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Carries out help, comment indicators and freeze panes. Each raises whatever Excel raises, and 91 (Object
/// variable not set) where it needs the bar before Init. What it switches is that of its own connection, or
/// of the one at Init.
class CCommandsEvent : public Described<CCommandsEvent> {
 public:
  static ClassBuilder Describe();
  CCommandsEvent() = default;
  explicit CCommandsEvent(ConnectedExcel excel) : excel_(std::move(excel)) {}

  /// Shows a topic of a help file; without a file that of the report help beside the library, which the
  /// variable then holds.
  void cmdHelp(std::u16string& sHelpFile, std::int32_t& iHelpContextID);
  /// Hides the comment indicators while their button is pressed, shows them while it is not, and turns it.
  void cmdComment();
  /// Freezes the panes at a cell while their button is not pressed, thaws them while it is, and turns it.
  /// Freezing scrolls to `ScrollRow` first; 0 becomes the row on top of the window, in the variable, too.
  /// A failure leaves screen updating and events turned off, on purpose.
  void cmdFreeze(excel::Range rnStart, std::int16_t& ScrollRow);
  void Init(excel::CommandBar pCmdBar, Ref<CDefaultButtons> pDefButton);

 private:
  /// The bar to call on, which lasts as long as the call: what that sets off in Excel may reach Init.
  excel::CommandBar Bar() const { return bar_; }
  /// The control of one of the default buttons.
  excel::CommandBarControl Control(std::int32_t (CDefaultButtons::*index)() const) const;

  ConnectedExcel excel_;
  excel::CommandBar bar_;
  Ref<CDefaultButtons> default_buttons_;
};

}  // namespace qva
