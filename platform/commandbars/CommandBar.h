#pragma once

#include <string>

#include "platform/commandbars/CommandBarData.h"
#include "platform/commandbars/model_object.h"

namespace qva::commandbars {

/// A toolbar or menu bar. Every member raises kObjectGone once the bar was deleted, and the automation error
/// 80004005 for what its protection does not allow.
class CommandBar : public ModelObject<CommandBar, CommandBarData, CommandBarApplication> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

 private:
  std::u16string Name();
  /// Raises 80004005 for one of Excel's own bars, and 5 for the name of another bar.
  void SetName(const std::u16string& name);
  std::int32_t Index();
  /// A disabled bar is not visible, and showing it raises 80004005; once enabled again it is what it was.
  bool Visible();
  void SetVisible(bool visible);
  std::int32_t Position();
  void SetPosition(std::int32_t position);
  bool BuiltIn();
  /// 0 for a toolbar, 1 for a menu bar.
  std::int32_t Type();
  ObjectPtr Controls();
  /// The first control that fits all criteria which are given; Nothing when there is none.
  ObjectPtr FindControl(const Value& type, const Value& id, const Value& tag, bool visible);
  /// Raises 80004005 for one of Excel's own bars.
  void Delete();
};

}  // namespace qva::commandbars
