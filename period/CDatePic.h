// The date picker.
#pragma once

#include "platform/member_table.h"

namespace qva {

/// Lets the user pick one date from a month calendar. Not built yet: Show raises 445 (Object doesn't support
/// this action).
class CDatePic : public Described<CDatePic> {
 public:
  static const ClassDescription& Description();

  bool Show(Date& Selectdate);
};

}  // namespace qva
