#include "excelui/CExcelState.h"

#include "global/Helpers.h"

namespace qva {

void CExcelState::SaveExcelState() {
  Count(depth_, 1);
}

void CExcelState::RestoreExcelState() {
  if (depth_ > 0) Count(depth_, -1);
}

Value CExcelState::Invoke(Access, std::u16string_view, Arguments&) {
  throw AutomationError(kUnsupportedMember);
}

}  // namespace qva
