#include "platform/calc/UnoObject.h"

#include <cmath>
#include <com/sun/star/beans/MethodConcept.hpp>
#include <com/sun/star/beans/PropertyConcept.hpp>
#include <com/sun/star/beans/XExactName.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/theIntrospection.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/reflection/XIdlMethod.hpp>
#include <com/sun/star/script/XDefaultMethod.hpp>
#include <com/sun/star/script/XDefaultProperty.hpp>
#include <cppuhelper/exc_hlp.hxx>

#include "platform/calc/CallGuard.h"
#include "platform/calc/MemberOverrides.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/date.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

// What Basic may reach: everything but what LibreOffice itself calls dangerous, such as queryInterface.
constexpr sal_Int32 kMethods = css::beans::MethodConcept::ALL - css::beans::MethodConcept::DANGEROUS;
constexpr sal_Int32 kProperties = css::beans::PropertyConcept::ALL - css::beans::PropertyConcept::DANGEROUS;

/// A value for a member of LibreOffice's. Some take whole numbers only as short as Basic's own literals are
/// (Range.Offset its columns, for one); all take such numbers for longer ones.
Any ToArgument(const Value& value) {
  if (value.Is(Value::Type::Int32)) {
    const std::int32_t number = value.As<std::int32_t>();
    if (number >= INT16_MIN && number <= INT16_MAX) return Any(static_cast<sal_Int16>(number));
  }
  return ToAny(value);
}

/// A new value for a property of LibreOffice's. Cells take neither dates nor amounts, alone or in arrays:
/// some versions refuse them, others pass over them without a word. Dates they read in this notation whatever
/// the locale, and then show as dates.
Value ForCells(const Value& value) {
  if (value.Is(Value::Type::Currency)) return value.ToDouble();
  if (value.Is(Value::Type::Date)) {
    const Date date = value.ToDate();
    const bool is_day = std::floor(date.serial) == date.serial;
    return FormatByWindowsPattern(date, is_day ? u"yyyy-MM-dd" : u"yyyy-MM-dd HH:mm:ss");
  }
  if (!value.Is(Value::Type::Array)) return value;
  Array array = value.AsArray();
  for (Value& element : array.elements) element = ForCells(element);
  return array;
}

/// The arguments in the order and number of the method's parameters.
Sequence<Any> AlignArguments(css::reflection::XIdlMethod& method, const Arguments& arguments) {
  const Sequence<css::reflection::ParamInfo> parameters = method.getParameterInfos();
  const sal_Int32 count = parameters.getLength();
  Sequence<Any> aligned(count);
  Any* out = aligned.getArray();
  if (arguments.positional.size() > static_cast<std::size_t>(count))
    throw AutomationError(kWrongArgumentCount);
  for (std::size_t i = 0; i < arguments.positional.size(); ++i) out[i] = ToArgument(arguments.positional[i]);
  for (const NamedArgument& argument : arguments.named) {
    sal_Int32 i = 0;
    while (i < count && !EqualIgnoringCase(FromUno(parameters[i].aName), argument.name)) ++i;
    if (i == count) throw AutomationError(kNamedArgumentNotFound);
    out[i] = ToArgument(argument.value);
  }
  return aligned;
}

}  // namespace

Value UnoObject::Invoke(Access access, std::u16string_view member, Arguments& arguments) {
  const ObjectPtr self(this);
  try {
    const CallGuard guard(*this, access, member);
    if (const MemberOverride stand_in = FindOverride(*this, access, member)) {
      return stand_in(self, arguments);
    }
    Value result = InvokeUnguarded(access, member, arguments);
    const bool is_read = access == Access::Get || access == Access::Call;
    return is_read ? Complete(self, member, std::move(result)) : result;
  } catch (const css::uno::Exception&) {
    throw ErrorOf(cppu::getCaughtException());
  }
}

Value UnoObject::InvokeOwn(Access access, std::u16string_view member, const Arguments& arguments) {
  try {
    return InvokeUnguarded(access, member, arguments);
  } catch (const css::uno::Exception&) {
    throw ErrorOf(cppu::getCaughtException());
  }
}

Value UnoObject::InvokeUnguarded(Access access, std::u16string_view member, const Arguments& arguments) {
  const std::u16string wanted = member.empty() ? DefaultMember() : std::u16string(member);
  if (wanted.empty()) throw AutomationError(kUnsupportedMember);
  OUString name = ToUno(wanted);
  if (const Reference<css::beans::XExactName> names{&Introspection(), UNO_QUERY}; names.is()) {
    if (const OUString exact = names->getExactName(name); !exact.isEmpty()) name = exact;
  }
  if (access == Access::Get || access == Access::Call) return Read(name, arguments);
  Write(name, arguments);
  return {};
}

Value UnoObject::Read(const OUString& name, const Arguments& arguments) {
  if (HasMethod(name)) {
    const auto method = Introspection().getMethod(name, kMethods);
    Sequence<Any> aligned = AlignArguments(*method, arguments);
    return FromAny(method->invoke(target_, aligned));
  }
  if (!HasProperty(name)) throw AutomationError(kUnsupportedMember);
  const Reference<css::beans::XPropertySet> properties(
      Introspection().queryAdapter(cppu::UnoType<css::beans::XPropertySet>::get()), UNO_QUERY_THROW);
  const Value value = FromAny(properties->getPropertyValue(name));
  if (arguments.positional.empty() && arguments.named.empty()) return value;
  // Arguments to a plain property belong to the default member of the collection that it gives.
  return Call(value.ToObject(), u"", arguments);
}

void UnoObject::Write(const OUString& name, const Arguments& arguments) {
  if (!HasProperty(name)) throw AutomationError(kUnsupportedMember);
  if (arguments.positional.size() != 1 || !arguments.named.empty())
    throw AutomationError(kWrongArgumentCount);
  const Reference<css::beans::XPropertySet> properties(
      Introspection().queryAdapter(cppu::UnoType<css::beans::XPropertySet>::get()), UNO_QUERY_THROW);
  properties->setPropertyValue(name, ToArgument(ForCells(arguments.positional[0])));
}

bool UnoObject::HasMethod(const OUString& name) {
  return Introspection().hasMethod(name, kMethods);
}

bool UnoObject::HasProperty(const OUString& name) {
  return Introspection().hasProperty(name, kProperties);
}

css::beans::XIntrospectionAccess& UnoObject::Introspection() {
  if (!introspection_.is()) introspection_ = css::beans::theIntrospection::get(Context())->inspect(target_);
  if (!introspection_.is()) throw AutomationError(kUnsupportedMember);
  return *introspection_;
}

std::u16string UnoObject::DefaultMember() const {
  if (const Reference<css::script::XDefaultProperty> property{target_, UNO_QUERY}; property.is()) {
    return FromUno(property->getDefaultPropertyName());
  }
  if (const Reference<css::script::XDefaultMethod> method{target_, UNO_QUERY}; method.is()) {
    return FromUno(method->getDefaultMethodName());
  }
  return {};
}

const std::u16string& UnoObject::Type() const {
  if (!type_.empty()) return type_;
  const Reference<css::lang::XServiceInfo> info{target_, UNO_QUERY};
  const std::u16string name = info.is() ? FromUno(info->getImplementationName()) : std::u16string();
  // "ScVbaRange" is LibreOffice's name of Excel's Range.
  type_ = name.starts_with(u"ScVba") ? name.substr(5) : name.empty() ? u"Object" : name;
  return type_;
}

}  // namespace qva::calc
