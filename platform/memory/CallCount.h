// Counts calls: the measure of an operation's cost.
#pragma once

#include "platform/memory/CallObserver.h"

namespace qva {

class CallCount : public CallObserver {
 public:
  void Starting(const HostCall&) override { ++calls_; }

  /// Calls since the start or the last Reset: invocations and creations, failed ones included.
  long calls() const { return calls_; }
  void Reset() { calls_ = 0; }

 private:
  long calls_ = 0;
};

}  // namespace qva
