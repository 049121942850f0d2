// The host's keyed settings collection.
#pragma once

#include <vector>

#include "platform/member_table.h"

namespace qva::embedded {

/// One named setting: a plain value or an object.
class SettingsItem : public Described<SettingsItem> {
 public:
  static ClassBuilder Describe();
  SettingsItem(std::u16string name, std::int32_t type, qva::Value value)
      : name_(std::move(name)), type_(type), value_(std::move(value)) {}

  std::u16string Name() const { return name_; }
  /// The host's own type code, as it was given. It neither checks nor converts the value.
  std::int32_t Type() const { return type_; }
  qva::Value Value() const { return value_; }
  /// Assigns a plain value; of an object its default property, as an assignment without Set does.
  void SetValue(qva::Value value);
  /// Sets an object, which may be Nothing.
  void SetObject(ObjectPtr object) { value_ = std::move(object); }

 private:
  std::u16string name_;
  std::int32_t type_;
  qva::Value value_;
};

/// Settings in the order of their adding, each reached by its name in any letter case or its number from 1.
class SettingsCollection : public Described<SettingsCollection> {
 public:
  static ClassBuilder Describe();

  /// Adds a setting; without a value it is Empty. Raises 457 when the name is taken and
  /// Failure::WrongParameters for an empty name.
  void Add(std::u16string name, std::int32_t type_code, Value value);
  /// The setting of a name (text) or number. Raises 9 when there is none.
  Ref<SettingsItem> Item(Value index) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }

 private:
  const Ref<SettingsItem>* Find(std::u16string_view name) const;

  std::vector<Ref<SettingsItem>> items_;
};

}  // namespace qva::embedded
