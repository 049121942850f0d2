// The user's wall clock.
#pragma once

#include "platform/value.h"

namespace qva {

class Clock {
 public:
  virtual ~Clock() = default;

  /// The current local date and time, to the second. Does not fail.
  virtual Date Now() const = 0;
};

}  // namespace qva
