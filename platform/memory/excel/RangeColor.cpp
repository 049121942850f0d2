#include "platform/memory/excel/RangeColor.h"

namespace qva::memory {

ClassBuilder RangeColor::Describe() {
  return ClassBuilder(u"RangeColor", "The colour of cells")
      .Property<&RangeColor::ColorIndex, &RangeColor::SetColorIndex>(u"ColorIndex");
}

Value RangeColor::ColorIndex() {
  return range_->Format(property_);
}

void RangeColor::SetColorIndex(std::int32_t color) {
  constexpr std::int32_t kPalette = 56;
  const std::u16string refusal = u"Unable to set the ColorIndex property";
  if (color == 0) color = none_;
  const bool is_known =
      (color >= 1 && color <= kPalette) || color == xlColorIndexAutomatic || color == xlColorIndexNone;
  if (!is_known) throw Refusal(refusal);
  range_->SetFormat(property_, color, refusal);
}

}  // namespace qva::memory
