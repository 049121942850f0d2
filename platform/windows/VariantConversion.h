// Values across the COM boundary: VARIANT to Value and back, with everything that automation allows in one.
#pragma once

#include "platform/value.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Variant.h"

namespace qva::windows {

/// The value that a VARIANT holds or refers to; the VARIANT stays the caller's. By type:
///   - references of every type, references to references and arrays of every element type and number of
///     dimensions are followed; an array that was never given dimensions is one without elements;
///   - signed bytes are Int16, unsigned 16-bit numbers Int32; unsigned 32-bit and all 64-bit numbers
///     Int32 where they fit, otherwise Double; single precision and decimals are Double;
///   - DISP_E_PARAMNOTFOUND is Missing, any other error code an ErrorValue;
///   - objects as ToObject has them.
/// Raises 13 (Type mismatch) for a type that automation has no value of, and for a VARIANT that contradicts
/// itself, such as a reference to nowhere.
Value FromVariant(const VARIANT& variant);

/// The VARIANT that holds a value: text as VT_BSTR, objects as VT_DISPATCH, arrays as arrays of VARIANTs with
/// the same bounds, Missing as DISP_E_PARAMNOTFOUND. Raises 7 (Out of memory).
Variant ToVariant(const Value& value);

/// Stores a value in the variable that a by-reference VARIANT refers to, in the variable's own type: numbers
/// are converted, with the errors of Value's conversions and 6 (Overflow) beyond the type's range; a VARIANT
/// variable takes the value as ToVariant has it, one that is itself a reference passes it on. What the
/// variable held is freed or released, after the new content is in place. Raises 13 for a variable that
/// cannot hold the value and 10 for an array that cannot be replaced; the variable is then as it was.
void StoreByReference(const VARIANT& reference, const Value& value);

/// An incoming object: the library's own object where the COM object stands for one, otherwise an object that
/// passes every call on. A null pointer is Nothing.
ObjectPtr ToObject(IDispatch* dispatch);
/// As above, for a pointer that may lead to no automation; such an object can be kept and handed back, but
/// raises 438 for every member.
ObjectPtr ToObject(IUnknown* unknown);

/// The COM object of an outgoing object: the one that came in, or the one that the server wraps around an
/// object of the library. Nothing is a null pointer. Raises 13 for an object that has no automation
/// interface.
ComPtr<IDispatch> ToDispatch(const ObjectPtr& object);
ComPtr<IUnknown> ToUnknown(const ObjectPtr& object);

}  // namespace qva::windows
