// A table of the host's database as callers see it: records reached by key, fields by name.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/Database.h"
#include "platform/value.h"

namespace qva::embedded {

/// What a field holds, and the value that it becomes.
enum class FieldType {
  Text,
  Number,  ///< whole number of 32 bits; Int32
  Amount,  ///< whole number of cents; Currency
  Flag,    ///< 0 or 1; Boolean
  Day,     ///< text YYYY-MM-DD; Date
};

struct FieldDescription {
  std::u16string_view name;
  FieldType type;
};

/// One record: a value for each field of its table.
using Record = std::vector<Value>;

/// Every operation on records raises Failure::DatabaseUnusable when the database fails it, and Overflow (6)
/// for a number beyond the range of its field's type.
class TableReader {
 public:
  /// Whose records a reader gives: those of the book it is asked for (by the field BookCode), or of all.
  enum class Scope { OneBook, AllBooks };

  /// Prepares the queries, which raises when the database lacks the table or a field. `key` is the field that
  /// names a record within the scope. The database must outlive the reader.
  TableReader(const Database& database, std::u16string_view name, Scope scope, std::u16string_view key,
              std::vector<FieldDescription> fields);

  std::u16string_view name() const { return name_; }
  /// The position in a record of a field, whose name may be in any letter case. Raises 9 when there is none.
  std::size_t FieldPosition(std::u16string_view field) const;

  std::optional<Record> Find(std::u16string_view book_code, std::u16string_view key) const;
  /// All records in the order of the key.
  std::vector<Record> All(std::u16string_view book_code) const;

  /// "SELECT … FROM …": every field in the order of a record.
  std::string Select() const;
  /// The records that a run of a statement with Select() gives.
  std::vector<Record> ReadAll(Cursor&& rows) const;

 private:
  Record ReadOne(const Cursor& row) const;

  std::u16string_view name_;
  Scope scope_;
  std::vector<FieldDescription> fields_;
  Statement find_;
  Statement all_;
};

}  // namespace qva::embedded
