#include "platform/windows/SafeArrayConversion.h"

#include <limits>

#include "platform/error.h"
#include "platform/windows/VariantConversion.h"

namespace qva::windows {
namespace {

/// Bytes of one element; 0 for a type that no array of ours can have.
ULONG ElementSize(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

/// Whether the elements of an array can be read as `declared`. Numbers pass for nothing that holds an
/// address, such as decimals, which are as wide as VARIANTs in 32 bits; an array that does not tell its type
/// is believed.
bool HasElementsOf(SAFEARRAY* array, VARTYPE declared) {
  const ULONG size = ElementSize(declared);
  // Reading wider elements would leave the array.
  if (size == 0 || SafeArrayGetElemsize(array) != size) return false;
  const bool has_address =
      declared == VT_BSTR || declared == VT_DISPATCH || declared == VT_UNKNOWN || declared == VT_VARIANT;
  VARTYPE actual = VT_EMPTY;
  if (!has_address || FAILED(SafeArrayGetVartype(array, &actual))) return true;
  return actual == declared || (actual == VT_DISPATCH && declared == VT_UNKNOWN);
}

/// The elements of an array, locked as long as this lives.
class LockedElements {
 public:
  LockedElements(SAFEARRAY* array, VARTYPE type) : array_(array), type_(type) {
    if (FAILED(SafeArrayAccessData(array, &data_))) throw AutomationError(kTypeMismatch);
  }
  LockedElements(const LockedElements&) = delete;
  LockedElements& operator=(const LockedElements&) = delete;
  ~LockedElements() { SafeArrayUnaccessData(array_); }

  /// A VARIANT that refers to the element at a position in memory.
  VARIANT At(std::size_t position) const {
    VARIANT reference{};
    reference.vt = static_cast<VARTYPE>(type_ | VT_BYREF);
    reference.byref = static_cast<char*>(data_) + position * array_->cbElements;
    return reference;
  }

 private:
  SAFEARRAY* array_;
  VARTYPE type_;
  void* data_ = nullptr;
};

std::size_t CountOf(const std::vector<Array::Dimension>& dimensions) {
  if (dimensions.empty()) return 0;
  std::size_t count = 1;
  for (const Array::Dimension& dimension : dimensions) {
    const auto length = static_cast<std::size_t>(dimension.count);
    if (length != 0 && count > std::numeric_limits<std::int32_t>::max() / length) {
      throw AutomationError(kOutOfMemory);
    }
    count *= length;
  }
  return count;
}

/// Visits all elements in our order, the last dimension running fastest, and tells where each one lies in
/// an automation array, whose first dimension runs fastest.
template <class Visit>
void ForEachElement(const std::vector<Array::Dimension>& dimensions, Visit&& visit) {
  const std::size_t count = CountOf(dimensions);
  std::vector<std::size_t> strides(dimensions.size(), 1);
  for (std::size_t d = 1; d < dimensions.size(); ++d) {
    strides[d] = strides[d - 1] * static_cast<std::size_t>(dimensions[d - 1].count);
  }
  std::vector<std::int32_t> index(dimensions.size(), 0);
  std::size_t position = 0;
  for (std::size_t i = 0; i < count; ++i) {
    visit(i, position);
    for (std::size_t d = dimensions.size(); d-- > 0;) {
      position += strides[d];
      if (++index[d] < dimensions[d].count) break;
      position -= strides[d] * static_cast<std::size_t>(dimensions[d].count);
      index[d] = 0;
    }
  }
}

}  // namespace

Array FromSafeArray(SAFEARRAY* array, VARTYPE element_type, int depth) {
  Array result;
  if (!array || array->cDims == 0) return result;
  // The sender's word for the element type is not enough.
  if (!HasElementsOf(array, element_type)) throw AutomationError(kTypeMismatch);

  for (USHORT d = array->cDims; d-- > 0;) {  // stored from the last dimension to the first
    const SAFEARRAYBOUND& bound = array->rgsabound[d];
    if (!std::in_range<std::int32_t>(bound.cElements)) throw AutomationError(kOutOfMemory);
    result.dimensions.push_back({bound.lLbound, static_cast<std::int32_t>(bound.cElements)});
  }
  result.elements.resize(CountOf(result.dimensions));
  if (result.elements.empty()) return result;
  const LockedElements elements(array, element_type);
  ForEachElement(result.dimensions, [&](std::size_t i, std::size_t position) {
    result.elements[i] = FromVariantAt(elements.At(position), depth + 1);
  });
  return result;
}

SafeArray ToSafeArray(const Array& array, VARTYPE element_type) {
  if (ElementSize(element_type) == 0) throw AutomationError(kTypeMismatch);
  std::vector<SAFEARRAYBOUND> bounds;
  for (const Array::Dimension& dimension : array.dimensions) {
    bounds.push_back({static_cast<ULONG>(dimension.count), dimension.lower});
  }
  // Automation has no array without dimensions; an empty one is what comes nearest.
  if (bounds.empty()) bounds.push_back({0, 0});
  auto result = SafeArray(SafeArrayCreate(element_type, static_cast<UINT>(bounds.size()), bounds.data()));
  if (!result) throw AutomationError(kOutOfMemory);
  if (array.elements.empty()) return result;
  const LockedElements elements(result.get(), element_type);
  ForEachElement(array.dimensions, [&](std::size_t i, std::size_t position) {
    StoreByReference(elements.At(position), array.elements[i]);
  });
  return result;
}

}  // namespace qva::windows
