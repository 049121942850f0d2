// The commands behind the default buttons of a report toolbar.
#pragma once

#include <cstdint>
#include <string>

#include "excelui/CDefaultButtons.h"
#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Carries out help, comment indicators and freeze panes. None of them is built yet: each member raises 445
/// (Object doesn't support this action).
class CCommandsEvent : public Described<CCommandsEvent> {
 public:
  static const ClassDescription& Description();

  void cmdHelp(std::u16string& sHelpFile, std::int32_t& iHelpContextID);
  void cmdComment();
  void cmdFreeze(excel::Range rnStart, std::int16_t& ScrollRow);
  void Init(ObjectPtr pCmdBar, Ref<CDefaultButtons> pDefButton);
};

}  // namespace qva
