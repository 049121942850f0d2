#include "platform/calc/UnoValue.h"

#include <rtl/uuid.h>
#include <com/sun/star/bridge/oleautomation/Currency.hpp>
#include <com/sun/star/bridge/oleautomation/Date.hpp>
#include <com/sun/star/bridge/oleautomation/Decimal.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/lang/XUnoTunnel.hpp>
#include <com/sun/star/script/ArrayWrapper.hpp>
#include <com/sun/star/script/Converter.hpp>
#include <com/sun/star/script/NativeObjectWrapper.hpp>
#include <limits>

#include "platform/calc/DocumentModule.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"

namespace qva::calc {
namespace {

using css::uno::TypeClass;
using css::uno::XInterface;

struct Installed {
  Reference<css::uno::XComponentContext> context;
  PublishFunction publish = nullptr;
};

Installed& TheInstalled() {
  // Never destroyed: at the end of the process LibreOffice's services are gone before us.
  static Installed& installed = *new Installed;
  return installed;
}

/// What our tunnels answer to and no other one does.
const Sequence<sal_Int8>& CarrierIdentifier() {
  static const auto& identifier = *[] {
    auto* made = new Sequence<sal_Int8>(16);
    rtl_createUuid(reinterpret_cast<sal_uInt8*>(made->getArray()), nullptr, false);
    return made;
  }();
  return identifier;
}

Value FromInteger(sal_Int64 number) {
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    return static_cast<double>(number);
  }
  return static_cast<std::int32_t>(number);
}

Value FromInterface(const Any& any) {
  const auto& object = *static_cast<const Reference<XInterface>*>(any.getValue());
  if (!object.is()) return ObjectPtr();
  if (const CarriesObject* carrier = CarriesObject::Of(object)) return carrier->Carried();
  return MakeRef<UnoObject>(any);
}

/// An array with bounds from 0 or 1, as the cells of a range travel.
Value FromArrayWrapper(const css::script::ArrayWrapper& wrapper) {
  const Value array = FromAny(wrapper.Array);
  Array moved = array.ToArray();
  for (Array::Dimension& dimension : moved.dimensions) dimension.lower = wrapper.IsZeroIndex ? 0 : 1;
  return moved;
}

Value FromStructure(const Any& any) {
  css::script::ArrayWrapper wrapper;
  if (any >>= wrapper) return FromArrayWrapper(wrapper);
  css::bridge::oleautomation::Date date;
  if (any >>= date) return Date{date.Value};
  css::bridge::oleautomation::Currency currency;
  if (any >>= currency) return Currency{currency.Value};
  css::bridge::oleautomation::Decimal decimal;
  if (any >>= decimal) {
    double number =
        decimal.HighValue * 18446744073709551616.0 + decimal.MiddleValue * 4294967296.0 + decimal.LowValue;
    for (int n = 0; n < decimal.Scale; ++n) number /= 10;
    return decimal.Sign != 0 ? -number : number;
  }
  css::script::NativeObjectWrapper module;
  if (any >>= module) {
    if (const Any document = ObjectBehind(module);
        document.getValueTypeClass() == TypeClass::TypeClass_INTERFACE)
      return FromInterface(document);
  }
  throw AutomationError(kTypeMismatch);
}

Value FromSequence(const Any& any) {
  // A block of cells comes as a sequence of rows, whatever the type of their elements.
  const auto converter = css::script::Converter::create(TheInstalled().context);
  Sequence<Any> rows;
  converter->convertTo(any, cppu::UnoType<Sequence<Any>>::get()) >>= rows;
  const bool is_block = rows.hasElements() && rows[0].getValueTypeClass() == TypeClass::TypeClass_SEQUENCE;
  std::vector<Value> elements;
  if (!is_block) {
    for (const Any& element : rows) elements.push_back(FromAny(element));
    return Array::Of(std::move(elements));
  }
  std::int32_t columns = 0;
  for (const Any& row : rows) {
    Sequence<Any> cells;
    converter->convertTo(row, cppu::UnoType<Sequence<Any>>::get()) >>= cells;
    if (elements.empty()) columns = cells.getLength();
    if (cells.getLength() != columns) throw AutomationError(kTypeMismatch);
    for (const Any& cell : cells) elements.push_back(FromAny(cell));
  }
  return Array{{{0, rows.getLength()}, {0, columns}}, std::move(elements)};
}

Any ToSequence(const Array& array) {
  if (array.dimensions.size() == 1) {
    Sequence<Any> elements(static_cast<sal_Int32>(array.elements.size()));
    Any* out = elements.getArray();
    for (const Value& element : array.elements) *out++ = ToAny(element);
    return Any(elements);
  }
  if (array.dimensions.size() != 2) throw AutomationError(kTypeMismatch);
  Sequence<Sequence<Any>> rows(array.dimensions[0].count);
  auto element = array.elements.begin();
  for (sal_Int32 r = 0; r < rows.getLength(); ++r) {
    Sequence<Any>& row = rows.getArray()[r];
    row.realloc(array.dimensions[1].count);
    Any* cells = row.getArray();
    for (sal_Int32 c = 0; c < row.getLength(); ++c) cells[c] = ToAny(*element++);
  }
  return Any(rows);
}

}  // namespace

