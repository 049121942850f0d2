#include "server/calc/PublishedObject.h"

#include <com/sun/star/bridge/oleautomation/NamedArgument.hpp>
#include <com/sun/star/script/ArrayWrapper.hpp>
#include <cppuhelper/weakref.hxx>
#include <exception>
#include <rtl/ref.hxx>
#include <unordered_map>

#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/toolbars/DocumentBars.h"
#include "platform/member_table.h"
#include "platform/text.h"
#include "server/calc/BasicError.h"

namespace qva::calc {
namespace {

using css::uno::XInterface;

/// The UNO objects that are alive, by the object that they publish.
std::unordered_map<Object*, css::uno::WeakReference<XInterface>>& Published() {
  static auto& published = *new std::unordered_map<Object*, css::uno::WeakReference<XInterface>>;
  return published;
}

const Parameter* ParameterAt(const Member* member, std::size_t i) {
  return member && i < member->parameters.size() ? &member->parameters[i] : nullptr;
}

const Parameter* ParameterNamed(const Member* member, std::u16string_view name) {
  if (!member) return nullptr;
  for (const Parameter& parameter : member->parameters) {
    if (EqualIgnoringCase(parameter.name, name)) return &parameter;
  }
  return nullptr;
}

/// Basic passes an omitted argument, an unset Variant and an Empty alike: as nothing at all.
Value FromArgument(const Any& any, const Parameter* parameter) {
  if (any.hasValue() || !parameter) return FromAny(any);
  if (parameter->optional) return Missing{};
  if (parameter->type == ParameterType::Object) {
    return parameter->is_error ? ErrObjectForMacro() : ObjectPtr();
  }
  return {};
}

std::span<const Any> Span(const Sequence<Any>& arguments) {
  return {arguments.getConstArray(), static_cast<std::size_t>(arguments.getLength())};
}

/// Whether Basic is to take a name for a property. Those with parameters go as methods: for a property, Basic
/// would drop the parameters.
bool IsProperty(const ClassDescription* table, std::u16string_view name) {
  if (!table) return false;
  for (const Member& member : table->members()) {
    if (!EqualIgnoringCase(member.name, name)) continue;
    const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
    return member.kind != MemberKind::Method && member.parameters.size() == (is_put ? 1u : 0u);
  }
  return false;
}

/// LibreOffice's bars have to know whose workbook an application is, before that is closed.
void Notice(const Value& argument) {
  if (argument.Is(Value::Type::Object)) DocumentBars::Notice(argument.As<ObjectPtr>());
}

/// A result as Basic takes it: a block becomes an array of two dimensions in LibreOffice's wrapper alone;
/// bare, it would become an array of arrays.
Any ToMacro(const Value& result) {
  const Any any = ToAny(result);
  if (result.type() != Value::Type::Array || result.AsArray().dimensions.size() != 2) return any;
  css::script::ArrayWrapper wrapper;
  wrapper.IsZeroIndex = result.AsArray().dimensions.front().lower == 0;
  wrapper.Array = any;
  return Any(wrapper);
}

}  // namespace

Reference<XInterface> PublishedObject::Of(const ObjectPtr& object) {
  css::uno::WeakReference<XInterface>& known = Published()[object.get()];
  Reference<XInterface> published = known;
  if (!published.is()) {
    published.set(static_cast<cppu::OWeakObject*>(new PublishedObject(object)));
    known = published;
  }
  return published;
}

PublishedObject::~PublishedObject() {
  // A successor may stand in the map already, when the object was published anew while we were dying.
  const auto found = Published().find(object_.get());
  if (found != Published().end() && !Reference<XInterface>(found->second).is()) Published().erase(found);
}

// Basic reports a number of its own for a name that is neither a property nor a method. Everything that is no
// property is claimed as a method, so that Basic asks us and the macro gets automation's own error 438.
sal_Bool PublishedObject::hasMethod(const OUString&) {
  return true;
}

// Without memory nothing is a property, and what Basic calls instead tells why it cannot be done.
sal_Bool PublishedObject::hasProperty(const OUString& name) {
  bool has_property = false;
  IgnoreFailures([&] { has_property = IsProperty(object_->MemberTable(), FromUno(name)); });
  return has_property;
}

Any PublishedObject::getValue(const OUString& name) {
  Sequence<sal_Int16> changed;
  Sequence<Any> values;
  return Perform(Access::Get, name, {}, changed, values);
}

void PublishedObject::setValue(const OUString& name, const Any& value) {
  Sequence<sal_Int16> changed;
  Sequence<Any> values;
  Perform(Access::Put, name, {&value, 1}, changed, values);
}

Any PublishedObject::invoke(const OUString& name, const Sequence<Any>& arguments,
                            Sequence<sal_Int16>& changed, Sequence<Any>& values) {
  return Perform(Access::Call, name, Span(arguments), changed, values);
}

Any PublishedObject::invokeGetProperty(const OUString& name, const Sequence<Any>& arguments,
                                       Sequence<sal_Int16>& changed, Sequence<Any>& values) {
  return Perform(Access::Get, name, Span(arguments), changed, values);
}

Any PublishedObject::invokePutProperty(const OUString& name, const Sequence<Any>& arguments,
                                       Sequence<sal_Int16>& changed, Sequence<Any>& values) {
  return Perform(Access::Put, name, Span(arguments), changed, values);
}

Any PublishedObject::Perform(Access access, const OUString& name, Passed arguments,
                             Sequence<sal_Int16>& changed, Sequence<Any>& values) {
  const rtl::Reference<PublishedObject> self(this);
  try {
    return PerformLogged(access, FromUno(name), arguments, changed, values);
  } catch (...) {
    RaiseInMacro(CaughtError());
  }
  return {};
}

Any PublishedObject::PerformLogged(Access access, const std::u16string& name, Passed arguments,
                                   Sequence<sal_Int16>& changed, Sequence<Any>& values) {
  LoggedCall logged;
  // Basic does not tell `Set x.P = y` from `x.P = y`: an object goes to the property that takes references.
  const ClassDescription* table = object_->MemberTable();
  const bool is_object =
      !arguments.empty() && arguments.back().getValueTypeClass() == css::uno::TypeClass_INTERFACE;
  if (access == Access::Put && is_object && table && table->Find(Access::PutRef, name)) {
    access = Access::PutRef;
  }
  logged.Begins(*object_, access, name);
  try {
    return PerformUnguarded(logged, access, name, arguments, changed, values);
  } catch (...) {
    logged.Failed();
    throw;
  }
}

Any PublishedObject::PerformUnguarded(LoggedCall& logged, Access access, const std::u16string& name,
                                      Passed arguments, Sequence<sal_Int16>& changed, Sequence<Any>& values) {
  const ClassDescription* table = object_->MemberTable();
  const Member* member = table ? table->Find(access, name) : nullptr;
  Arguments converted;
  std::vector<sal_Int16> named_positions;  // in the caller's arguments
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    css::bridge::oleautomation::NamedArgument named;
    if (arguments[i] >>= named) {
      const std::u16string parameter = FromUno(named.Name);
      converted.Named(parameter, FromArgument(named.Value, ParameterNamed(member, parameter)));
      named_positions.push_back(static_cast<sal_Int16>(i));
    } else {
      converted.positional.push_back(FromArgument(arguments[i], ParameterAt(member, i)));
    }
  }

