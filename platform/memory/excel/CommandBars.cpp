#include "platform/memory/excel/CommandBars.h"

#include "platform/memory/excel/CommandBar.h"
#include "platform/text.h"

namespace qva::memory {

const ClassDescription& CommandBars::Description() {
  static const ClassDescription description = ClassBuilder(u"CommandBars", "The toolbars and menu bars")
                                                  .Get<&CommandBars::Count>(u"Count")
                                                  .Get<&CommandBars::Item>(u"Item", {{u"Index"}})
                                                  .Default(u"Item");
  return description;
}

std::int32_t CommandBars::Count() {
  return static_cast<std::int32_t>(application_->command_bars.size());
}

ObjectPtr CommandBars::Item(const Value& index) {
  const bool is_name = index.Is(Value::Type::Text);
  const std::u16string name = is_name ? index.ToText() : std::u16string();
  const std::int32_t number = is_name ? 0 : index.ToInt32();
  std::int32_t position = 0;
  for (const auto& bar : application_->command_bars) {
    ++position;
    if (is_name ? EqualIgnoringCase(bar->name, name) : position == number) {
      return ObjectOf<CommandBar>(application_, bar);
    }
  }
  throw AutomationError(kInvalidProcedureCall, u"Microsoft Office",
                        StandardDescription(kInvalidProcedureCall));
}

}  // namespace qva::memory