const CarriesObject* CarriesObject::Of(const Reference<XInterface>& object) {
  const Reference<css::lang::XUnoTunnel> tunnel(object, UNO_QUERY);
  return tunnel.is() ? reinterpret_cast<const CarriesObject*>(tunnel->getSomething(CarrierIdentifier()))
                     : nullptr;
}

sal_Int64 CarriesObject::Tunnel(const Sequence<sal_Int8>& identifier) const {
  return identifier == CarrierIdentifier() ? reinterpret_cast<sal_Int64>(this) : 0;
}

void InstallConversion(const Reference<css::uno::XComponentContext>& context, PublishFunction publish) {
  TheInstalled() = {context, publish};
}

const Reference<css::uno::XComponentContext>& Context() {
  return TheInstalled().context;
}

Value FromAny(const Any& any) {
  switch (any.getValueTypeClass()) {
    case TypeClass::TypeClass_VOID:
      return {};
    case TypeClass::TypeClass_BOOLEAN:
      return *static_cast<const sal_Bool*>(any.getValue()) != 0;
    case TypeClass::TypeClass_BYTE:
      return static_cast<std::uint8_t>(*static_cast<const sal_Int8*>(any.getValue()));
    case TypeClass::TypeClass_SHORT:
      return *static_cast<const sal_Int16*>(any.getValue());
    case TypeClass::TypeClass_LONG:
    case TypeClass::TypeClass_ENUM:
      return *static_cast<const sal_Int32*>(any.getValue());
    case TypeClass::TypeClass_UNSIGNED_SHORT:
      return static_cast<std::int32_t>(*static_cast<const sal_uInt16*>(any.getValue()));
    case TypeClass::TypeClass_UNSIGNED_LONG:
      return FromInteger(*static_cast<const sal_uInt32*>(any.getValue()));
    case TypeClass::TypeClass_HYPER:
      return FromInteger(*static_cast<const sal_Int64*>(any.getValue()));
    case TypeClass::TypeClass_UNSIGNED_HYPER:
      return static_cast<double>(*static_cast<const sal_uInt64*>(any.getValue()));
    case TypeClass::TypeClass_FLOAT:
      return static_cast<double>(*static_cast<const float*>(any.getValue()));
    case TypeClass::TypeClass_DOUBLE:
      return *static_cast<const double*>(any.getValue());
    case TypeClass::TypeClass_CHAR:
      return std::u16string(1, static_cast<char16_t>(*static_cast<const sal_Unicode*>(any.getValue())));
    case TypeClass::TypeClass_STRING:
      return FromUno(*static_cast<const OUString*>(any.getValue()));
    case TypeClass::TypeClass_INTERFACE:
      return FromInterface(any);
    case TypeClass::TypeClass_SEQUENCE:
      return FromSequence(any);
    case TypeClass::TypeClass_STRUCT:
      return FromStructure(any);
    default:
      throw AutomationError(kTypeMismatch);
  }
}

Any ToAny(const Value& value) {
  switch (value.type()) {
    case Value::Type::Empty:
    case Value::Type::Missing:
    case Value::Type::Error:
      return {};
    case Value::Type::Null:
      return Any(Reference<XInterface>());
    case Value::Type::Boolean:
      return Any(value.As<bool>());
    case Value::Type::Byte:
    case Value::Type::Int16:
      return Any(sal_Int16{value.ToInt16()});
    case Value::Type::Int32:
      return Any(sal_Int32{value.As<std::int32_t>()});
    case Value::Type::Double:
      return Any(value.As<double>());
    case Value::Type::Currency:
      return Any(css::bridge::oleautomation::Currency(value.As<Currency>().scaled));
    case Value::Type::Date:
      return Any(css::bridge::oleautomation::Date(value.As<Date>().serial));
    case Value::Type::Text:
      return Any(ToUno(value.As<std::u16string>()));
    case Value::Type::Array:
      return ToSequence(value.AsArray());
    case Value::Type::Object:
      break;
  }
  const ObjectPtr& object = value.As<ObjectPtr>();
  if (!object) return Any(Reference<XInterface>());
  if (auto* foreign = dynamic_cast<UnoObject*>(object.get())) return foreign->target();
  return Any(TheInstalled().publish(object));
}

}  // namespace qva::calc