  for (const Value& value : converted.positional) Notice(value);
  for (const NamedArgument& argument : converted.named) Notice(argument.value);

  logged.Takes(converted.positional, converted.named);
  const Arguments before = converted;
  Value result;
  std::exception_ptr failure;
  try {
    result = object_->Invoke(access, name, converted);
    logged.Returned(result);
  } catch (...) {
    failure = std::current_exception();
  }
  // What the member did to the caller's variables before it failed is visible, as in a direct call.
  std::vector<sal_Int16> positions;
  std::vector<Any> results;
  const auto store_back = [&](sal_Int16 position, const Value& old_value, const Value& value) {
    if (value == old_value) return;
    // Basic takes the results for those of the first parameters, whatever the positions say; so it gets what
    // it gave for all in front of the one that changed.
    for (auto i = static_cast<sal_Int16>(positions.size()); i < position; ++i) {
      css::bridge::oleautomation::NamedArgument named;
      positions.push_back(i);
      results.push_back((arguments[i] >>= named) ? named.Value : arguments[i]);
    }
    positions.push_back(position);
    results.push_back(ToAny(value));
  };
  const auto store_all_back = [&] {
    for (std::size_t i = 0; i < converted.positional.size(); ++i) {
      store_back(static_cast<sal_Int16>(i), before.positional[i], converted.positional[i]);
    }
    for (std::size_t i = 0; i < converted.named.size(); ++i) {
      store_back(named_positions[i], before.named[i].value, converted.named[i].value);
    }
    changed = Sequence<sal_Int16>(positions.data(), static_cast<sal_Int32>(positions.size()));
    values = Sequence<Any>(results.data(), static_cast<sal_Int32>(results.size()));
  };
  if (failure) {
    IgnoreFailures(store_all_back);
    std::rethrow_exception(failure);
  }
  store_all_back();
  return ToMacro(result);
}

}  // namespace qva::calc
