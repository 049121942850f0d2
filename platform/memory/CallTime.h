// Lets time pass with the calls.
#pragma once

#include "platform/memory/CallObserver.h"
#include "platform/memory/MemoryClock.h"

namespace qva {

class CallTime : public CallObserver {
 public:
  /// Borrows the clock, which each call advances by what PerCall told: by nothing at first.
  explicit CallTime(MemoryClock& clock) : clock_(clock) {}

  void PerCall(std::chrono::milliseconds time) { time_ = time; }
  void Returned(const HostCall&, const Value&) override { clock_.Advance(time_); }
  void Failed(const HostCall&, const AutomationError&) override { clock_.Advance(time_); }

 private:
  MemoryClock& clock_;
  std::chrono::milliseconds time_{0};
};

}  // namespace qva
