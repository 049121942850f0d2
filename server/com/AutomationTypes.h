// The types of the member tables in COM's terms.
#pragma once

#include <cstddef>

#include "platform/member_table.h"
#include "platform/windows/WindowsApi.h"

namespace qva::com {

/// The type of a parameter or result in a VARIANT and in the type library.
inline VARTYPE VariantType(ParameterType type) {
  switch (type) {
    case ParameterType::None:
      return VT_VOID;
    case ParameterType::Any:
      return VT_VARIANT;
    case ParameterType::Boolean:
      return VT_BOOL;
    case ParameterType::Byte:
      return VT_UI1;
    case ParameterType::Int16:
      return VT_I2;
    case ParameterType::Int32:
      return VT_I4;
    case ParameterType::Double:
      return VT_R8;
    case ParameterType::Currency:
      return VT_CY;
    case ParameterType::Date:
      return VT_DATE;
    case ParameterType::Text:
      return VT_BSTR;
    case ParameterType::Object:
      return VT_DISPATCH;
  }
  return VT_VOID;
}

/// Bytes of a value of the type in a vtable call.
inline std::size_t SizeOf(ParameterType type) {
  switch (type) {
    case ParameterType::None:
      return 0;
    case ParameterType::Any:
      return sizeof(VARIANT);
    case ParameterType::Byte:
      return 1;
    case ParameterType::Boolean:
    case ParameterType::Int16:
      return 2;
    case ParameterType::Int32:
      return 4;
    case ParameterType::Double:
    case ParameterType::Currency:
    case ParameterType::Date:
      return 8;
    case ParameterType::Text:
    case ParameterType::Object:
      return sizeof(void*);
  }
  return 0;
}

}  // namespace qva::com
