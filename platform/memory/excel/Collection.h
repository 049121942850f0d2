// What Excel's collections have in common.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/memory/excel/Refusals.h"
#include "platform/value.h"

namespace qva::memory {

/// The position from 0 that a number from 1 means in a collection; raises 9 outside of it.
inline std::size_t PositionIn(std::size_t count, const Value& index) {
  const std::int32_t number = index.ToInt32();
  if (number < 1 || static_cast<std::size_t>(number) > count) throw SubscriptRefusal();
  return static_cast<std::size_t>(number) - 1;
}

}  // namespace qva::memory
