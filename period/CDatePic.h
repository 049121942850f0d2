// The date picker.
#pragma once

#include "platform/member_table.h"

namespace qva {

/// Lets the user pick one date from a month calendar.
class CDatePic : public Described<CDatePic> {
 public:
  static const ClassDescription& Description();

  /// Shows the calendar on `Selectdate`, on today for the zero date (30 December 1899). True when the user
  /// confirmed a date, which is then in `Selectdate`: with a double-click on a day or with Enter. False when
  /// the user left the window; `Selectdate` then holds the date shown at first. Raises 380 for a date that no
  /// calendar shows (before 1753), 400 while a picker is shown already, and what the platform raises when it
  /// cannot show windows.
  bool Show(Date& Selectdate);
};

}  // namespace qva
