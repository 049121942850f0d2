// A clock that each look at it puts forward: time passes without calls.
#pragma once

#include "platform/forwarding.h"

namespace qva {

class TickingClock : public ForwardingClock {
 public:
  TickingClock(Clock& target, std::chrono::milliseconds tick) : ForwardingClock(target), tick_(tick) {}

  std::chrono::milliseconds Running() const override {
    passed_ += tick_;
    return ForwardingClock::Running() + passed_;
  }

 private:
  std::chrono::milliseconds tick_;
  mutable std::chrono::milliseconds passed_{0};
};

}  // namespace qva
