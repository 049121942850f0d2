#pragma once

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// A button or box of a command bar. Its properties are the fields of CommandBarControlData.
class CommandBarControl : public ModelObject<CommandBarControl, CommandBarControlData> {
 public:
  using ModelObject::ModelObject;
  static const ClassDescription& Description();
};

}  // namespace qva::memory
