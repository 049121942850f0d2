// The user's program search path.
#pragma once

#include <string>

#include "platform/member_table.h"

namespace qva {

/// Puts the library's folder on the user's search path. Not built yet: RegPath raises 445 (Object doesn't
/// support this action).
class CSetPath : public Described<CSetPath> {
 public:
  static const ClassDescription& Description();

  bool RegPath(std::u16string& PathKey);
};

}  // namespace qva
