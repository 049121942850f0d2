// What a field of a recordset is, and how values become its own.
#pragma once

#include <cstdint>
#include <string>

#include "platform/value.h"

namespace qva::recordset {

struct FieldDefinition {
  std::u16string name;
  std::int32_t type = 0;        ///< an ado::DataTypeEnum
  std::int32_t size = 0;        ///< in bytes; of text the most characters
  std::int32_t attributes = 0;  ///< ADO's flags

  /// A field that holds Null, also as long as nobody gives it a value. One that does not is Empty till then.
  bool IsNullable() const;
  /// The value as the field holds it: converted to the field's type by automation's rules, so that Empty is
  /// the empty text or 0; an object stands for its default property. Text is kept in all its letters,
  /// whatever the code page. Raises 13 for a value of no such type; adErrMultipleStep for Null where the
  /// field is not nullable, a number out of the type's range and a text that is longer than the field.
  Value Converted(const Value& value) const;
};

/// The definition of a field that is appended. `size` counts for text alone; of the attributes
/// ado::adFldUnspecified means those that follow from the type. Raises adErrInvalidArgument for an empty
/// name, a type other than ado::DataTypeEnum lists and a text of no size.
FieldDefinition DefineField(std::u16string name, std::int32_t type, std::int32_t size,
                            std::int32_t attributes);

}  // namespace qva::recordset
