#pragma once

#include "platform/memory/excel/Range.h"

namespace qva::memory {

/// Range.Font and Range.Interior: the colour of the text or of the ground.
class RangeColor : public Described<RangeColor> {
 public:
  RangeColor(Ref<Range> range, FormatProperty property, std::int32_t none)
      : range_(std::move(range)), property_(property), none_(none) {}
  static ClassBuilder Describe();

 private:
  /// Null when the cells differ.
  Value ColorIndex();
  /// 1 to 56, xlColorIndexAutomatic or xlColorIndexNone; 0 is none for the ground and automatic for the text.
  /// Anything else raises 1004.
  void SetColorIndex(std::int32_t color);

  Ref<Range> range_;
  FormatProperty property_;
  std::int32_t none_;
};

}  // namespace qva::memory
