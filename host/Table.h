// One of a book's tables.
#pragma once

#include <memory>
#include <optional>

#include "host/HostDatabase.h"
#include "platform/member_table.h"

namespace qva::embedded {

/// The records of one book, or of all where the table is that of the books. Keys are compared exactly, names
/// of fields in any letter case.
class Table : public Described<Table> {
 public:
  static ClassBuilder Describe();
  /// `reader` is one of the database's.
  Table(const TableReader& reader, std::u16string book_code, std::shared_ptr<const HostDatabase> database)
      : reader_(reader), book_code_(std::move(book_code)), database_(std::move(database)) {}

  /// Makes the record of a primary key the current one; false, and no current record, when there is none.
  bool Seek(std::u16string key);
  /// A field of the current record. Raises 9 for a field that the table lacks, and without a current record.
  Value Field(std::u16string name) const;
  /// The named fields of all records in the order of the key: a block of records by fields, both from 1;
  /// Empty when there are no records. Raises 9 for a field that the table lacks, 13 for anything but an array
  /// and Failure::WrongParameters for one without names.
  Value Rows(Value fields) const;

 private:
  const TableReader& reader_;
  std::u16string book_code_;
  std::shared_ptr<const HostDatabase> database_;  ///< keeps the reader
  std::optional<Record> record_;
};

}  // namespace qva::embedded
