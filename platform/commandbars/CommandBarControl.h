#pragma once

#include <string>

#include "platform/commandbars/CommandBarData.h"
#include "platform/commandbars/model_object.h"

namespace qva::commandbars {

/// A button or box of a command bar. Its plain properties are the fields of CommandBarControlData. Every
/// member raises kObjectGone once the control or its bar was deleted; what buttons alone have raises 438 for
/// any other control.
class CommandBarControl
    : public ModelObject<CommandBarControl, CommandBarControlData, CommandBarApplication> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

 private:
  /// The control, which must be a button.
  CommandBarControlData& Button();

  bool BuiltIn();
  std::int32_t Type();
  std::int32_t Id();
  /// The position on the bar, from 1.
  std::int32_t Index();
  /// The caption where no text of its own was set.
  std::u16string ToolTipText();
  void SetToolTipText(const std::u16string& text);

  std::int32_t Style();
  void SetStyle(std::int32_t style);
  /// One of Excel's faces; 0 for none and for a pasted picture.
  std::int32_t FaceId();
  void SetFaceId(std::int32_t id);
  /// Takes the picture on the clipboard as the face. Raises 80004005 when there is none.
  void PasteFace();
  /// An MsoButtonState. Excel itself decides about its own buttons': setting it raises 80004005.
  std::int32_t State();
  void SetState(std::int32_t state);

  /// Does what a click does: runs the macro unless the control is hidden, disabled or without one.
  void Execute();
  /// Raises 80004005 while the bar may not be customised.
  void Delete(const Value& temporary);
};

}  // namespace qva::commandbars
