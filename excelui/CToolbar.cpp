#include "excelui/CToolbar.h"

namespace qva {

const ClassDescription& CToolbar::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CToolbar", "A report toolbar")
          .Get<&CToolbar::CmdEvent>(u"CmdEvent", {}, "Carries out the commands of the default buttons")
          .PutRef<&CToolbar::SetCmdEvent>(u"CmdEvent", {}, "Carries out the commands of the default buttons")
          .Method<&CToolbar::iComment>(u"iComment", {}, "Index of the comment button")
          .Method<&CToolbar::iFreeze>(u"iFreeze", {}, "Index of the freeze button")
          .Method<&CToolbar::iPrintP>(u"iPrintP", {}, "Index of the print preview button")
          .Method<&CToolbar::iPrint>(u"iPrint", {}, "Index of the print button")
          .Method<&CToolbar::iExcel>(u"iExcel", {}, "Index of the go-to-Excel button")
          .Method<&CToolbar::iHelp>(u"iHelp", {}, "Index of the help button")
          .Method<&CToolbar::VisibleButton>(u"VisibleButton", {{u"Index"}, {u"Visible"}},
                                            "Shows or hides a button")
          .Method<&CToolbar::EnabledButton>(u"EnabledButton", {{u"Index"}, {u"Enabled"}},
                                            "Enables or disables a button")
          .Method<&CToolbar::ButtonFaceID>(u"ButtonFaceID", {{u"Index"}, {u"ID"}}, "Sets a built-in face")
          .Method<&CToolbar::ButtonFace>(u"ButtonFace", {{u"Index"}, {u"Picture"}},
                                         "Sets a face from a picture")
          .Method<&CToolbar::PositinTop>(u"PositinTop", {}, "Moves the bar to the top")
          .Method<&CToolbar::Refresh>(u"Refresh", {}, "Binds the hot keys again")
          .Method<&CToolbar::ButtonToolTipText>(u"ButtonToolTipText", {{u"Index"}, {u"sText"}},
                                                "Sets a tooltip")
          .Put<&CToolbar::SetVisibleToolbar>(u"VisibleToolbar", {}, "Whether the bar is shown")
          .Get<&CToolbar::VisibleToolbar>(u"VisibleToolbar", {}, "Whether the bar is shown")
          .Get<&CToolbar::Caption>(u"Caption", {}, "Name of the bar")
          .Put<&CToolbar::SetCaption>(u"Caption", {}, "Name of the bar")
          .Method<&CToolbar::SetAction>(u"SetAction", {{u"nButton"}, {u"sRunMacros"}},
                                        "Sets the macro of a button")
          .Method<&CToolbar::SetHotKey>(u"SetHotKey", {{u"nButton"}, {u"sOnKey"}},
                                        "Sets the hot key of a button")
          .Get<&CToolbar::ToolbarID>(u"ToolbarID", {}, "Excel's index of the bar")
          .Get<&CToolbar::TotalButtons>(u"TotalButtons", {}, "Number of buttons on the bar")
          .Get<&CToolbar::IDCollection>(u"IDCollection", {}, "Id of the toolbar in its collection")
          .Put<&CToolbar::SetIDCollection>(u"IDCollection", {}, "Id of the toolbar in its collection")
          .Method<&CToolbar::Init>(u"Init", {{u"wb_Setings"}, {u"ws_Setings"}},
                                   "Builds the bar from a settings sheet");
  return description;
}

std::int32_t CToolbar::iComment() {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CToolbar::iFreeze() {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CToolbar::iPrintP() {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CToolbar::iPrint() {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CToolbar::iExcel() {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CToolbar::iHelp() {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::VisibleButton(std::uint8_t, bool) {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::EnabledButton(std::uint8_t, bool) {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::ButtonFaceID(std::uint8_t, std::int32_t) {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::ButtonFace(std::uint8_t, ObjectPtr) {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::PositinTop() {
  throw AutomationError(kUnsupportedAction);
}
void CToolbar::Refresh() {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::ButtonToolTipText(std::uint8_t, std::u16string) {
  throw AutomationError(kUnsupportedAction);
}
void CToolbar::SetVisibleToolbar(bool) {
  throw AutomationError(kUnsupportedAction);
}
bool CToolbar::VisibleToolbar() {
  throw AutomationError(kUnsupportedAction);
}
std::u16string CToolbar::Caption() const {
  throw AutomationError(kUnsupportedAction);
}
void CToolbar::SetCaption(std::u16string) {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::SetAction(std::uint8_t, std::u16string&) {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::SetHotKey(std::uint8_t, std::u16string) {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CToolbar::ToolbarID() const {
  throw AutomationError(kUnsupportedAction);
}
std::uint8_t CToolbar::TotalButtons() const {
  throw AutomationError(kUnsupportedAction);
}
void CToolbar::Init(excel::Workbook, excel::Worksheet) {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
