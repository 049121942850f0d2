// The wall clock of the system, in the user's time zone.
#pragma once

#include "platform/clock.h"

namespace qva {

class SystemClock : public Clock {
 public:
  Date Now() const override;
  std::chrono::milliseconds Running() const override;
};

}  // namespace qva
