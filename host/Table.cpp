#include "host/Table.h"

#include "host/HostError.h"

namespace qva::embedded {

ClassBuilder Table::Describe() {
  return ClassBuilder(u"Table", "One of a book's tables")
      .Method<&Table::Seek>(u"Seek", {{u"Key"}}, "Makes the record of a primary key the current one")
      .Get<&Table::Field>(u"Field", {{u"Name"}}, "A field of the current record")
      .Get<&Table::Rows>(u"Rows", {{u"Fields"}}, "The named fields of all records");
}

bool Table::Seek(std::u16string key) {
  record_ = reader_.Find(book_code_, key);
  return record_.has_value();
}

Value Table::Field(std::u16string name) const {
  const std::size_t position = reader_.FieldPosition(name);
  if (!record_) {
    throw AutomationError(kSubscriptOutOfRange, std::u16string(kCommonLibrary),
                          u"The table \"" + std::u16string(reader_.name()) + u"\" has no current record");
  }
  return (*record_)[position];
}

Value Table::Rows(Value fields) const {
  std::vector<std::size_t> positions;
  for (const Value& name : fields.ToArray().elements) {
    positions.push_back(reader_.FieldPosition(name.ToText()));
  }
  if (positions.empty()) {
    throw HostError(Failure::WrongParameters, kCommonLibrary, u"Table.Rows needs the names of fields");
  }
  const std::vector<Record> records = reader_.All(book_code_);
  if (records.empty()) return {};
  std::vector<Value> block;
  for (const Record& record : records) {
    for (const std::size_t position : positions) block.push_back(record[position]);
  }
  return Array::Block(static_cast<std::int32_t>(records.size()), static_cast<std::int32_t>(positions.size()),
                      std::move(block));
}

}  // namespace qva::embedded
