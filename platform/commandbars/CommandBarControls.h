#pragma once

#include <memory>

#include "platform/commandbars/CommandBarData.h"
#include "platform/member_table.h"

namespace qva::commandbars {

/// CommandBar.Controls. Made anew when it is asked for. Every member raises kObjectGone once the bar was
/// deleted.
class CommandBarControls : public Described<CommandBarControls> {
 public:
  CommandBarControls(std::shared_ptr<CommandBarApplication> application, std::shared_ptr<CommandBarData> bar)
      : application_(std::move(application)), bar_(std::move(bar)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count();
  /// By position from 1, or by caption in any letter case and without regard to "&". Raises 5 (Invalid
  /// procedure call) when there is none.
  ObjectPtr Item(const Value& index);
  /// A new control: an empty button when nothing is said, at the end unless in front of position `before`.
  /// Raises 5 when Excel has no such control or the bar no such position, and the automation error 80004005
  /// while the bar may not be customised.
  ObjectPtr Add(const Value& type, const Value& id, const Value& parameter, const Value& before,
                bool temporary);

  std::shared_ptr<CommandBarApplication> application_;
  std::shared_ptr<CommandBarData> bar_;
};

}  // namespace qva::commandbars
