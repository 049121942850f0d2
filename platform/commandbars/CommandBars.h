#pragma once

#include <memory>

#include "platform/commandbars/CommandBarData.h"
#include "platform/member_table.h"

namespace qva::commandbars {

/// Application.CommandBars. Made anew when it is asked for.
class CommandBars : public Described<CommandBars> {
 public:
  explicit CommandBars(std::shared_ptr<CommandBarApplication> application)
      : application_(std::move(application)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count();
  /// By position from 1, or by name in any letter case. Raises 5 (Invalid procedure call) when there is none.
  ObjectPtr Item(const Value& index);
  /// A new bar without controls, enabled but not shown; "Custom <n>" without a name. Raises 5 when there is a
  /// bar of the name. That a menu bar takes the place of Excel's own is not modelled.
  ObjectPtr Add(const Value& name, std::int32_t position, bool menu_bar, bool temporary);

  std::shared_ptr<CommandBarData> Find(std::u16string_view name) const;

  std::shared_ptr<CommandBarApplication> application_;
};

}  // namespace qva::commandbars
