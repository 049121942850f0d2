#include "platform/commandbars/CommandBarData.h"

#include <algorithm>
#include <utility>

#include "platform/excel_refusals.h"

namespace qva::commandbars {
namespace {

constexpr std::int32_t kUnspecifiedError = -2147467259;  // hexadecimal 80004005 (E_FAIL)
constexpr std::int32_t kEmptyControl = 1;

/// One of Excel's own controls.
struct BuiltInControl {
  std::int32_t id;
  std::int32_t type;
  std::u16string_view caption;
};

/// Those that reports and tests use. The face of a button has the number of the control.
constexpr BuiltInControl kBuiltInControls[] = {
    {3, msoControlButton, u"&Save"},
    {4, msoControlButton, u"&Print..."},
    {18, msoControlButton, u"&New..."},
    {23, msoControlButton, u"&Open..."},
    {109, msoControlButton, u"Print Pre&view"},
    {1728, msoControlComboBox, u"&Font:"},
    {1733, msoControlComboBox, u"&Zoom:"},
    {2520, msoControlButton, u"&New"},
    {2521, msoControlButton, u"&Print"},
    {30002, msoControlPopup, u"&File"},
};

std::int32_t NextInstanceId() {
  static std::int32_t last = 0;
  return ++last;
}

}  // namespace

std::vector<std::shared_ptr<CommandBarData>> BuiltInBars() {
  struct BuiltInBar {
    const char16_t* name;
    std::int32_t first_type;
    std::int32_t first_id;
  };
  std::vector<std::shared_ptr<CommandBarData>> bars;
  for (const BuiltInBar& built_in : {BuiltInBar{u"Worksheet Menu Bar", msoControlPopup, 30002},
                                     BuiltInBar{u"Standard", msoControlButton, 2520},
                                     BuiltInBar{u"Formatting", msoControlComboBox, 1728}}) {
    const auto bar = NewCommandBar(built_in.name);
    bar->built_in = true;
    bar->is_menu_bar = bars.empty();
    bar->visible = true;
    AddControl(bar, 0, built_in.first_type, built_in.first_id);
    bars.push_back(bar);
  }
  return bars;
}

std::shared_ptr<CommandBarData> NewCommandBar(std::u16string name) {
  const auto bar = std::make_shared<CommandBarData>();
  bar->instance_id = NextInstanceId();
  bar->name = std::move(name);
  return bar;
}

void DropTemporaryBars(CommandBarApplication& application) {
  const auto drop = [&](auto& parts) {
    for (const auto& part : parts) part->is_deleted = part->is_deleted || part->temporary;
    std::erase_if(parts, [](const auto& part) { return part->temporary; });
  };
  drop(application.command_bars);
  for (const auto& bar : application.command_bars) drop(bar->controls);
  Changed(application);
}

std::shared_ptr<CommandBarControlData> AddControl(const std::shared_ptr<CommandBarData>& bar,
                                                  std::size_t before, std::int32_t type, std::int32_t id) {
  const auto control = std::make_shared<CommandBarControlData>();
  control->bar = bar;
  control->instance_id = NextInstanceId();
  control->type = type;
  control->id = id;
  if (id == kEmptyControl) {
    const auto types = {msoControlButton, msoControlEdit, msoControlDropdown, msoControlComboBox,
                        msoControlPopup};
    if (std::find(types.begin(), types.end(), type) == types.end()) throw InvalidOfficeCall();
  } else {
    const auto* const found =
        std::find_if(std::begin(kBuiltInControls), std::end(kBuiltInControls),
                     [&](const BuiltInControl& own) { return own.id == id && own.type == type; });
    if (found == std::end(kBuiltInControls)) throw InvalidOfficeCall();
    control->caption = found->caption;
    if (type == msoControlButton) control->face_id = id;
  }
  bar->controls.insert(bar->controls.begin() + static_cast<std::ptrdiff_t>(before), control);
  return control;
}

void RequireAlive(const CommandBarData& bar) {
  if (bar.is_deleted) throw excel::GoneRefusal();
}

void RequireAlive(const CommandBarControlData& control) {
  const auto bar = control.bar.lock();
  if (!bar || bar->is_deleted || control.is_deleted) throw excel::GoneRefusal();
}

AutomationError InvalidOfficeCall() {
  return {kInvalidProcedureCall, u"Microsoft Office", StandardDescription(kInvalidProcedureCall)};
}

AutomationError OfficeRefusal(std::u16string_view member, std::u16string_view object) {
  return {kUnspecifiedError, u"Microsoft Office",
          u"Method '" + std::u16string(member) + u"' of object '" + std::u16string(object) + u"' failed"};
}

}  // namespace qva::commandbars
