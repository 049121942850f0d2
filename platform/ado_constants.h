// ADO's constants, as far as the library uses them, under ADO's own names.
#pragma once

#include <cstdint>

namespace qva::ado {

enum DataTypeEnum : std::int32_t {
  adSmallInt = 2,
  adInteger = 3,
  adDouble = 5,
  adCurrency = 6,
  adDate = 7,
  adBoolean = 11,
  adVarChar = 200,
  adVarWChar = 202,
};

enum FieldAttributeEnum : std::int32_t {
  adFldUnspecified = -1,
  adFldIsNullable = 64,
};

enum CursorTypeEnum : std::int32_t { adOpenUnspecified = -1 };
enum LockTypeEnum : std::int32_t { adLockUnspecified = -1 };
enum ExecuteOptionEnum : std::int32_t { adOptionUnspecified = -1 };
enum ObjectStateEnum : std::int32_t { adStateClosed = 0, adStateOpen = 1 };
enum EditModeEnum : std::int32_t { adEditNone = 0, adEditInProgress = 1, adEditAdd = 2 };
enum AffectEnum : std::int32_t { adAffectCurrent = 1 };
enum GetRowsOptionEnum : std::int32_t { adGetRowsRest = -1 };

/// Recordset errors as a macro meets them.
enum ErrorValueEnum : std::int32_t {
  adErrInvalidArgument = 3001,
  adErrNoCurrentRecord = 3021,
  adErrIllegalOperation = 3219,
  adErrItemNotFound = 3265,
  adErrObjectInCollection = 3367,
  adErrObjectClosed = 3704,
  adErrObjectOpen = 3705,
  adErrInvalidConnection = 3709,
  /// A value that its field cannot hold (DB_E_ERRORSOCCURRED, hexadecimal 80040E21).
  adErrMultipleStep = -2147217887,
};

}  // namespace qva::ado
