// Member tables: the one description of a class that automation can reach. A table names the members, the
// C++ signature behind each gives types and by-reference flags, and from both follow late-bound calls here
// and what the front doors publish.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/automation.h"

namespace qva {

/// The type of a parameter or result as the caller sees it.
enum class ParameterType { None, Any, Boolean, Byte, Int16, Int32, Double, Currency, Date, Text, Object };

/// What the member gets when an argument is left out, as a table writes it down.
struct DefaultValue {
  enum class Kind { OfType, Empty, Boolean, Number, Text };

  constexpr DefaultValue() = default;
  constexpr DefaultValue(bool value) : kind(Kind::Boolean), number(value) {}
  constexpr DefaultValue(std::int32_t value) : kind(Kind::Number), number(value) {}
  constexpr DefaultValue(const char16_t* value) : kind(Kind::Text), text(value) {}
  static constexpr DefaultValue Empty() {
    DefaultValue result;
    result.kind = Kind::Empty;
    return result;
  }

  /// Of Kind::OfType: Missing for ParameterType::Any, Nothing for an object, otherwise the type's zero.
  Kind kind = Kind::OfType;
  std::int32_t number = 0;
  std::u16string_view text;
};

/// One parameter as a table gives it; the rest comes from the signature. Plain data, so that a table is not
/// code.
struct ParameterEntry {
  std::u16string_view name;
  bool optional = false;
  DefaultValue default_value;
  bool is_error = false;
};

/// A parameter that may be left out.
constexpr ParameterEntry Optional(std::u16string_view name, DefaultValue default_value = {}) {
  return {.name = name, .optional = true, .default_value = default_value};
}

/// A parameter for the macro's own error object, Err.
constexpr ParameterEntry ErrorObject(std::u16string_view name) {
  return {.name = name, .is_error = true};
}

/// One parameter.
struct Parameter {
  std::u16string_view name;
  bool optional = false;
  Value default_value;    ///< of an optional one
  bool is_error = false;  ///< takes Err, which a front door supplies where its language passes nothing for it
  ParameterType type = ParameterType::None;
  bool by_reference = false;
  /// The class of the library that an object must belong to; empty for any automation object.
  std::u16string_view object_class = u"";
};

enum class MemberKind { Method, Get, Put, PutRef };

/// One member. A property that can be read and written is two members of the same name.
struct Member {
  std::u16string_view name;
  MemberKind kind = MemberKind::Method;
  std::vector<Parameter> parameters;  ///< of Put and PutRef the last one is the new value
  ParameterType result = ParameterType::None;
  std::u16string_view result_class = u"";  ///< as Parameter::object_class
  std::string_view help;                   ///< one line for the type library
  /// Calls the member with all its arguments in order, converted from what they hold. By-reference ones hold
  /// their new values afterwards, also when the member raises.
  Value (*invoke)(Object& self, std::span<Value> arguments) = nullptr;
};

/// The members of one class in their published order.
class ClassDescription {
 public:
  ClassDescription(std::u16string_view name, std::string_view help) : name_(name), help_(help) {}
  ClassDescription(ClassDescription&&) = default;

  std::u16string_view name() const { return name_; }
  std::string_view help() const { return help_; }
  const std::vector<Member>& members() const { return members_; }
  std::u16string_view default_member() const { return default_member_; }

  /// The member that answers `access` to `name` in any letter case; null when there is none.
  const Member* Find(Access access, std::u16string_view name) const;
  /// True when any member has the name, in any letter case.
  bool HasName(std::u16string_view name) const;

  /// Late-bound invocation as Object::Invoke describes it.
  Value Invoke(Object& self, Access access, std::u16string_view name, Arguments& arguments) const;

  void Add(Member member);
  void SetDefaultMember(std::u16string_view name) { default_member_ = name; }

