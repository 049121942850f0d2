#include "platform/commandbars/CommandBarControls.h"

#include "platform/commandbars/CommandBarControl.h"
#include "platform/text.h"

namespace qva::commandbars {
namespace {

std::int32_t NumberOr(std::int32_t otherwise, const Value& number) {
  return number.Is(Value::Type::Missing) ? otherwise : number.ToInt32();
}

}  // namespace

ClassBuilder CommandBarControls::Describe() {
  return ClassBuilder(u"CommandBarControls", "The controls of a command bar")
      .Get<&CommandBarControls::Count>(u"Count")
      .Get<&CommandBarControls::Item>(u"Item", {{u"Index"}})
      .Method<&CommandBarControls::Add>(u"Add", {Optional(u"Type"), Optional(u"Id"), Optional(u"Parameter"),
                                                 Optional(u"Before"), Optional(u"Temporary")})
      .Default(u"Item");
}

std::int32_t CommandBarControls::Count() {
  RequireAlive(*bar_);
  return static_cast<std::int32_t>(bar_->controls.size());
}

ObjectPtr CommandBarControls::Item(const Value& index) {
  RequireAlive(*bar_);
  if (index.Is(Value::Type::Text)) {
    const std::u16string wanted = ReplaceAll(index.ToText(), u"&", u"");
    for (const auto& control : bar_->controls) {
      if (EqualIgnoringCase(ReplaceAll(control->caption, u"&", u""), wanted)) {
        return ObjectOf<CommandBarControl>(application_, control);
      }
    }
    throw InvalidOfficeCall();
  }
  const std::int32_t number = index.ToInt32();
  if (number < 1 || number > Count()) throw InvalidOfficeCall();
  return ObjectOf<CommandBarControl>(application_, bar_->controls[static_cast<std::size_t>(number) - 1]);
}

ObjectPtr CommandBarControls::Add(const Value& type, const Value& id, const Value& parameter,
                                  const Value& before, bool temporary) {
  const std::int32_t end = Count() + 1;
  if ((bar_->protection & msoBarNoCustomize) != 0) throw OfficeRefusal(u"Add", u"CommandBarControls");
  const std::int32_t position = NumberOr(end, before);
  if (position < 1 || position > end) throw InvalidOfficeCall();
  const auto control = AddControl(bar_, static_cast<std::size_t>(position) - 1,
                                  NumberOr(msoControlButton, type), NumberOr(1, id));
  try {
    control->temporary = temporary;
    if (!parameter.Is(Value::Type::Missing)) control->parameter = parameter.ToText();
    const ObjectPtr result = ObjectOf<CommandBarControl>(application_, control);
    Changed(*application_);
    return result;
  } catch (...) {
    std::erase(bar_->controls, control);
    throw;
  }
}

}  // namespace qva::commandbars
