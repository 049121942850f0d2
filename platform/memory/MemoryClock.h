// A clock that stands still until it is told otherwise.
#pragma once

#include "platform/clock.h"

namespace qva {

class MemoryClock : public Clock {
 public:
  /// 12 June 2024, 10:00:00: what the clock shows from the start.
  static constexpr Date kStart{45455 + 10.0 / 24};

  Date Now() const override { return now_; }
  void Set(Date now) { now_ = now; }

 private:
  Date now_ = kStart;
};

}  // namespace qva
