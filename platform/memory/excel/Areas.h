#pragma once

#include "platform/memory/excel/Range.h"

namespace qva::memory {

/// Range.Areas. A range is one rectangle here, which is its only area. Made anew when it is asked for.
class Areas : public Described<Areas> {
 public:
  explicit Areas(Ref<Range> range) : range_(std::move(range)) {}
  static const ClassDescription& Description();

 private:
  std::int32_t Count();
  /// By position from 1. Raises 9.
  ObjectPtr Item(const Value& index);

  Ref<Range> range_;
};

}  // namespace qva::memory
