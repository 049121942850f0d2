// Which class each kind of control is.
#include "platform/calc/forms/DateField.h"
#include "platform/calc/forms/FormControl.h"
#include "platform/calc/forms/GridView.h"
#include "platform/calc/forms/MonthCalendar.h"
#include "platform/calc/forms/NativeControls.h"
#include "platform/calc/forms/TabStrip.h"

namespace qva::calc {

std::unique_ptr<FormControl> MakeControl(FormWindow& form, const ui::ControlDescription& description) {
  switch (description.kind) {
    case ui::ControlKind::Label:
      return std::make_unique<LabelControl>(form, description);
    case ui::ControlKind::TextBox:
      if (description.read_only) return std::make_unique<NoteControl>(form, description);
      return std::make_unique<TextBoxControl>(form, description);
    case ui::ControlKind::OptionButton:
      return std::make_unique<OptionControl>(form, description);
    case ui::ControlKind::Frame:
      return std::make_unique<FrameControl>(form, description);
    case ui::ControlKind::ComboBox:
      return std::make_unique<ComboBoxControl>(form, description);
    case ui::ControlKind::DatePicker:
      return std::make_unique<DateField>(form, description);
    case ui::ControlKind::MonthView:
      return std::make_unique<MonthCalendar>(form, description);
    case ui::ControlKind::TabControl:
      return std::make_unique<TabStrip>(form, description);
    case ui::ControlKind::Grid:
      return std::make_unique<GridView>(form, description);
    case ui::ControlKind::Button:
      return std::make_unique<ButtonControl>(form, description);
  }
  throw AutomationError(kInternalError);
}

}  // namespace qva::calc
