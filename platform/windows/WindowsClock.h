// The user's wall clock on Windows.
#pragma once

#include "platform/clock.h"

namespace qva::windows {

class WindowsClock : public Clock {
 public:
  Date Now() const override;
  std::chrono::milliseconds Running() const override;
};

}  // namespace qva::windows
