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

  /// Stands still, too.
  std::chrono::milliseconds Running() const override { return running_; }
  void Advance(std::chrono::milliseconds time) { running_ += time; }

 private:
  Date now_ = kStart;
  std::chrono::milliseconds running_{0};
};

}  // namespace qva
