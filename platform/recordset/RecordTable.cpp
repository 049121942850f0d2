#include "platform/recordset/RecordTable.h"

#include <algorithm>

#include "platform/text.h"

namespace qva::recordset {

std::optional<std::size_t> RecordTable::FindField(std::u16string_view name) const {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (EqualIgnoringCase(fields[i].name, name)) return i;
  }
  return std::nullopt;
}

Record RecordTable::NewRecord() const {
  Record record;
  record.reserve(fields.size());
  for (const FieldDefinition& field : fields) record.push_back(field.IsNullable() ? Value(Null()) : Value());
  return record;
}

std::optional<std::size_t> RecordTable::NextFrom(std::size_t index) const {
  for (std::size_t i = std::max(index, first_live_); i < records_.size(); ++i) {
    ++looked_at_;
    if (IsLive(i)) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> RecordTable::LastBefore(std::size_t index) const {
  for (std::size_t i = std::min(index, records_.size()); i > first_live_; --i) {
    ++looked_at_;
    if (IsLive(i - 1)) return i - 1;
  }
  return std::nullopt;
}

std::size_t RecordTable::Append(Record record) {
  records_.push_back(std::move(record));
  ++live_count_;
  return records_.size() - 1;
}

void RecordTable::Delete(std::size_t index) {
  records_[index] = Record();
  --live_count_;
  for (; first_live_ < records_.size() && !IsLive(first_live_); ++first_live_) ++looked_at_;
}

}  // namespace qva::recordset
