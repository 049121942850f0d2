// Lets a chosen call fail.
#pragma once

#include <new>

#include "platform/memory/CallObserver.h"

namespace qva {

class CallFailure : public CallObserver {
 public:
  enum class Repeat { Once, ForEver };
  enum class Kind {
    Error,    ///< the error that was given
    NoMemory  ///< std::bad_alloc, as when there is no memory for the call
  };

  /// Call number `at`, the first being 1, raises `error` and is not made; with ForEver so does every later
  /// one. 0 lets every call through.
  CallFailure(long at, AutomationError error, Repeat repeat = Repeat::Once)
      : at_(at), error_(std::move(error)), repeat_(repeat) {}

  void Starting(const HostCall&) override {
    ++calls_;
    const bool fails = at_ > 0 && (repeat_ == Repeat::Once ? calls_ == at_ : calls_ >= at_);
    if (!fails) return;
    has_failed_ = true;
    if (kind_ == Kind::NoMemory) throw std::bad_alloc();
    throw AutomationError(error_);
  }

  /// True once a call was made to fail. False after an operation: it has fewer calls than `at`.
  bool has_failed() const { return has_failed_; }

  /// Counts anew from 1 towards another call.
  void Reset(long at, Kind kind = Kind::Error) {
    at_ = at;
    kind_ = kind;
    calls_ = 0;
    has_failed_ = false;
  }

 private:
  long at_;
  AutomationError error_;
  Repeat repeat_;
  Kind kind_ = Kind::Error;
  long calls_ = 0;
  bool has_failed_ = false;
};

}  // namespace qva
