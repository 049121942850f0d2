#include "period/CRepPeriod.h"

namespace qva {

const ClassDescription& CRepPeriod::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CRepPeriod", "The report period that a workbook keeps in its named cells")
          .Method<&CRepPeriod::Init>(u"Init", {{u"pWorkSheet"}}, "Binds the named cells of the period")
          .Method<&CRepPeriod::Edit>(u"Edit", {}, "Lets the user choose the period; true when confirmed");
  return description;
}

void CRepPeriod::Init(excel::Worksheet) {
  throw AutomationError(kUnsupportedAction);
}
bool CRepPeriod::Edit() {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
