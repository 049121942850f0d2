#include "excelui/CButtonProperties.h"

#include <limits>

namespace qva {

const ClassDescription& CButtonProperties::Description() {
  static const ClassDescription& description =
      ClassBuilder(u"CButtonProperties", "The buttons of a report toolbar")
          .Get<&CButtonProperties::TotalButtons>(u"TotalButtons", {}, "Number of buttons")
          .Method<&CButtonProperties::Add>(u"Add", {{u"i"}}, "Adds buttons")
          .Method<&CButtonProperties::Reset>(u"Reset", {}, "Empties the list")
          .Get<&CButtonProperties::Field<&ButtonEntry::caption>>(u"sBCaption", {{u"i"}}, "Caption")
          .Put<&CButtonProperties::SetField<&ButtonEntry::caption>>(u"sBCaption", {{u"i"}}, "Caption")
          .Get<&CButtonProperties::Field<&ButtonEntry::tooltip_text>>(u"sBTooltipText", {{u"i"}}, "Tooltip")
          .Put<&CButtonProperties::SetField<&ButtonEntry::tooltip_text>>(u"sBTooltipText", {{u"i"}},
                                                                         "Tooltip")
          .Get<&CButtonProperties::Field<&ButtonEntry::picture>>(u"sBPicture", {{u"i"}},
                                                                 "Shape that gives the face")
          .Put<&CButtonProperties::SetField<&ButtonEntry::picture>>(u"sBPicture", {{u"i"}},
                                                                    "Shape that gives the face")
          .Get<&CButtonProperties::Field<&ButtonEntry::tag>>(u"sBTag", {{u"i"}}, "Tag")
          .Put<&CButtonProperties::SetField<&ButtonEntry::tag>>(u"sBTag", {{u"i"}}, "Tag")
          .Get<&CButtonProperties::Field<&ButtonEntry::on_key>>(u"sBOnKey", {{u"i"}}, "Hot key")
          .Put<&CButtonProperties::SetField<&ButtonEntry::on_key>>(u"sBOnKey", {{u"i"}}, "Hot key")
          .Get<&CButtonProperties::Field<&ButtonEntry::on_action>>(u"sBOnAction", {{u"i"}}, "Macro")
          .Put<&CButtonProperties::SetField<&ButtonEntry::on_action>>(u"sBOnAction", {{u"i"}}, "Macro")
          .Get<&CButtonProperties::Field<&ButtonEntry::id>>(u"nBID", {{u"i"}}, "Built-in control")
          .Put<&CButtonProperties::SetField<&ButtonEntry::id>>(u"nBID", {{u"i"}}, "Built-in control")
          .Get<&CButtonProperties::Field<&ButtonEntry::face_id>>(u"nBFaceID", {{u"i"}}, "Built-in face")
          .Put<&CButtonProperties::SetField<&ButtonEntry::face_id>>(u"nBFaceID", {{u"i"}}, "Built-in face")
          .Get<&CButtonProperties::Field<&ButtonEntry::visible>>(u"bBVisible", {{u"i"}}, "Visible at first")
          .Put<&CButtonProperties::SetField<&ButtonEntry::visible>>(u"bBVisible", {{u"i"}},
                                                                    "Visible at first")
          .Get<&CButtonProperties::Field<&ButtonEntry::begin_group>>(u"bBGroup", {{u"i"}},
                                                                     "Separator before the button")
          .Put<&CButtonProperties::SetField<&ButtonEntry::begin_group>>(u"bBGroup", {{u"i"}},
                                                                        "Separator before the button");
  return description;
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
