#include "platform/recordset/RecordsetFactory.h"

#include "platform/ado.h"
#include "platform/cannot_create.h"
#include "platform/recordset/Recordset.h"
#include "platform/text.h"

namespace qva::recordset {

ObjectPtr NewRecordset() {
  return MakeRef<Recordset>();
}

ObjectPtr RecordsetFactory::Create(std::u16string_view programmatic_identifier) {
  if (!EqualIgnoringCase(programmatic_identifier, ado::kRecordset))
    throw CannotCreate(programmatic_identifier);
  return NewRecordset();
}

}  // namespace qva::recordset