 private:
  std::u16string_view name_;
  std::string_view help_;
  std::vector<Member> members_;
  std::unordered_map<std::u16string, std::vector<std::size_t>> by_name_;  // lower-case name → positions
  std::u16string_view default_member_;
};

/// Base of a class with a member table: T has `static ClassBuilder Describe()`, which is called once.
template <class T>
class Described : public Object {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription& description = T::Describe();
    return description;
  }
  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override {
    return Description().Invoke(*this, access, member, arguments);
  }
  std::u16string TypeName() const override { return std::u16string(Description().name()); }
  const ClassDescription* MemberTable() const override { return &Description(); }
};

namespace member_table_detail {

template <class T>
struct IsRef : std::false_type {};
template <class T>
struct IsRef<Ref<T>> : std::true_type {
  using Target = T;
};

/// Everything that a C++ type of a signature means to automation.
template <class T>
struct Marshal {
  static constexpr ParameterType Type() {
    if constexpr (std::is_same_v<T, Value>) {
      return ParameterType::Any;
    } else if constexpr (std::is_same_v<T, bool>) {
      return ParameterType::Boolean;
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
      return ParameterType::Byte;
    } else if constexpr (std::is_same_v<T, std::int16_t>) {
      return ParameterType::Int16;
    } else if constexpr (std::is_same_v<T, std::int32_t>) {
      return ParameterType::Int32;
    } else if constexpr (std::is_same_v<T, double>) {
      return ParameterType::Double;
    } else if constexpr (std::is_same_v<T, Currency>) {
      return ParameterType::Currency;
    } else if constexpr (std::is_same_v<T, Date>) {
      return ParameterType::Date;
    } else if constexpr (std::is_same_v<T, std::u16string>) {
      return ParameterType::Text;
    } else {
      static_assert(IsRef<T>::value || std::derived_from<T, Facade>, "not a type of the automation protocol");
      return ParameterType::Object;
    }
  }

  static std::u16string_view ObjectClass() {
    if constexpr (IsRef<T>::value) {
      using Target = typename IsRef<T>::Target;
      if constexpr (!std::is_same_v<Target, Object>) return Target::Description().name();
    }
    return u"";
  }

  static T From(const Value& value) {
    if constexpr (std::is_same_v<T, Value>) {
      return value;
    } else if constexpr (std::is_same_v<T, bool>) {
      return value.ToBoolean();
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
      return value.ToByte();
    } else if constexpr (std::is_same_v<T, std::int16_t>) {
      return value.ToInt16();
    } else if constexpr (std::is_same_v<T, std::int32_t>) {
      return value.ToInt32();
    } else if constexpr (std::is_same_v<T, double>) {
      return value.ToDouble();
    } else if constexpr (std::is_same_v<T, Currency>) {
      return value.ToCurrency();
    } else if constexpr (std::is_same_v<T, Date>) {
      return value.ToDate();
    } else if constexpr (std::is_same_v<T, std::u16string>) {
      return value.ToText();
    } else if constexpr (std::is_same_v<T, ObjectPtr>) {
      return value.ToObject();
    } else if constexpr (IsRef<T>::value) {
      using Target = typename IsRef<T>::Target;
      const ObjectPtr& object = value.ToObject();
      auto* target = dynamic_cast<Target*>(object.get());
      if (object && !target) throw AutomationError(kTypeMismatch);
      return T(target);
    } else {
      return T(value.ToObject());
    }
  }

