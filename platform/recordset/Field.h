#pragma once

#include "platform/recordset/Recordset.h"

namespace qva::recordset {

/// One field; its value is that of the recordset's current record. Keeps the recordset alive. Once the
/// recordset was closed, the value raises adErrObjectClosed, also when it is open again with new fields.
class Field : public Described<Field> {
 public:
  /// `position`: of the recordset's fields, from 0.
  Field(Ref<Recordset> recordset, std::size_t position)
      : recordset_(std::move(recordset)), table_(recordset_->table()), position_(position) {}
  static ClassBuilder Describe();

 private:
  const FieldDefinition& definition() const { return table_->fields[position_]; }
  std::u16string Name() const { return definition().name; }
  std::int32_t Type() const { return definition().type; }
  std::int32_t DefinedSize() const { return definition().size; }
  std::int32_t Attributes() const { return definition().attributes; }
  qva::Value Value() const;
  void SetValue(const qva::Value& value);
  void RequireSameFields() const;

  Ref<Recordset> recordset_;
  std::shared_ptr<RecordTable> table_;
  std::size_t position_;
};

}  // namespace qva::recordset
