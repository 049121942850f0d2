#pragma once

#include "platform/recordset/Recordset.h"

namespace qva::recordset {

/// A recordset's fields. Made anew when it is asked for; keeps its recordset alive.
class Fields : public Described<Fields> {
 public:
  explicit Fields(Ref<Recordset> recordset) : recordset_(std::move(recordset)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count() const;
  /// By name in any letter case or number from 0. Raises adErrItemNotFound.
  ObjectPtr Item(const Value& index) const;
  /// `fields("Code") = …`, which a macro may write without naming Value.
  void SetItem(const Value& index, const Value& value);
  /// One more field, as DefineField has it. Raises adErrIllegalOperation while the recordset is open and
  /// adErrObjectInCollection for a name that is taken.
  void Append(const std::u16string& name, std::int32_t type, std::int32_t size, std::int32_t attributes);

  Ref<Recordset> recordset_;
};

}  // namespace qva::recordset
