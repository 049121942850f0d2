#include "excelui/CDefaultButtons.h"

namespace qva {

const ClassDescription& CDefaultButtons::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CDefaultButtons", "The default buttons of a report toolbar")
          .Method<&CDefaultButtons::AddButtons>(u"AddButtons", {}, "Adds the default buttons")
          .Get<&CDefaultButtons::cmdIndexComment>(u"cmdIndexComment", {}, "Position of the button: comments")
          .Get<&CDefaultButtons::cmdIndexFreeze>(u"cmdIndexFreeze", {},
                                                 "Position of the button: freeze panes")
          .Get<&CDefaultButtons::cmdIndexPrintP>(u"cmdIndexPrintP", {},
                                                 "Position of the button: print preview")
          .Get<&CDefaultButtons::cmdIndexPrint>(u"cmdIndexPrint", {}, "Position of the button: print")
          .Get<&CDefaultButtons::cmdIndexExcel>(u"cmdIndexExcel", {}, "Position of the button: go to Excel")
          .Get<&CDefaultButtons::cmdIndexHelp>(u"cmdIndexHelp", {}, "Position of the button: help")
          .Method<&CDefaultButtons::Init>(u"Init", {{u"pwsSeting"}, {u"pCmdBar"}, {u"pBProperties"}},
                                          "Takes the settings sheet, the bar and its list of buttons");
  return description;
}

void CDefaultButtons::AddButtons() {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CDefaultButtons::cmdIndexComment() const {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CDefaultButtons::cmdIndexFreeze() const {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CDefaultButtons::cmdIndexPrintP() const {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CDefaultButtons::cmdIndexPrint() const {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CDefaultButtons::cmdIndexExcel() const {
  throw AutomationError(kUnsupportedAction);
}
std::int32_t CDefaultButtons::cmdIndexHelp() const {
  throw AutomationError(kUnsupportedAction);
}
void CDefaultButtons::Init(excel::Worksheet, ObjectPtr, Ref<CButtonProperties>) {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
