#include "excelui/CCommandsEvent.h"

namespace qva {

const ClassDescription& CCommandsEvent::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CCommandsEvent", "Carries out the commands of the default buttons")
          .Method<&CCommandsEvent::cmdHelp>(u"cmdHelp", {Optional(u"sHelpFile"), Optional(u"iHelpContextID")},
                                            "Shows a help file")
          .Method<&CCommandsEvent::cmdComment>(u"cmdComment", {}, "Switches the comment indicators")
          .Method<&CCommandsEvent::cmdFreeze>(u"cmdFreeze", {{u"rnStart"}, Optional(u"ScrollRow")},
                                              "Freezes the panes above a cell, or thaws them")
          .Method<&CCommandsEvent::Init>(u"Init", {{u"pCmdBar"}, {u"pDefButton"}},
                                         "Takes the bar and its buttons");
  return description;
}

void CCommandsEvent::cmdHelp(std::u16string&, std::int32_t&) {
  throw AutomationError(kUnsupportedAction);
}
void CCommandsEvent::cmdComment() {
  throw AutomationError(kUnsupportedAction);
}
void CCommandsEvent::cmdFreeze(excel::Range, std::int16_t&) {
  throw AutomationError(kUnsupportedAction);
}
void CCommandsEvent::Init(ObjectPtr, Ref<CDefaultButtons>) {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
