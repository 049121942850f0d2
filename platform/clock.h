// The user's wall clock, and how time passes.
#pragma once

#include <chrono>

#include "platform/value.h"

namespace qva {

class Clock {
 public:
  virtual ~Clock() = default;

  /// The current local date and time, to the second. Does not fail.
  virtual Date Now() const = 0;

  /// The time since some moment before the library was loaded, which goes on steadily whatever becomes of the
  /// wall clock. Does not fail.
  virtual std::chrono::milliseconds Running() const = 0;
};

}  // namespace qva
