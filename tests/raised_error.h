// The error that a step raises.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/error.h"

namespace qva {

/// The error that `step` raises, if it raises one. Exceptions of other kinds pass.
template <class Step>
std::optional<AutomationError> ErrorOf(Step&& step) {
  try {
    step();
    return std::nullopt;
  } catch (const AutomationError& error) {
    return error;
  }
}

/// The number of the error that `step` raises, 0 for none.
template <class Step>
std::int32_t RaisedBy(Step&& step) {
  const auto error = ErrorOf(step);
  return error ? error->number() : 0;
}

}  // namespace qva
