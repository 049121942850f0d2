#include "platform/memory/excel/CommandBar.h"

#include <algorithm>

namespace qva::memory {
namespace {

constexpr std::int32_t kUnspecifiedError = -2147467259;  // hexadecimal 80004005 (E_FAIL)

}  // namespace

const ClassDescription& CommandBar::Description() {
  static const ClassDescription description = [] {
    ClassBuilder builder(u"CommandBar", "A toolbar or menu bar");
    builder.Get<&CommandBar::Name>(u"Name").Get<&CommandBar::Index>(u"Index");
    builder.Get<&CommandBar::Visible>(u"Visible").Put<&CommandBar::SetVisible>(u"Visible");
    AddProperty<&CommandBarData::enabled>(builder, u"Enabled");
    return ClassDescription(std::move(builder).Default(u"Name"));
  }();
  return description;
}

std::u16string CommandBar::Name() {
  return data()->name;
}

std::int32_t CommandBar::Index() {
  const auto& bars = application()->command_bars;
  return static_cast<std::int32_t>(std::find(bars.begin(), bars.end(), data()) - bars.begin()) + 1;
}

bool CommandBar::Visible() {
  return data()->enabled && data()->visible;
}

void CommandBar::SetVisible(bool visible) {
  if (visible && !data()->enabled) {
    throw AutomationError(kUnspecifiedError, u"Microsoft Office",
                          u"Method 'Visible' of object 'CommandBar' failed");
  }
  data()->visible = visible;
}

}  // namespace qva::memory
