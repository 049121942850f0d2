// The fields and records that a recordset and its clones share.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/recordset/FieldDefinition.h"

namespace qva::recordset {

/// One value for each field, in the fields' order.
using Record = std::vector<Value>;

/// Records stand in the order in which they were added. Each keeps its index for good, so that the positions
/// of all clones hold when one of them deletes.
class RecordTable {
 public:
  /// The fields; fixed once the recordset is open.
  std::vector<FieldDefinition> fields;

  /// The position of a field by its name in any letter case; nothing when there is none.
  std::optional<std::size_t> FindField(std::u16string_view name) const;
  /// A record whose fields have no values yet.
  Record NewRecord() const;

  /// Records that are not deleted.
  std::size_t Count() const { return live_count_; }
  bool IsLive(std::size_t index) const { return index < records_.size() && !records_[index].empty(); }
  /// The first record that is not deleted at an index or behind it; nothing at the end.
  std::optional<std::size_t> NextFrom(std::size_t index) const;
  /// The last record that is not deleted before an index; nothing at the beginning.
  std::optional<std::size_t> LastBefore(std::size_t index) const;
  /// The index behind the last record.
  std::size_t End() const { return records_.size(); }

  /// A record that is not deleted.
  const Record& At(std::size_t index) const { return records_[index]; }
  void Replace(std::size_t index, Record record) { records_[index] = std::move(record); }
  /// Returns the new record's index.
  std::size_t Append(Record record);
  void Delete(std::size_t index);

  /// How many records were looked at in search of others, all searches together: what reading a recordset
  /// through and emptying it costs, for tests that it grows with the number of records.
  std::size_t looked_at() const { return looked_at_; }

 private:
  std::vector<Record> records_;  // a deleted one is empty
  std::size_t live_count_ = 0;
  std::size_t first_live_ = 0;  // none before it; keeps emptying a recordset from its front linear
  mutable std::size_t looked_at_ = 0;
};

}  // namespace qva::recordset
