#include "platform/commandbars/CommandBar.h"

#include <algorithm>

#include "platform/commandbars/CommandBarControl.h"
#include "platform/commandbars/CommandBarControls.h"
#include "platform/text.h"

namespace qva::commandbars {
namespace {

constexpr std::u16string_view kBarClass = u"CommandBar";

bool IsGiven(const Value& criterion) {
  return !criterion.Is(Value::Type::Missing);
}

}  // namespace

ClassBuilder CommandBar::Describe() {
  ClassBuilder builder(std::u16string_view(kBarClass), "A toolbar or menu bar");
  builder.Property<&CommandBar::Name, &CommandBar::SetName>(u"Name");
  builder.Get<&CommandBar::Index>(u"Index");
  builder.Property<&CommandBar::Visible, &CommandBar::SetVisible>(u"Visible");
  AddProperty<&CommandBarData::enabled>(builder, u"Enabled");
  AddProperty<&CommandBarData::protection>(builder, u"Protection");
  builder.Property<&CommandBar::Position, &CommandBar::SetPosition>(u"Position");
  builder.Get<&CommandBar::BuiltIn>(u"BuiltIn").Get<&CommandBar::Type>(u"Type");
  builder.Get<&CommandBar::Controls>(u"Controls");
  builder.Method<&CommandBar::FindControl>(
      u"FindControl", {Optional(u"Type"), Optional(u"Id"), Optional(u"Tag"), Optional(u"Visible")});
  builder.Method<&CommandBar::Delete>(u"Delete");
  return std::move(builder).Default(u"Name");
}

std::u16string CommandBar::Name() {
  RequireAlive(*data());
  return data()->name;
}

void CommandBar::SetName(const std::u16string& name) {
  RequireAlive(*data());
  if (data()->built_in) throw OfficeRefusal(u"Name", kBarClass);
  for (const auto& bar : application()->command_bars) {
    if (bar != data() && EqualIgnoringCase(bar->name, name)) throw InvalidOfficeCall();
  }
  data()->name = name;
  Changed(*application());
}

std::int32_t CommandBar::Index() {
  RequireAlive(*data());
  const auto& bars = application()->command_bars;
  return static_cast<std::int32_t>(std::find(bars.begin(), bars.end(), data()) - bars.begin()) + 1;
}

bool CommandBar::Visible() {
  RequireAlive(*data());
  return data()->enabled && data()->visible;
}

void CommandBar::SetVisible(bool visible) {
  RequireAlive(*data());
  const bool is_protected = (data()->protection & msoBarNoChangeVisible) != 0 && visible != data()->visible;
  if (is_protected || (visible && !data()->enabled)) throw OfficeRefusal(u"Visible", kBarClass);
  data()->visible = visible;
  Changed(*application());
}

std::int32_t CommandBar::Position() {
  RequireAlive(*data());
  return data()->position;
}

void CommandBar::SetPosition(std::int32_t position) {
  RequireAlive(*data());
  if (position < msoBarLeft || position > msoBarFloating) throw InvalidOfficeCall();
  if ((data()->protection & msoBarNoMove) != 0) throw OfficeRefusal(u"Position", kBarClass);
  data()->position = position;
  Changed(*application());
}

bool CommandBar::BuiltIn() {
  RequireAlive(*data());
  return data()->built_in;
}

std::int32_t CommandBar::Type() {
  RequireAlive(*data());
  return data()->is_menu_bar ? 1 : 0;
}

ObjectPtr CommandBar::Controls() {
  RequireAlive(*data());
  return MakeRef<CommandBarControls>(application(), data());
}

ObjectPtr CommandBar::FindControl(const Value& type, const Value& id, const Value& tag, bool visible) {
  RequireAlive(*data());
  for (const auto& control : data()->controls) {
    if (IsGiven(type) && control->type != type.ToInt32()) continue;
    if (IsGiven(id) && control->id != id.ToInt32()) continue;
    if (IsGiven(tag) && control->tag != tag.ToText()) continue;
    if (visible && !control->visible) continue;
    return ObjectOf<CommandBarControl>(application(), control);
  }
  return {};
}

void CommandBar::Delete() {
  RequireAlive(*data());
  if (data()->built_in) throw OfficeRefusal(u"Delete", kBarClass);
  data()->is_deleted = true;
  std::erase(application()->command_bars, data());
  Changed(*application());
}

}  // namespace qva::commandbars
