// The two fixed states of Excel.
#pragma once

#include "platform/member_table.h"

namespace qva {

/// Puts Excel into the report state or into its ordinary state. Neither is built yet: both members raise 445
/// (Object doesn't support this action).
class CEnvironment : public Described<CEnvironment> {
 public:
  static const ClassDescription& Description();

  void SetDefaultAppState(bool bDisplayHorizontalScrollBar);
  void SetDefaultExcelState();
};

}  // namespace qva
