#include "platform/memory/excel/CommandBar.h"

#include <algorithm>

#include "platform/memory/excel/CommandBarControls.h"

namespace qva::memory {
namespace {

constexpr std::int32_t kUnspecifiedError = -2147467259;  // hexadecimal 80004005 (E_FAIL)

AutomationError OfficeRefusal(std::u16string_view member) {
  return {kUnspecifiedError, u"Microsoft Office",
          u"Method '" + std::u16string(member) + u"' of object 'CommandBar' failed"};
}

}  // namespace

const ClassDescription& CommandBar::Description() {
  static const ClassDescription description = [] {
    ClassBuilder builder(u"CommandBar", "A toolbar or menu bar");
    builder.Get<&CommandBar::Name>(u"Name").Get<&CommandBar::Index>(u"Index");
    builder.Get<&CommandBar::Visible>(u"Visible").Put<&CommandBar::SetVisible>(u"Visible");
    AddProperty<&CommandBarData::enabled>(builder, u"Enabled");
    builder.Get<&CommandBar::BuiltIn>(u"BuiltIn").Get<&CommandBar::Controls>(u"Controls");
    builder.Method<&CommandBar::Delete>(u"Delete");
    return ClassDescription(std::move(builder).Default(u"Name"));
  }();
  return description;
}

std::u16string CommandBar::Name() {
  RequireAlive(*data());
  return data()->name;
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
  if (visible && !data()->enabled) throw OfficeRefusal(u"Visible");
  data()->visible = visible;
}

bool CommandBar::BuiltIn() {
  RequireAlive(*data());
  return data()->built_in;
}

ObjectPtr CommandBar::Controls() {
  RequireAlive(*data());
  return MakeRef<CommandBarControls>(application(), data());
}

void CommandBar::Delete() {
  RequireAlive(*data());
  if (data()->built_in) throw OfficeRefusal(u"Delete");
  data()->is_deleted = true;
  std::erase(application()->command_bars, data());
}

}  // namespace qva::memory
