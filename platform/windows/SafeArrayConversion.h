// Automation arrays to the seam's arrays and back.
#pragma once

#include "platform/value.h"
#include "platform/windows/Variant.h"

namespace qva::windows {

/// The elements of an array whose elements are VARIANTs of type `element_type`. `depth` counts how far the
/// array lies inside other values. Raises 13 when the array is no such array.
Array FromSafeArray(SAFEARRAY* array, VARTYPE element_type, int depth);

/// A new array with elements of `element_type`, converted as StoreByReference does.
SafeArray ToSafeArray(const Array& array, VARTYPE element_type);

/// What FromVariant does, at a depth inside other values. Raises 13 beyond a depth that no honest value has.
Value FromVariantAt(const VARIANT& variant, int depth);

}  // namespace qva::windows