  static Value To(const T& value) {
    if constexpr (std::derived_from<T, Facade>) {
      return value.object();
    } else {
      return value;
    }
  }
};

template <class T>
T FromArgument(const Value& value, std::size_t index) {
  try {
    return Marshal<T>::From(value);
  } catch (AutomationError& error) {
    error.OfCall(static_cast<int>(index));
    throw;
  }
}

template <class A>
inline constexpr bool kByReference =
    std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

/// Runs the code of a member, whose errors are its own from now on (AutomationError::OfMember).
Value RunMember(Value (*code)(void* context), void* context);

/// The result of a member's function as a value; Empty for none.
template <class R, class Function, class Values>
Value CallForValue(Function& function, Values& values) {
  auto code = [&]() -> Value {
    if constexpr (std::is_void_v<R>) {
      std::apply(function, values);
      return {};
    } else {
      return Marshal<std::remove_cvref_t<R>>::To(std::apply(function, values));
    }
  };
  return RunMember([](void* context) { return (*static_cast<decltype(code)*>(context))(); }, &code);
}

/// Stores a variable that the member changed; one that it left alone keeps its own type.
template <class A, class T>
void StoreBack(Value& argument, const T& before, const T& after) {
  if constexpr (kByReference<A>) {
    if (Marshal<T>::To(after) != Marshal<T>::To(before)) argument = Marshal<T>::To(after);
  }
}

/// Calls `function(arguments…)` with the arguments converted, and stores by-reference ones back.
template <class R, class... A, class Function, std::size_t... I>
Value CallConverted(Function&& function, std::span<Value> arguments, std::index_sequence<I...>) {
  std::tuple<std::remove_cvref_t<A>...> values{FromArgument<std::remove_cvref_t<A>>(arguments[I], I)...};
  if constexpr ((kByReference<A> || ...)) {
    const auto before = values;
    const auto store_back = [&] {
      (StoreBack<A>(arguments[I], std::get<I>(before), std::get<I>(values)), ...);
    };
    try {
      Value result = CallForValue<R>(function, values);
      store_back();
      return result;
    } catch (...) {
      // What the member did to the caller's variables before it failed is visible, as with a direct call.
      store_back();
      throw;
    }
  } else {
    (void)arguments;  // of a member without any
    return CallForValue<R>(function, values);
  }
}

template <class R>
constexpr ParameterType ResultType() {
  if constexpr (std::is_void_v<R>) {
    return ParameterType::None;
  } else {
    return Marshal<std::remove_cvref_t<R>>::Type();
  }
}

/// A parameter as a signature gives it.
struct SignatureParameter {
  ParameterType type = ParameterType::None;
  bool by_reference = false;
  std::u16string_view (*object_class)() = nullptr;
};

template <class C, class R, class... A>
struct Signature {
  static constexpr std::size_t kCount = sizeof...(A);
  static constexpr ParameterType kResult = ResultType<R>();
  static std::u16string_view ResultClass() {
    if constexpr (kResult == ParameterType::Object) return Marshal<std::remove_cvref_t<R>>::ObjectClass();
    return u"";
  }
  /// What the signature says of each parameter; one more entry, so that the array is never empty.
  static constexpr SignatureParameter kParameters[sizeof...(A) + 1] = {
      {Marshal<std::remove_cvref_t<A>>::Type(), kByReference<A>,
       &Marshal<std::remove_cvref_t<A>>::ObjectClass}...,
      {}};
};

template <auto F>
struct Thunk;

template <class C, class R, class... A, R (C::*F)(A...)>
struct Thunk<F> : Signature<C, R, A...> {
  static Value Invoke(Object& self, std::span<Value> arguments) {
    return CallConverted<R, A...>([&](auto&... values) -> R { return (static_cast<C&>(self).*F)(values...); },
                                  arguments, std::index_sequence_for<A...>{});
  }
};

template <class C, class R, class... A, R (C::*F)(A...) const>
struct Thunk<F> : Signature<C, R, A...> {
  static Value Invoke(Object& self, std::span<Value> arguments) {
    return CallConverted<R, A...>(
        [&](auto&... values) -> R { return (static_cast<const C&>(self).*F)(values...); }, arguments,
        std::index_sequence_for<A...>{});
  }
};

template <auto M>
struct Field;

template <class C, class T, T C::*M>
struct Field<M> {
  static constexpr ParameterType kType = Marshal<T>::Type();
  static Value Get(Object& self, std::span<Value>) { return Marshal<T>::To(static_cast<C&>(self).*M); }
  static Value Put(Object& self, std::span<Value> arguments) {
    static_cast<C&>(self).*M = FromArgument<T>(arguments[0], 0);
    return {};
  }
};

/// All that the compiler knows of a member.
struct MemberCode {
  std::span<const SignatureParameter> parameters;
  ParameterType result = ParameterType::None;
  std::u16string_view (*result_class)() = nullptr;
  Value (*invoke)(Object& self, std::span<Value> arguments) = nullptr;
};

template <auto F>
inline constexpr MemberCode kCodeOf = {.parameters = {Thunk<F>::kParameters, Thunk<F>::kCount},
                                       .result = Thunk<F>::kResult,
                                       .result_class = &Thunk<F>::ResultClass,
                                       .invoke = &Thunk<F>::Invoke};

}  // namespace member_table_detail

