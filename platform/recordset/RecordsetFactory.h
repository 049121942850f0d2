// Recordsets by their programmatic identifier, where ADO is not there.
#pragma once

#include "platform/object_factory.h"

namespace qva::recordset {

/// A new recordset in memory, closed and without fields.
ObjectPtr NewRecordset();

/// Creates ADODB.Recordset, and nothing else (429).
class RecordsetFactory : public ObjectFactory {
 public:
  ObjectPtr Create(std::u16string_view programmatic_identifier) override;
};

}  // namespace qva::recordset
