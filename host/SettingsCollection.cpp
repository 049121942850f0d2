#include "host/SettingsCollection.h"

#include <algorithm>

#include "host/HostError.h"
#include "platform/text.h"

namespace qva::embedded {
ClassBuilder SettingsItem::Describe() {
  return ClassBuilder(u"SettingsItem", "One named setting")
      .Get<&SettingsItem::Name>(u"Name", {}, "The name it was added under")
      .Get<&SettingsItem::Type>(u"Type", {}, "The host's own type code")
      .Get<&SettingsItem::Value>(u"Value", {}, "The value or object")
      .Put<&SettingsItem::SetValue>(u"Value")
      .PutRef<&SettingsItem::SetObject>(u"Value")
      .Default(u"Value");
}

void SettingsItem::SetValue(qva::Value value) {
  value_ = value.Is(qva::Value::Type::Object) ? Get(value.ToObject(), u"") : std::move(value);
}

ClassBuilder SettingsCollection::Describe() {
  return ClassBuilder(u"SettingsCollection", "Named settings")
      .Method<&SettingsCollection::Add>(u"Add", {{u"Name"}, {u"Type"}, Optional(u"Value")}, "Adds a setting")
      .Get<&SettingsCollection::Item>(u"Item", {{u"Index"}}, "The setting of a name or number")
      .Get<&SettingsCollection::Count>(u"Count", {}, "The number of settings")
      .Default(u"Item");
}

void SettingsCollection::Add(std::u16string name, std::int32_t type_code, Value value) {
  if (name.empty()) {
    throw HostError(Failure::WrongParameters, kCommonLibrary, u"SettingsCollection.Add needs a name");
  }
  if (Find(name)) {
    throw AutomationError(kKeyIsTaken, std::u16string(kCommonLibrary),
                          u"The settings collection has an item \"" + name + u"\" already");
  }
  if (value.Is(Value::Type::Missing)) value = {};
  items_.push_back(MakeRef<SettingsItem>(std::move(name), type_code, std::move(value)));
}

Ref<SettingsItem> SettingsCollection::Item(Value index) const {
  if (index.Is(Value::Type::Text)) {
    if (const Ref<SettingsItem>* item = Find(index.As<std::u16string>())) return *item;
  } else {
    const std::int32_t number = index.ToInt32();
    if (number >= 1 && number <= Count()) return items_[static_cast<std::size_t>(number) - 1];
  }
  throw AutomationError(kSubscriptOutOfRange, std::u16string(kCommonLibrary),
                        u"The settings collection has no item " + DescribeValue(index));
}

const Ref<SettingsItem>* SettingsCollection::Find(std::u16string_view name) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const auto& item) { return EqualIgnoringCase(item->Name(), name); });
  return found == items_.end() ? nullptr : &*found;
}

}  // namespace qva::embedded
