#pragma once

#include <memory>

#include "platform/member_table.h"
#include "platform/memory/excel/ApplicationData.h"

namespace qva::memory {

/// CommandBar.Controls. Made anew when it is asked for.
class CommandBarControls : public Described<CommandBarControls> {
 public:
  CommandBarControls(std::shared_ptr<ApplicationData> application, std::shared_ptr<CommandBarData> bar)
      : application_(std::move(application)), bar_(std::move(bar)) {}
  static const ClassDescription& Description();

 private:
  std::int32_t Count();
  /// By position from 1. Raises 5 (Invalid procedure call) when there is none.
  ObjectPtr Item(std::int32_t index);
  /// A new control at the end, with that parameter. Its type, its id, its place and its life are not
  /// modelled.
  ObjectPtr Add(const Value& type, const Value& id, const Value& parameter, const Value& before,
                const Value& temporary);

  std::shared_ptr<ApplicationData> application_;
  std::shared_ptr<CommandBarData> bar_;
};

}  // namespace qva::memory
