// Which class is which kind of control.
#include "platform/windows/WideText.h"
#include "platform/windows/forms/ButtonControls.h"
#include "platform/windows/forms/DateControls.h"
#include "platform/windows/forms/FieldControls.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/GridControl.h"
#include "platform/windows/forms/NativeList.h"

namespace qva::windows {
namespace {

/// The grid as a control of a form.
class NativeGrid : public NativeControl, public GridControl {
 public:
  NativeGrid(FormWindow& form, const ui::ControlDescription& description)
      : NativeControl(form, description),
        GridControl(form.window(), Id(), description.name, form.scale(),
                    [&form](std::exception_ptr failure) { form.Fail(std::move(failure)); }) {
    Adopt(GridControl::window());
    // What the grid is called is what its page is called.
    if (page() && !form.description().pages.empty()) {
      SetWindowTextW(GridControl::window(),
                     WideText(form.description().pages[static_cast<std::size_t>(*page())]).c_str());
    }
  }
  std::u16string Name() const override { return NativeControl::Name(); }
  bool Enabled() const override { return NativeControl::Enabled(); }
  void SetEnabled(bool enabled) override { NativeControl::SetEnabled(enabled); }
  void SetFocus() override { NativeControl::SetFocus(); }
  void Dress(HFONT font, UiScale scale) override {
    GridControl::SetFont(font);
    GridControl::Rescale(scale);
  }
};

}  // namespace

std::unique_ptr<NativeControl> MakeControl(FormWindow& form, const ui::ControlDescription& description) {
  switch (description.kind) {
    case ui::ControlKind::Label:
      return std::make_unique<NativeLabel>(form, description);
    case ui::ControlKind::TextBox:
      return std::make_unique<NativeTextBox>(form, description);
    case ui::ControlKind::OptionButton:
      return std::make_unique<NativeOptionButton>(form, description);
    case ui::ControlKind::Frame:
      return std::make_unique<NativeFrame>(form, description);
    case ui::ControlKind::ComboBox:
      return std::make_unique<NativeComboBox>(form, description);
    case ui::ControlKind::DatePicker:
      return std::make_unique<NativeDatePicker>(form, description);
    case ui::ControlKind::MonthView:
      return std::make_unique<NativeMonthView>(form, description);
    case ui::ControlKind::TabControl:
      return std::make_unique<NativeTabControl>(form, description);
    case ui::ControlKind::Grid:
      if (description.read_only) return std::make_unique<NativeList>(form, description);
      return std::make_unique<NativeGrid>(form, description);
    case ui::ControlKind::Button:
      return std::make_unique<NativeButton>(form, description);
  }
  throw AutomationError(kInternalError);
}

}  // namespace qva::windows
