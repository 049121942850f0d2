// One report toolbar.
#pragma once

#include "excelui/CCommandsEvent.h"
#include "platform/member_table.h"

namespace qva {

/// A toolbar made from a workbook's settings sheet. So far it holds its command events only; the members that
/// build and change the bar are to come.
class CToolbar : public Described<CToolbar> {
 public:
  static const ClassDescription& Description();

  /// The object that carries out the commands of the default buttons; Nothing until one is set.
  Ref<CCommandsEvent> CmdEvent() const { return cmd_event_; }
  void SetCmdEvent(Ref<CCommandsEvent> events) { cmd_event_ = std::move(events); }

 private:
  Ref<CCommandsEvent> cmd_event_;
};

}  // namespace qva
