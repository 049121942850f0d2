#include "platform/commandbars/CommandBarControl.h"

#include <algorithm>

namespace qva::commandbars {
namespace {

constexpr std::u16string_view kControlClass = u"CommandBarControl";

}  // namespace

ClassBuilder CommandBarControl::Describe() {
  using Data = CommandBarControlData;
  using Control = CommandBarControl;
  ClassBuilder builder(std::u16string_view(kControlClass), "A button or box of a command bar");
  builder.Get<&Control::BuiltIn>(u"BuiltIn").Get<&Control::Type>(u"Type").Get<&Control::Id>(u"Id");
  builder.Get<&Control::Index>(u"Index");
  AddProperty<&Data::caption>(builder, u"Caption");
  AddProperty<&Data::parameter>(builder, u"Parameter");
  AddProperty<&Data::tag>(builder, u"Tag");
  builder.Property<&Control::ToolTipText, &Control::SetToolTipText>(u"ToolTipText");
  AddProperty<&Data::on_action>(builder, u"OnAction");
  AddProperty<&Data::visible>(builder, u"Visible");
  AddProperty<&Data::enabled>(builder, u"Enabled");
  AddProperty<&Data::begin_group>(builder, u"BeginGroup");
  AddProperty<&Data::width>(builder, u"Width");
  builder.Property<&Control::Style, &Control::SetStyle>(u"Style");
  builder.Property<&Control::FaceId, &Control::SetFaceId>(u"FaceId");
  builder.Method<&Control::PasteFace>(u"PasteFace");
  builder.Property<&Control::State, &Control::SetState>(u"State");
  builder.Method<&Control::Execute>(u"Execute").Method<&Control::Delete>(u"Delete", {Optional(u"Temporary")});
  return std::move(builder).Default(u"Caption");
}

CommandBarControlData& CommandBarControl::Button() {
  RequireAlive(*data());
  if (data()->type != msoControlButton) throw AutomationError(kUnsupportedMember);
  return *data();
}

bool CommandBarControl::BuiltIn() {
  RequireAlive(*data());
  return data()->id != 1;
}

std::int32_t CommandBarControl::Type() {
  RequireAlive(*data());
  return data()->type;
}

std::int32_t CommandBarControl::Id() {
  RequireAlive(*data());
  return data()->id;
}

std::int32_t CommandBarControl::Index() {
  RequireAlive(*data());
  const auto bar = data()->bar.lock();
  return static_cast<std::int32_t>(std::find(bar->controls.begin(), bar->controls.end(), data()) -
                                   bar->controls.begin()) +
         1;
}

std::u16string CommandBarControl::ToolTipText() {
  RequireAlive(*data());
  return data()->tooltip.empty() ? data()->caption : data()->tooltip;
}

void CommandBarControl::SetToolTipText(const std::u16string& text) {
  RequireAlive(*data());
  data()->tooltip = text;
  Changed(*application());
}

std::int32_t CommandBarControl::Style() {
  return Button().style;
}

void CommandBarControl::SetStyle(std::int32_t style) {
  CommandBarControlData& button = Button();
  if (style < msoButtonAutomatic || style > msoButtonIconAndCaption) throw InvalidOfficeCall();
  button.style = style;
  Changed(*application());
}

std::int32_t CommandBarControl::FaceId() {
  return Button().face_id;
}

void CommandBarControl::SetFaceId(std::int32_t id) {
  CommandBarControlData& button = Button();
  if (id < 0) throw InvalidOfficeCall();
  button.face_id = id;
  button.pasted_face.clear();
  Changed(*application());
}

void CommandBarControl::PasteFace() {
  CommandBarControlData& button = Button();
  if (application()->clipboard_picture.empty()) throw OfficeRefusal(u"PasteFace", kControlClass);
  button.pasted_face = application()->clipboard_picture;
  button.face_id = 0;
  Changed(*application());
}

std::int32_t CommandBarControl::State() {
  return Button().state;
}

void CommandBarControl::SetState(std::int32_t state) {
  CommandBarControlData& button = Button();
  if (button.id != 1) throw OfficeRefusal(u"State", kControlClass);
  if (state != msoButtonUp && state != msoButtonDown && state != msoButtonMixed) throw InvalidOfficeCall();
  button.state = state;
  Changed(*application());
}

void CommandBarControl::Execute() {
  RequireAlive(*data());
  if (data()->visible && data()->enabled && !data()->on_action.empty()) {
    application()->RunMacro(data()->on_action);
  }
}

void CommandBarControl::Delete(const Value&) {
  RequireAlive(*data());
  const auto bar = data()->bar.lock();
  if ((bar->protection & msoBarNoCustomize) != 0) throw OfficeRefusal(u"Delete", kControlClass);
  data()->is_deleted = true;
  std::erase(bar->controls, data());
  Changed(*application());
}

}  // namespace qva::commandbars
