#include "period/CDatePic.h"

namespace qva {

const ClassDescription& CDatePic::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CDatePic", "Lets the user pick a date")
          .Method<&CDatePic::Show>(u"Show", {{u"Selectdate"}}, "Shows the calendar; true when confirmed");
  return description;
}

bool CDatePic::Show(Date&) {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
