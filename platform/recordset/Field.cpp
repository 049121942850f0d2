#include "platform/recordset/Field.h"

#include "platform/recordset/RecordsetError.h"

namespace qva::recordset {

ClassBuilder Field::Describe() {
  return ClassBuilder(u"Field", "A field of a recordset")
      .Get<&Field::Name>(u"Name")
      .Get<&Field::Type>(u"Type")
      .Get<&Field::DefinedSize>(u"DefinedSize")
      .Get<&Field::Attributes>(u"Attributes")
      .Property<&Field::Value, &Field::SetValue>(u"Value")
      .Default(u"Value");
}

Value Field::Value() const {
  RequireSameFields();
  return recordset_->FieldValue(position_);
}

void Field::SetValue(const qva::Value& value) {
  RequireSameFields();
  recordset_->SetFieldValue(position_, value);
}

void Field::RequireSameFields() const {
  if (recordset_->table() != table_) throw Refusal(ado::adErrObjectClosed, kFieldSource);
}

}  // namespace qva::recordset
