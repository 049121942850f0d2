// ADO's constants, as far as the library uses them, under ADO's own names.
#pragma once

#include <cstdint>

namespace qva::ado {

enum DataTypeEnum : std::int32_t {
  adInteger = 3,
  adCurrency = 6,
  adVarChar = 200,
};

enum FieldAttributeEnum : std::int32_t {
  adFldUnspecified = -1,
  adFldIsNullable = 64,
};

enum CursorTypeEnum : std::int32_t { adOpenUnspecified = -1 };
enum LockTypeEnum : std::int32_t { adLockUnspecified = -1 };
enum ExecuteOptionEnum : std::int32_t { adOptionUnspecified = -1 };

}  // namespace qva::ado
