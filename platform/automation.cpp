#include "platform/automation.h"

namespace qva {
namespace {

Object& Set(const ObjectPtr& object) {
  if (!object) throw AutomationError(kObjectNotSet);
  return *object;
}

}  // namespace

Value Get(const ObjectPtr& object, std::u16string_view member, Arguments arguments) {
  return Set(object).Invoke(Access::Get, member, arguments);
}

void Put(const ObjectPtr& object, std::u16string_view member, Value value) {
  Arguments arguments{std::move(value)};
  Set(object).Invoke(Access::Put, member, arguments);
}

void PutRef(const ObjectPtr& object, std::u16string_view member, Value value) {
  Arguments arguments{std::move(value)};
  Set(object).Invoke(Access::PutRef, member, arguments);
}

Value Call(const ObjectPtr& object, std::u16string_view member, Arguments arguments) {
  return Set(object).Invoke(Access::Call, member, arguments);
}

ObjectPtr GetObject(const ObjectPtr& object, std::u16string_view member, Arguments arguments) {
  return Set(object).Invoke(Access::Get, member, arguments).ToObject();
}

}  // namespace qva
