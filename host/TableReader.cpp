#include "host/TableReader.h"

#include "host/HostError.h"
#include "platform/error.h"
#include "platform/text.h"

namespace qva::embedded {
namespace {

std::int32_t NumberOf(std::int64_t number) {
  if (number < INT32_MIN || number > INT32_MAX) throw NumberOverflow();
  return static_cast<std::int32_t>(number);
}

Currency AmountOf(std::int64_t cents) {
  constexpr std::int64_t kScale = 10'000;
  if (cents < INT64_MIN / kScale || cents > INT64_MAX / kScale) throw NumberOverflow();
  return {cents * kScale};
}

}  // namespace

TableReader::TableReader(const Database& database, std::u16string_view name, Scope scope,
                         std::u16string_view key, std::vector<FieldDescription> fields)
    : name_(name), scope_(scope), fields_(std::move(fields)) {
  const std::string key_field = ToUtf8(key);
  const bool of_book = scope == Scope::OneBook;
  find_ =
      database.Prepare(Select() + " WHERE " + key_field + " = ?1" + (of_book ? " AND BookCode = ?2" : ""));
  all_ = database.Prepare(Select() + (of_book ? " WHERE BookCode = ?1" : "") + " ORDER BY " + key_field);
}

std::size_t TableReader::FieldPosition(std::u16string_view field) const {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (EqualIgnoringCase(fields_[i].name, field)) return i;
  }
  throw AutomationError(
      kSubscriptOutOfRange, std::u16string(kCommonLibrary),
      u"The table \"" + std::u16string(name_) + u"\" has no field \"" + std::u16string(field) + u"\"");
}

std::optional<Record> TableReader::Find(std::u16string_view book_code, std::u16string_view key) const {
  Cursor row = scope_ == Scope::OneBook ? find_.Run({key, book_code}) : find_.Run({key});
  if (!row.Next()) return std::nullopt;
  return ReadOne(row);
}

std::vector<Record> TableReader::All(std::u16string_view book_code) const {
  return ReadAll(scope_ == Scope::OneBook ? all_.Run({book_code}) : all_.Run({}));
}

std::string TableReader::Select() const {
  std::string sql;
  for (const FieldDescription& field : fields_) sql += (sql.empty() ? "SELECT " : ", ") + ToUtf8(field.name);
  return sql + " FROM " + ToUtf8(name_);
}

std::vector<Record> TableReader::ReadAll(Cursor&& rows) const {
  std::vector<Record> records;
  while (rows.Next()) records.push_back(ReadOne(rows));
  return records;
}

Record TableReader::ReadOne(const Cursor& row) const {
  Record record;
  for (const FieldDescription& field : fields_) {
    const int column = static_cast<int>(record.size());
    switch (field.type) {
      case FieldType::Text:
        record.push_back(row.Text(column));
        break;
      case FieldType::Number:
        record.push_back(NumberOf(row.Number(column)));
        break;
      case FieldType::Amount:
        record.push_back(AmountOf(row.Number(column)));
        break;
      case FieldType::Flag:
        record.push_back(row.Number(column) != 0);
        break;
      case FieldType::Day:
        record.push_back(Value(row.Text(column)).ToDate());
        break;
    }
  }
  return record;
}

}  // namespace qva::embedded
