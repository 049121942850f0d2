#include "platform/commandbars/CommandBars.h"

#include "platform/commandbars/CommandBar.h"
#include "platform/text.h"

namespace qva::commandbars {

ClassBuilder CommandBars::Describe() {
  return ClassBuilder(u"CommandBars", "The toolbars and menu bars")
      .Get<&CommandBars::Count>(u"Count")
      .Get<&CommandBars::Item>(u"Item", {{u"Index"}})
      .Method<&CommandBars::Add>(u"Add", {Optional(u"Name"), Optional(u"Position", std::int32_t{msoBarTop}),
                                          Optional(u"MenuBar"), Optional(u"Temporary")})
      .Default(u"Item");
}

std::int32_t CommandBars::Count() {
  return static_cast<std::int32_t>(application_->command_bars.size());
}

ObjectPtr CommandBars::Item(const Value& index) {
  if (index.Is(Value::Type::Text)) {
    const auto bar = Find(index.ToText());
    if (!bar) throw InvalidOfficeCall();
    return ObjectOf<CommandBar>(application_, bar);
  }
  const std::int32_t number = index.ToInt32();
  if (number < 1 || number > Count()) throw InvalidOfficeCall();
  return ObjectOf<CommandBar>(application_, application_->command_bars[static_cast<std::size_t>(number) - 1]);
}

ObjectPtr CommandBars::Add(const Value& name, std::int32_t position, bool menu_bar, bool temporary) {
  const auto bar = NewCommandBar({});
  if (name.Is(Value::Type::Missing)) {
    int number = 1;
    while (Find(u"Custom " + NumberText(number))) ++number;
    bar->name = u"Custom " + NumberText(number);
  } else {
    bar->name = name.ToText();
    if (Find(bar->name)) throw InvalidOfficeCall();
  }
  bar->position = position;
  bar->is_menu_bar = menu_bar;
  bar->temporary = temporary;
  const ObjectPtr result = ObjectOf<CommandBar>(application_, bar);
  application_->command_bars.push_back(bar);
  try {
    Changed(*application_);
  } catch (...) {
    std::erase(application_->command_bars, bar);
    throw;
  }
  return result;
}

std::shared_ptr<CommandBarData> CommandBars::Find(std::u16string_view name) const {
  for (const auto& bar : application_->command_bars) {
    if (EqualIgnoringCase(bar->name, name)) return bar;
  }
  return nullptr;
}

}  // namespace qva::commandbars
