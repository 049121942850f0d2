#include "platform/recordset/Fields.h"

#include "platform/recordset/Field.h"
#include "platform/recordset/RecordsetError.h"

namespace qva::recordset {

ClassBuilder Fields::Describe() {
  return ClassBuilder(u"Fields", "The fields of a recordset")
      .Get<&Fields::Count>(u"Count")
      .Property<&Fields::Item, &Fields::SetItem>(u"Item", {{u"Index"}})
      .Default(u"Item")
      .Method<&Fields::Append>(u"Append", {{u"Name"},
                                           {u"Type"},
                                           Optional(u"DefinedSize"),
                                           Optional(u"Attrib", std::int32_t{ado::adFldUnspecified})});
}

std::int32_t Fields::Count() const {
  return static_cast<std::int32_t>(recordset_->table()->fields.size());
}

ObjectPtr Fields::Item(const Value& index) const {
  return MakeRef<Field>(recordset_, recordset_->FindField(index));
}

void Fields::SetItem(const Value& index, const Value& value) {
  recordset_->SetFieldValue(recordset_->FindField(index), value);
}

void Fields::Append(const std::u16string& name, std::int32_t type, std::int32_t size,
                    std::int32_t attributes) {
  if (recordset_->IsOpen()) throw Refusal(ado::adErrIllegalOperation, kFieldsSource);
  RecordTable& table = *recordset_->table();
  if (table.FindField(name)) throw Refusal(ado::adErrObjectInCollection, kFieldsSource);
  table.fields.push_back(DefineField(name, type, size, attributes));
}

}  // namespace qva::recordset
