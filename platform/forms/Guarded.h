// What stands between a toolkit - Windows, LibreOffice - and what it calls of the forms.
#pragma once

#include <exception>
#include <functional>

namespace qva {

/// Takes over what was raised where it cannot pass on. Does not raise.
using FailureSink = std::function<void(std::exception_ptr failure)>;

/// Runs what the toolkit called, through which nothing may be raised: what `body` raises goes to `sink`, and
/// the result is 0.
template <class Body, class Sink>
auto Guarded(Body&& body, Sink&& sink) noexcept {
  try {
    return body();
  } catch (...) {
    sink(std::current_exception());
    return decltype(body())();
  }
}

}  // namespace qva
