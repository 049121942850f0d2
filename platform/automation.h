// The automation protocol in use: arguments, short forms for the four kinds of access, and the base of
// façades.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/object.h"
#include "platform/value.h"

namespace qva {

/// An argument that the caller names instead of placing it.
struct NamedArgument {
  std::u16string name;
  Value value;
};

/// The arguments of one invocation. For Put and PutRef the new value is the last positional one.
/// An argument that the member takes by reference holds the member's result when the invocation returns;
/// the caller decides what becomes of it.
struct Arguments {
  std::vector<Value> positional;
  std::vector<NamedArgument> named;

  Arguments() = default;
  Arguments(std::initializer_list<Value> values) : positional(values) {}
  Arguments(std::vector<Value> values) : positional(std::move(values)) {}

  Arguments& Named(std::u16string_view name, Value value) {
    named.push_back({std::u16string(name), std::move(value)});
    return *this;
  }
};

/// Short forms. A null reference raises 91 (Object variable not set), as it does in a macro.
Value Get(const ObjectPtr& object, std::u16string_view member, Arguments arguments = {});
void Put(const ObjectPtr& object, std::u16string_view member, Value value);
void PutRef(const ObjectPtr& object, std::u16string_view member, Value value);
Value Call(const ObjectPtr& object, std::u16string_view member, Arguments arguments = {});
/// A member whose result is an object; a result that is no object raises 13.
ObjectPtr GetObject(const ObjectPtr& object, std::u16string_view member, Arguments arguments = {});

/// Base of the typed façades: a reference to an automation object with one documented method for each member
/// that the library uses. A façade may be empty ("Nothing"); using a member then raises 91.
class Facade {
 public:
  Facade() = default;
  explicit Facade(ObjectPtr object) : object_(std::move(object)) {}

  const ObjectPtr& object() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 protected:
  Value Get(std::u16string_view member, Arguments arguments = {}) const {
    return qva::Get(object_, member, std::move(arguments));
  }
  ObjectPtr GetObject(std::u16string_view member, Arguments arguments = {}) const {
    return qva::GetObject(object_, member, std::move(arguments));
  }
  void Put(std::u16string_view member, Value value) const { qva::Put(object_, member, std::move(value)); }
  void PutRef(std::u16string_view member, Value value) const {
    qva::PutRef(object_, member, std::move(value));
  }
  Value Call(std::u16string_view member, Arguments arguments = {}) const {
    return qva::Call(object_, member, std::move(arguments));
  }

 private:
  ObjectPtr object_;
};

}  // namespace qva
