#include "platform/memory/MemoryObjectFactory.h"

#include "platform/ado.h"
#include "platform/cannot_create.h"
#include "platform/recordset/RecordsetFactory.h"
#include "platform/text.h"

namespace qva {

MemoryObjectFactory::MemoryObjectFactory() {
  Register(ado::kRecordset, &recordset::NewRecordset);
}

ObjectPtr MemoryObjectFactory::Create(std::u16string_view programmatic_identifier) {
  const auto found = creators_.find(ToLower(programmatic_identifier));
  if (found == creators_.end()) throw CannotCreate(programmatic_identifier);
  // A copy: what the creator does may change the registrations.
  const Creator creator = found->second;
  ObjectPtr object = creator();
  if (!object) throw CannotCreate(programmatic_identifier, u"its creator gives nothing");
  return object;
}

void MemoryObjectFactory::Register(std::u16string_view programmatic_identifier, Creator creator) {
  creators_[ToLower(programmatic_identifier)] = std::move(creator);
}

}  // namespace qva
