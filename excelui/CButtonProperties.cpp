#include "excelui/CButtonProperties.h"

#include <limits>

namespace qva {

ClassBuilder CButtonProperties::Describe() {
  ClassBuilder builder(u"CButtonProperties", "The buttons of a report toolbar");
  builder.Get<&CButtonProperties::TotalButtons>(u"TotalButtons", {}, "Number of buttons")
      .Method<&CButtonProperties::Add>(u"Add", {{u"i"}}, "Adds buttons")
      .Method<&CButtonProperties::Reset>(u"Reset", {}, "Empties the list");
  AddField<&ButtonEntry::caption>(builder, u"sBCaption", "Caption");
  AddField<&ButtonEntry::tooltip_text>(builder, u"sBTooltipText", "Tooltip");
  AddField<&ButtonEntry::picture>(builder, u"sBPicture", "Shape that gives the face");
  AddField<&ButtonEntry::tag>(builder, u"sBTag", "Tag");
  AddField<&ButtonEntry::on_key>(builder, u"sBOnKey", "Hot key");
  AddField<&ButtonEntry::on_action>(builder, u"sBOnAction", "Macro");
  AddField<&ButtonEntry::id>(builder, u"nBID", "Built-in control");
  AddField<&ButtonEntry::face_id>(builder, u"nBFaceID", "Built-in face");
  AddField<&ButtonEntry::visible>(builder, u"bBVisible", "Visible at first");
  AddField<&ButtonEntry::begin_group>(builder, u"bBGroup", "Separator before the button");
  return builder;
}

void CButtonProperties::Add(std::uint8_t i) {
  const int count = count_ + i;
  if (count > std::numeric_limits<std::uint8_t>::max()) throw AutomationError(kOverflow);
  if (count != 0) buttons_.resize(static_cast<std::size_t>(count));
  count_ = static_cast<std::uint8_t>(count);
}

ButtonEntry& CButtonProperties::Button(std::uint8_t i) {
  if (i < 1 || i > buttons_.size()) throw AutomationError(kSubscriptOutOfRange);
  return buttons_[i - 1u];
}

}  // namespace qva
