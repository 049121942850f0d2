#include "platform/memory/excel/CommandBarControls.h"

#include "platform/memory/excel/CommandBarControl.h"

namespace qva::memory {

const ClassDescription& CommandBarControls::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CommandBarControls", "The controls of a command bar")
          .Get<&CommandBarControls::Count>(u"Count")
          .Get<&CommandBarControls::Item>(u"Item", {{u"Index"}})
          .Method<&CommandBarControls::Add>(
              u"Add", {Optional(u"Type"), Optional(u"Id"), Optional(u"Parameter"), Optional(u"Before"),
                       Optional(u"Temporary")})
          .Default(u"Item");
  return description;
}

std::int32_t CommandBarControls::Count() {
  RequireAlive(*bar_);
  return static_cast<std::int32_t>(bar_->controls.size());
}

ObjectPtr CommandBarControls::Item(std::int32_t index) {
  if (index < 1 || index > Count()) {
    throw AutomationError(kInvalidProcedureCall, u"Microsoft Office",
                          StandardDescription(kInvalidProcedureCall));
  }
  return ObjectOf<CommandBarControl>(application_, bar_->controls[static_cast<std::size_t>(index) - 1]);
}

ObjectPtr CommandBarControls::Add(const Value&, const Value&, const Value& parameter, const Value&,
                                  const Value&) {
  RequireAlive(*bar_);
  const auto control = AddControl(bar_, u"");
  if (!parameter.Is(Value::Type::Missing)) control->parameter = parameter.ToText();
  return ObjectOf<CommandBarControl>(application_, control);
}

}  // namespace qva::memory
