// Recordsets as the library uses them: thin façades over the automation protocol, one method for each member.
// The objects behind them are ADO's own on Windows and this system's in-memory recordset elsewhere. Each
// raises the recordset's own AutomationError.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/ado_constants.h"
#include "platform/automation.h"
#include "platform/object_factory.h"

namespace qva::ado {

inline constexpr std::u16string_view kRecordset = u"ADODB.Recordset";

/// One field of the current record.
class Field : public Facade {
 public:
  using Facade::Facade;
  std::u16string Name() const { return Get(u"Name").ToText(); }
  /// Null for a field without a value.
  qva::Value Value() const { return Get(u"Value"); }
  void SetValue(qva::Value value) const { Put(u"Value", std::move(value)); }
};

/// A recordset's fields.
class Fields : public Facade {
 public:
  using Facade::Facade;
  std::int32_t Count() const { return Get(u"Count").ToInt32(); }
  /// A field by its name in any letter case, or its number from 0. Raises 3265 when there is none.
  Field Item(Value index) const { return Field(GetObject(u"Item", {std::move(index)})); }
  /// One more field, while the recordset is closed. `size` is that of text, in characters.
  void Append(std::u16string_view name, DataTypeEnum type, std::int32_t size,
              FieldAttributeEnum attributes) const {
    Call(u"Append", {name, std::int32_t{type}, size, std::int32_t{attributes}});
  }
};

/// Records in memory, or the host's.
class Recordset : public Facade {
 public:
  using Facade::Facade;
  static Recordset Create(ObjectFactory& factory) { return Recordset(factory.Create(kRecordset)); }

  qva::ado::Fields Fields() const { return qva::ado::Fields(GetObject(u"Fields")); }
  /// Opens it with its own fields: without source and connection, everything else unspecified.
  void Open() const {
    Call(u"Open", {Missing{}, Missing{}, std::int32_t{adOpenUnspecified}, std::int32_t{adLockUnspecified},
                   std::int32_t{adOptionUnspecified}});
  }
  bool EndOfFile() const { return Get(u"EOF").ToBoolean(); }
  std::int32_t RecordCount() const { return Get(u"RecordCount").ToInt32(); }
  void MoveFirst() const { Call(u"MoveFirst"); }
  void MoveNext() const { Call(u"MoveNext"); }
  /// Adds a record with a value for each of the named fields, and stores it.
  void AddNew(const Value& fields, const Value& values) const { Call(u"AddNew", {fields, values}); }
  /// Deletes the current record.
  void Delete() const { Call(u"Delete"); }
  /// Another view of the same records, with a position of its own.
  Recordset Clone() const { return Recordset(GetObject(u"Clone", {std::int32_t{adLockUnspecified}})); }
  /// All records from the current one to the end, as an array of fields by records, both from 0; the
  /// recordset stands at its end afterwards. Raises 3021 when there is no current record.
  Value GetRows() const { return Call(u"GetRows"); }
};

}  // namespace qva::ado
