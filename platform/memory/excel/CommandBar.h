#pragma once

#include <string>

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// A toolbar or menu bar. Every member raises kObjectGone once the bar was deleted.
class CommandBar : public ModelObject<CommandBar, CommandBarData> {
 public:
  using ModelObject::ModelObject;
  static const ClassDescription& Description();

 private:
  std::u16string Name();
  std::int32_t Index();
  /// A disabled bar is not visible, and showing it raises the automation error 80004005; once enabled again
  /// it is what it was.
  bool Visible();
  void SetVisible(bool visible);
  bool BuiltIn();
  ObjectPtr Controls();
  /// Raises the automation error 80004005 for one of Excel's own bars.
  void Delete();
};

}  // namespace qva::memory