/// Builds a member table:
///   ClassBuilder CSetPath::Describe() {
///     return ClassBuilder(u"CSetPath", "The user's search path")
///         .Method<&CSetPath::RegPath>(u"RegPath", {{u"PathKey"}}, "…");
///   }
/// Raises 51 (Internal error) for a member whose table and signature differ in the number of parameters.
class ClassBuilder {
 public:
  using Parameters = std::initializer_list<ParameterEntry>;

  ClassBuilder(std::u16string_view name, std::string_view help) : description_(name, help) {}

  template <auto F>
  ClassBuilder&& Method(std::u16string_view name, Parameters parameters = {}, std::string_view help = "") {
    return Add(name, MemberKind::Method, parameters, help, member_table_detail::kCodeOf<F>);
  }
  template <auto F>
  ClassBuilder&& Get(std::u16string_view name, Parameters parameters = {}, std::string_view help = "") {
    return Add(name, MemberKind::Get, parameters, help, member_table_detail::kCodeOf<F>);
  }
  /// The parameter of the new value is added here.
  template <auto F>
  ClassBuilder&& Put(std::u16string_view name, Parameters parameters = {}, std::string_view help = "") {
    return Add(name, MemberKind::Put, parameters, help, member_table_detail::kCodeOf<F>);
  }
  /// `Set object.Name = …`. The parameter of the new value is added here.
  template <auto F>
  ClassBuilder&& PutRef(std::u16string_view name, Parameters parameters = {}, std::string_view help = "") {
    return Add(name, MemberKind::PutRef, parameters, help, member_table_detail::kCodeOf<F>);
  }
  /// A property that one function reads and another one writes.
  template <auto G, auto P>
  ClassBuilder&& Property(std::u16string_view name, Parameters parameters = {}, std::string_view help = "") {
    return Get<G>(name, parameters, help).template Put<P>(name, parameters, help);
  }
  /// A property that reads and writes a data member.
  template <auto M>
  ClassBuilder&& Property(std::u16string_view name, std::string_view help = "") {
    using F = member_table_detail::Field<M>;
    return AddProperty(name, help, F::kType, &F::Get, &F::Put);
  }
  /// The member that stands for the object where a plain value is wanted.
  ClassBuilder&& Default(std::u16string_view name) {
    description_.SetDefaultMember(name);
    return std::move(*this);
  }

  /// The table, which is never destroyed: at the end of a process objects may outlive everything that could
  /// do it.
  operator const ClassDescription&() && { return *new ClassDescription(std::move(description_)); }

 private:
  using Invoke = Value (*)(Object& self, std::span<Value> arguments);

  ClassBuilder&& Add(std::u16string_view name, MemberKind kind, Parameters parameters, std::string_view help,
                     const member_table_detail::MemberCode& code);
  ClassBuilder&& AddProperty(std::u16string_view name, std::string_view help, ParameterType type, Invoke get,
                             Invoke put);

  ClassDescription description_;
};

}  // namespace qva
