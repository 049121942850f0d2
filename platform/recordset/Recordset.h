// A recordset in memory: what ADO calls a disconnected, fabricated one.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/ado_constants.h"
#include "platform/member_table.h"
#include "platform/recordset/RecordTable.h"

namespace qva::recordset {

/// ADODB.Recordset with fields of its own making: append them, open it without a source, add records. Member
/// names, error numbers and texts are ADO's. Sources, connections, filters, bookmarks and batches are not
/// there.
///
/// A record that is being added or changed is stored by Update, and by whatever moves the position; till then
/// clones do not see it. Records stay in the order in which they were added. A deleted record stays current,
/// without values (3021), until the position is moved; the next and the previous record are its neighbours'.
class Recordset : public Described<Recordset> {
 public:
  static ClassBuilder Describe();

  // For Fields and Field.

  bool IsOpen() const { return is_open_; }
  const std::shared_ptr<RecordTable>& table() const { return table_; }
  /// A field's position by its name in any letter case or its number from 0. Raises adErrItemNotFound.
  std::size_t FindField(const Value& index) const;
  /// Values of the current record. Raise adErrObjectClosed and adErrNoCurrentRecord; SetFieldValue also what
  /// FieldDefinition::Converted raises, which leaves the record as it was.
  Value FieldValue(std::size_t field) const;
  void SetFieldValue(std::size_t field, const Value& value);

 private:
  /// Where the recordset stands: at a record, in front of all or behind all.
  struct Position {
    enum class Place { Front, AtRecord, End };
    Place place = Place::End;
    std::size_t index = 0;  ///< of the record
  };

  ObjectPtr Fields();
  /// `recordset.Fields("Code") = …`, which a macro may write without naming Value.
  void SetField(const Value& index, const Value& value);
  bool BeginningOfFile() const;
  bool EndOfFile() const;
  /// Stored records that are not deleted.
  std::int32_t RecordCount() const;
  std::int32_t State() const { return is_open_ ? ado::adStateOpen : ado::adStateClosed; }
  std::int32_t EditMode() const;

  /// Without source and connection; cursor, lock and options make no difference. Raises adErrObjectOpen, and
  /// adErrInvalidConnection with a source, with a connection and without fields.
  void Open(const Value& source, const Value& connection, const Value& cursor, const Value& lock,
            const Value& options);
  /// Lets go of fields and records; clones keep theirs. Raises adErrIllegalOperation while a record is being
  /// added or changed.
  void Close();
  /// A new record, to be stored by Update. With fields and values - a name or number and its value, or an
  /// array of each - it is stored at once, or not at all when a value is refused. Raises
  /// adErrInvalidArgument when the two do not match.
  void AddNew(const Value& fields, const Value& values);
  /// Stores what was changed; nothing to do otherwise. Fields and values as for AddNew are set first.
  void Update(const Value& fields, const Value& values);
  /// Forgets what was changed; of a new record, the one before it is current again.
  void CancelUpdate();
  /// Deletes the current record; one that was not stored yet is forgotten. Raises adErrInvalidArgument for
  /// anything but adAffectCurrent.
  void Delete(std::int32_t affected);
  /// Moves raise adErrNoCurrentRecord without records, and beyond an end where the recordset stands already.
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  /// The same records with a position of its own, the first one. The lock makes no difference.
  ObjectPtr Clone(const Value& lock);
  /// Fields by records, both from 0, from the current record on: as many records as asked for and there
  /// are, or all (adGetRowsRest). The record behind them is current afterwards. Raises adErrNoCurrentRecord,
  /// and adErrInvalidArgument for a number that is neither.
  Value GetRows(std::int32_t rows);

  void RequireOpen() const;
  /// The current record as stored; raises adErrNoCurrentRecord.
  const Record& Stored() const;
  void MoveTo(std::optional<std::size_t> index, Position::Place otherwise);
  /// The record with the values of the fields set. Raises as AddNew.
  Record WithValues(Record record, const Value& fields, const Value& values) const;

  std::shared_ptr<RecordTable> table_ = std::make_shared<RecordTable>();
  bool is_open_ = false;
  Position position_;
  ado::EditModeEnum edit_mode_ = ado::adEditNone;
  Record edited_;  ///< the current record while it is being added or changed
};

}  // namespace qva::recordset
