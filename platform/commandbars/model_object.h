// The base of automation objects of our own that stand for parts of a model: thin, made on demand over
// shared data.
#pragma once

#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

#include "platform/excel_refusals.h"
#include "platform/member_table.h"

namespace qva {

/// An object T that stands for the part Data of a model, one and the same while it is alive: `ActiveSheet`
/// gives the object that `Sheets(1)` gave. T is made by ObjectOf only. Data has a field `automation`, and
/// functions beside it: `RequireAlive(data)` raises when the part is gone, and `Changed(whole)` is told of
/// each plain property that was set; Whole is what all parts belong to.
///
/// A member of T that gives an object is declared with ObjectPtr as its result: the classes refer to each
/// other in circles, and a member table that names a class of its circle could never be built.
template <class T, class Data, class Whole>
class ModelObject : public Described<T> {
 public:
  ModelObject(std::shared_ptr<Whole> application, std::shared_ptr<Data> data)
      : application_(std::move(application)), data_(std::move(data)) {
    data_->automation = this;
  }
  ~ModelObject() override { data_->automation = nullptr; }

  const std::shared_ptr<Data>& data() const { return data_; }

 protected:
  const std::shared_ptr<Whole>& application() const { return application_; }

  /// Adds a plain property that is a field of the data. With `allowed` values Excel refuses any other one.
  template <auto field, std::int32_t... allowed>
  static void AddProperty(ClassBuilder& builder, std::u16string_view name) {
    builder.Property<&ModelObject::template Read<field>, &ModelObject::template Write<field, allowed...>>(
        name);
  }

 private:
  template <auto field>
  using FieldType = std::remove_cvref_t<decltype(std::declval<Data>().*field)>;

  template <auto field>
  FieldType<field> Read() {
    RequireAlive(*data_);
    return (*data_).*field;
  }

  template <auto field, std::int32_t... allowed>
  void Write(const FieldType<field>& value) {
    if constexpr (sizeof...(allowed) > 0) {
      if (((value != allowed) && ...)) throw excel::Refusal();
    }
    RequireAlive(*data_);
    (*data_).*field = value;
    Changed(*application_);
  }

  std::shared_ptr<Whole> application_;
  std::shared_ptr<Data> data_;
};

/// The object of a part: the one that is alive, or a new one. Nothing for a part that is null.
template <class T, class Data, class Whole>
ObjectPtr ObjectOf(const std::shared_ptr<Whole>& application, const std::shared_ptr<Data>& data) {
  if (!data) return {};
  if (data->automation) return ObjectPtr(data->automation);
  return MakeRef<T>(application, data);
}

}  // namespace qva
