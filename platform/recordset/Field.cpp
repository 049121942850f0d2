#include "platform/recordset/Field.h"

#include "platform/recordset/RecordsetError.h"

namespace qva::recordset {

const ClassDescription& Field::Description() {
  static const ClassDescription& description = ClassBuilder(u"Field", "A field of a recordset")
                                                   .Get<&Field::Name>(u"Name")
                                                   .Get<&Field::Type>(u"Type")
                                                   .Get<&Field::DefinedSize>(u"DefinedSize")
                                                   .Get<&Field::Attributes>(u"Attributes")
                                                   .Get<&Field::Value>(u"Value")
                                                   .Put<&Field::SetValue>(u"Value")
                                                   .Default(u"Value");
  return description;
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
