// The report period of a workbook.
#pragma once

#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Lets the user choose the report period that a workbook keeps in its named cells. Not built yet: both
/// members raise 445 (Object doesn't support this action).
class CRepPeriod : public Described<CRepPeriod> {
 public:
  static const ClassDescription& Description();

  void Init(excel::Worksheet pWorkSheet);
  bool Edit();
};

}  // namespace qva
