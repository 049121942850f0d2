#include "excelui/CEnvironment.h"

namespace qva {

const ClassDescription& CEnvironment::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CEnvironment", "Puts Excel into the report state or the ordinary state")
          .Method<&CEnvironment::SetDefaultAppState>(
              u"SetDefaultAppState", {Optional(u"bDisplayHorizontalScrollBar")}, "Sets the report state")
          .Method<&CEnvironment::SetDefaultExcelState>(u"SetDefaultExcelState", {},
                                                       "Sets the ordinary state");
  return description;
}

void CEnvironment::SetDefaultAppState(bool) {
  throw AutomationError(kUnsupportedAction);
}
void CEnvironment::SetDefaultExcelState() {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
