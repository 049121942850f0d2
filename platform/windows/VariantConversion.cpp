#include "platform/windows/VariantConversion.h"

#include <cmath>
#include <limits>

#include "platform/error.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/DispatchObject.h"
#include "platform/windows/OwnObject.h"
#include "platform/windows/SafeArrayConversion.h"

namespace qva::windows {
namespace {

// References within references and arrays within arrays: more than this is a VARIANT that contains itself.
constexpr int kDeepest = 32;

[[noreturn]] void RaiseTypeMismatch() {
  throw AutomationError(kTypeMismatch);
}

template <class Integer>
Value WholeNumber(Integer number) {
  if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

Value FromDecimal(DECIMAL decimal) {  // a copy, since older headers declare it as changeable
  double number = 0;
  if (FAILED(VarR8FromDec(&decimal, &number))) RaiseTypeMismatch();
  return number;
}

Value FromErrorCode(SCODE code) {
  if (code == DISP_E_PARAMNOTFOUND) return Missing{};
  return ErrorValue{code};
}

template <class T>
const T& As(const void* content) {
  return *static_cast<const T*>(content);
}

/// A value of a type without arrays and references. `content` points to it, wherever it stands: in a VARIANT,
/// in a variable or in an array.
Value FromScalar(VARTYPE type, const void* content) {
  switch (type) {
    case VT_I1:
      return static_cast<std::int16_t>(As<signed char>(content));
    case VT_UI1:
      return std::uint8_t{As<BYTE>(content)};
    case VT_I2:
      return std::int16_t{As<SHORT>(content)};
    case VT_UI2:
      return std::int32_t{As<USHORT>(content)};
    case VT_I4:
    case VT_INT:
      return static_cast<std::int32_t>(As<LONG>(content));
    case VT_UI4:
    case VT_UINT:
      return WholeNumber(As<ULONG>(content));
    case VT_I8:
      return WholeNumber(As<LONGLONG>(content));
    case VT_UI8:
      return WholeNumber(As<ULONGLONG>(content));
    case VT_R4:
      return double{As<float>(content)};
    case VT_R8:
      return As<double>(content);
    case VT_CY:
      return Currency{As<CY>(content).int64};
    case VT_DATE:
      return Date{As<DATE>(content)};
    case VT_DECIMAL:
      return FromDecimal(As<DECIMAL>(content));
    case VT_BOOL:
      return As<VARIANT_BOOL>(content) != VARIANT_FALSE;
    case VT_ERROR:
      return FromErrorCode(As<SCODE>(content));
    case VT_BSTR: {
      const BSTR text = As<BSTR>(content);
      return TextOf(text, SysStringLen(text));
    }
    case VT_DISPATCH:
      return ToObject(As<IDispatch*>(content));
    case VT_UNKNOWN:
      return ToObject(As<IUnknown*>(content));
    default:
      RaiseTypeMismatch();
  }
}

template <class Integer>
Integer InRange(double number) {
  const double rounded = number - std::remainder(number, 1.0);  // half to even, as Value rounds
  const double end = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
  const double begin = std::numeric_limits<Integer>::is_signed ? -end : 0;
  if (!(rounded >= begin && rounded < end)) throw AutomationError(kOverflow);
  return static_cast<Integer>(rounded);
}

float ToSingle(double number) {
  const auto single = static_cast<float>(number);
  if (std::isinf(single) && !std::isinf(number)) throw AutomationError(kOverflow);
  return single;
}

DECIMAL ToDecimal(const Value& value) {
  DECIMAL decimal{};
  HRESULT code = S_OK;
  if (value.Is(Value::Type::Currency)) {
    code = VarDecFromCy(CY{.int64 = value.As<Currency>().scaled}, &decimal);
  } else {
    code = VarDecFromR8(value.ToDouble(), &decimal);
  }
  if (FAILED(code)) throw AutomationError(kOverflow);
  return decimal;
}

SCODE ToErrorCode(const Value& value) {
  if (value.Is(Value::Type::Missing)) return DISP_E_PARAMNOTFOUND;
  if (value.Is(Value::Type::Error)) return value.As<ErrorValue>().code;
  RaiseTypeMismatch();
}

/// Puts a new reference into an object variable and releases the one that stood there.
template <class Interface>
void ReplaceObject(Interface** variable, ComPtr<Interface> object) {
  const auto old = ComPtr<Interface>::Adopt(*variable);
  *variable = object.Detach();
}

void StoreVariant(VARIANT* variable, const Value& value) {
  if (variable->vt & VT_BYREF) {
    StoreByReference(*variable, value);
    return;
  }
  Variant stored = ToVariant(value);
  const Variant old = Variant::Adopt(*variable);
  *variable = stored.Detach();
}

void StoreArray(SAFEARRAY** variable, VARTYPE element_type, const Value& value) {
  SafeArray stored = ToSafeArray(value.ToArray(), element_type);
  constexpr USHORT kInPlace = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
  if (*variable && ((*variable)->cLocks > 0 || ((*variable)->fFeatures & kInPlace))) {
    throw AutomationError(kArrayLocked, u"This array is fixed or temporarily locked");
  }
  const SafeArray old(*variable);
  *variable = stored.release();
}

}  // namespace

Value FromVariantAt(const VARIANT& variant, int depth) {
  if (depth > kDeepest) RaiseTypeMismatch();
  const bool is_reference = variant.vt & VT_BYREF;
  const VARTYPE type = variant.vt & static_cast<VARTYPE>(~VT_BYREF);
  if (is_reference && !variant.byref) RaiseTypeMismatch();
  if (type & VT_ARRAY) {
    SAFEARRAY* array = is_reference ? *variant.pparray : variant.parray;
    return FromSafeArray(array, type & static_cast<VARTYPE>(~VT_ARRAY), depth);
  }
  if (is_reference && type == VT_VARIANT) return FromVariantAt(*variant.pvarVal, depth + 1);
  if (is_reference) return FromScalar(type, variant.byref);
  switch (type) {
    case VT_EMPTY:
      return {};
    case VT_NULL:
      return Null{};
    case VT_DECIMAL:
      // The one content that fills the VARIANT from its beginning.
      return FromScalar(type, &variant.decVal);
    default:
      return FromScalar(type, &variant.llVal);
  }
}

Value FromVariant(const VARIANT& variant) {
  return FromVariantAt(variant, 0);
}

Variant ToVariant(const Value& value) {
  Variant variant;
  switch (value.type()) {
    case Value::Type::Empty:
      break;
    case Value::Type::Null:
      variant->vt = VT_NULL;
      break;
    case Value::Type::Missing:
    case Value::Type::Error:
      variant->vt = VT_ERROR;
      variant->scode = ToErrorCode(value);
      break;
    case Value::Type::Boolean:
      variant->vt = VT_BOOL;
      variant->boolVal = value.As<bool>() ? VARIANT_TRUE : VARIANT_FALSE;
      break;
    case Value::Type::Byte:
      variant->vt = VT_UI1;
      variant->bVal = value.As<std::uint8_t>();
      break;
    case Value::Type::Int16:
      variant->vt = VT_I2;
      variant->iVal = value.As<std::int16_t>();
      break;
    case Value::Type::Int32:
      variant->vt = VT_I4;
      variant->lVal = value.As<std::int32_t>();
      break;
    case Value::Type::Double:
      variant->vt = VT_R8;
      variant->dblVal = value.As<double>();
      break;
    case Value::Type::Currency:
      variant->vt = VT_CY;
      variant->cyVal.int64 = value.As<Currency>().scaled;
      break;
    case Value::Type::Date:
      variant->vt = VT_DATE;
      variant->date = value.As<Date>().serial;
      break;
    case Value::Type::Text:
      variant->bstrVal = Bstr(value.As<std::u16string>()).Detach();
      variant->vt = VT_BSTR;
      break;
    case Value::Type::Object: {
      const auto& object = value.As<ObjectPtr>();
      if (dynamic_cast<const UnknownObject*>(object.get())) {
        variant->punkVal = ToUnknown(object).Detach();
        variant->vt = VT_UNKNOWN;
      } else {
        variant->pdispVal = ToDispatch(object).Detach();
        variant->vt = VT_DISPATCH;
      }
      break;
    }
    case Value::Type::Array:
      variant->parray = ToSafeArray(value.AsArray(), VT_VARIANT).release();
      variant->vt = VT_ARRAY | VT_VARIANT;
      break;
  }
  return variant;
}

void StoreByReference(const VARIANT& reference, const Value& value) {
  if (!(reference.vt & VT_BYREF) || !reference.byref) RaiseTypeMismatch();
  const VARTYPE type = reference.vt & static_cast<VARTYPE>(~VT_BYREF);
  if (type & VT_ARRAY) {
    StoreArray(reference.pparray, type & static_cast<VARTYPE>(~VT_ARRAY), value);
    return;
  }
  switch (type) {
    case VT_VARIANT:
      StoreVariant(reference.pvarVal, value);
      break;
    case VT_I1:
      *reinterpret_cast<signed char*>(reference.pcVal) = InRange<signed char>(value.ToDouble());
      break;
    case VT_UI1:
      *reference.pbVal = value.ToByte();
      break;
    case VT_I2:
      *reference.piVal = value.ToInt16();
      break;
    case VT_UI2:
      *reference.puiVal = InRange<USHORT>(value.ToDouble());
      break;
    case VT_I4:
    case VT_INT:
      *reference.plVal = value.ToInt32();
      break;
    case VT_UI4:
    case VT_UINT:
      *reference.pulVal = InRange<ULONG>(value.ToDouble());
      break;
    case VT_I8:
      *reference.pllVal = InRange<LONGLONG>(value.ToDouble());
      break;
    case VT_UI8:
      *reference.pullVal = InRange<ULONGLONG>(value.ToDouble());
      break;
    case VT_R4:
      *reference.pfltVal = ToSingle(value.ToDouble());
      break;
    case VT_R8:
      *reference.pdblVal = value.ToDouble();
      break;
    case VT_CY:
      reference.pcyVal->int64 = value.ToCurrency().scaled;
      break;
    case VT_DATE:
      *reference.pdate = value.ToDate().serial;
      break;
    case VT_DECIMAL: {
      DECIMAL decimal = ToDecimal(value);
      decimal.wReserved = reference.pdecVal->wReserved;  // the type, where it is the content of a VARIANT
      *reference.pdecVal = decimal;
      break;
    }
    case VT_BOOL:
      *reference.pboolVal = value.ToBoolean() ? VARIANT_TRUE : VARIANT_FALSE;
      break;
    case VT_ERROR:
      *reference.pscode = ToErrorCode(value);
      break;
    case VT_BSTR: {
      Bstr text(value.ToText());
      const Bstr old = Bstr::Adopt(*reference.pbstrVal);
      *reference.pbstrVal = text.Detach();
      break;
    }
    case VT_DISPATCH:
      ReplaceObject(reference.ppdispVal, ToDispatch(value.ToObject()));
      break;
    case VT_UNKNOWN:
      ReplaceObject(reference.ppunkVal, ToUnknown(value.ToObject()));
      break;
    default:
      RaiseTypeMismatch();
  }
}

ObjectPtr ToObject(IDispatch* dispatch) {
  if (!dispatch) return {};
  if (ObjectPtr own = UnwrapOwnObject(*dispatch)) return own;
  return MakeRef<DispatchObject>(ComPtr<IDispatch>(dispatch));
}

ObjectPtr ToObject(IUnknown* unknown) {
  if (!unknown) return {};
  const ComPtr<IUnknown> kept(unknown);
  if (const auto dispatch = kept.Query<IDispatch>()) return ToObject(dispatch.get());
  return MakeRef<UnknownObject>(kept);
}

ComPtr<IDispatch> ToDispatch(const ObjectPtr& object) {
  if (!object) return {};
  if (const auto* foreign = dynamic_cast<const DispatchObject*>(object.get())) return foreign->dispatch();
  if (dynamic_cast<const UnknownObject*>(object.get())) RaiseTypeMismatch();
  return WrapObject(object);
}

ComPtr<IUnknown> ToUnknown(const ObjectPtr& object) {
  if (const auto* foreign = dynamic_cast<const UnknownObject*>(object.get())) return foreign->unknown();
  return ComPtr<IUnknown>(ToDispatch(object).get());
}

}  // namespace qva::windows
