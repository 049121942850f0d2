#include "platform/memory/MemoryHostTables.h"

#include <algorithm>

#include "platform/date.h"
#include "platform/host.h"
#include "platform/member_table.h"
#include "platform/text.h"

namespace qva {
namespace {

/// A value for each field of the table, in their order.
using Record = std::vector<Value>;

void Require(bool holds) {
  if (!holds) throw AutomationError(kInvalidProcedureCall);
}

class TableObject : public Described<TableObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Table", "")
        .Method<&TableObject::Seek>(u"Seek", {{u"Key"}})
        .Get<&TableObject::Field>(u"Field", {{u"Name"}})
        .Get<&TableObject::Rows>(u"Rows", {{u"Fields"}});
  }
  TableObject(const MemoryHost& host, std::vector<std::u16string_view> fields,
              std::map<std::u16string, Record> records)
      : host_(host), fields_(std::move(fields)), records_(std::move(records)) {}

  bool Seek(std::u16string key) {
    RefuseIfTold();
    const auto found = records_.find(key);
    current_ = found == records_.end() ? nullptr : &found->second;
    return current_ != nullptr;
  }
  Value Field(std::u16string name) const {
    if (!current_) throw AutomationError(kSubscriptOutOfRange);
    return (*current_)[FieldNumber(name)];
  }
  Value Rows(Value fields) const {
    RefuseIfTold();
    const std::vector<Value>& names = fields.ToArray().elements;
    Require(!names.empty());
    std::vector<std::size_t> numbers;
    numbers.reserve(names.size());
    for (const Value& name : names) numbers.push_back(FieldNumber(name.ToText()));
    if (records_.empty()) return {};
    std::vector<Value> cells;
    for (const auto& [key, record] : records_) {
      for (const std::size_t number : numbers) cells.push_back(record[number]);
    }
    return Array::Block(static_cast<std::int32_t>(records_.size()), static_cast<std::int32_t>(names.size()),
                        std::move(cells));
  }

 private:
  void RefuseIfTold() const {
    if (host_.refuses_tables) throw AutomationError(kAutomationFailed);
  }
  std::size_t FieldNumber(std::u16string_view name) const {
    const auto found = std::ranges::find_if(
        fields_, [&](std::u16string_view field) { return EqualIgnoringCase(field, name); });
    if (found == fields_.end()) throw AutomationError(kSubscriptOutOfRange);
    return static_cast<std::size_t>(found - fields_.begin());
  }

  const MemoryHost& host_;
  std::vector<std::u16string_view> fields_;
  std::map<std::u16string, Record> records_;  ///< by primary key
  const Record* current_ = nullptr;
};

std::u16string Quoted(const Value& value) {
  return u"'" + ReplaceAll(value.ToText(), u"'", u"''") + u"'";
}

class ConditionBuilderObject : public Described<ConditionBuilderObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"ConditionBuilder", "")
        .Method<&ConditionBuilderObject::Equal>(u"Equal", {{u"Field"}, {u"Value"}})
        .Method<&ConditionBuilderObject::And>(u"And", {{u"First"}, {u"Second"}})
        .Method<&ConditionBuilderObject::In>(u"In", {{u"Field"}, {u"SubQuery"}});
  }
  std::u16string Equal(std::u16string field, Value value) const { return field + u" = " + Quoted(value); }
  std::u16string And(std::u16string first, std::u16string second) const {
    Require(!first.empty() && !second.empty());
    return first + u" AND " + second;
  }
  std::u16string In(std::u16string field, std::u16string sub_query) const {
    Require(sub_query.starts_with(u'(') && sub_query.ends_with(u')'));
    return field + u" IN " + sub_query;
  }
};

class QueryObject : public Described<QueryObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Query", "")
        .Method<&QueryObject::Init>(u"Init", {{u"Book"}})
        .Method<&QueryObject::From>(u"From", {{u"Table"}, {u"Alias"}})
        .Method<&QueryObject::Join>(u"Join", {{u"Table"}, {u"Alias"}, {u"Condition"}})
        .Method<&QueryObject::Select>(u"Select", {{u"Field"}})
        .Property<&QueryObject::distinct_>(u"Distinct")
        .Property<&QueryObject::condition_>(u"Condition")
        .Get<&QueryObject::Sql>(u"Sql");
  }
  void Init(ObjectPtr book) {
    host::Book(std::move(book)).BookCode();
    has_book_ = true;
  }
  void From(std::u16string table, std::u16string alias) { from_ = table + u" " + alias; }
  void Join(std::u16string table, std::u16string alias, std::u16string condition) {
    from_ += u" JOIN " + table + u" " + alias + u" ON " + condition;
  }
  void Select(std::u16string field) { fields_ += (fields_.empty() ? u"" : u", ") + field; }
  std::u16string Sql() const {
    Require(has_book_ && !from_.empty() && !fields_.empty());
    return u"SELECT " + std::u16string(distinct_ ? u"DISTINCT " : u"") + fields_ + u" FROM " + from_ +
           (condition_.empty() ? u"" : u" WHERE " + condition_);
  }

 private:
  std::u16string from_;
  std::u16string fields_;
  std::u16string condition_;
  bool distinct_ = false;
  bool has_book_ = false;
};

class DocumentSelectionObject : public Described<DocumentSelectionObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"DocumentSelection", "")
        .Method<&DocumentSelectionObject::Init>(u"Init", {{u"Book"}})
        .Method<&DocumentSelectionObject::Open>(u"Open",
                                                {{u"DocumentType"}, {u"From"}, {u"To"}, {u"Condition"}})
        .Get<&DocumentSelectionObject::Field>(u"Field", {{u"Name"}});
  }
  explicit DocumentSelectionObject(MemoryHost& host) : host_(host) {}
  void Init(ObjectPtr book) { book_code_ = host::Book(std::move(book)).BookCode(); }
  std::int32_t Open(std::u16string type, Date from, Date to, std::u16string condition) {
    Require(!book_code_.empty());
    host_.selection_conditions.push_back(std::move(condition));
    ChoiceList list{u"Dokumentai", {u"Kodas", u"Data"}, {}};
    std::vector<const MemoryHost::Document*> offered;
    for (const MemoryHost::Document& document : host_.documents) {
      if (document.book_code != book_code_ || document.type != type) continue;
      if (document.date < from || document.date > to) continue;
      offered.push_back(&document);
    }
    std::ranges::sort(offered, {}, [](const auto* document) {
      return std::pair(document->date.serial, std::u16string_view(document->code));
    });
    for (const auto* document : offered) {
      list.rows.push_back({document->code, FormatByWindowsPattern(document->date, u"yyyy-MM-dd")});
    }
    const auto chosen = host_.list_chooser ? host_.list_chooser->Choose(list, u"") : std::nullopt;
    selected_ = chosen ? offered.at(*chosen) : nullptr;
    return selected_ ? selected_->id : 0;
  }
  Value Field(std::u16string name) const {
    if (!selected_ || !EqualIgnoringCase(name, host::kCodeField)) throw AutomationError(kSubscriptOutOfRange);
    return selected_->code;
  }

 private:
  MemoryHost& host_;
  std::u16string book_code_;
  const MemoryHost::Document* selected_ = nullptr;
};

}  // namespace

ObjectPtr MakeHostTable(MemoryHost& host, std::u16string_view book_code, std::u16string_view name) {
  std::vector<std::u16string_view> fields = {host::kCodeField, host::kNameField};
  std::map<std::u16string, Record> records;
  if (EqualIgnoringCase(name, host::kBookTable)) {
    for (const auto& [code, company] : host.books) records[code] = {code, company.name};
  } else if (EqualIgnoringCase(name, host::kAccountSetTable)) {
    fields.push_back(host::kIsBudgetField);
    for (const MemoryHost::AccountSet& set : host.account_sets[std::u16string(book_code)]) {
      records[set.code] = {set.code, set.name, set.is_budget};
    }
  } else if (!EqualIgnoringCase(name, host::kCarrierTable)) {
    return {};
  }
  return MakeRef<TableObject>(host, std::move(fields), std::move(records));
}

ObjectPtr MakeHostQueryObject(MemoryHost& host, std::u16string_view programmatic_identifier) {
  const auto is = [&](std::u16string_view id) { return EqualIgnoringCase(programmatic_identifier, id); };
  if (is(host::kQuery)) return MakeRef<QueryObject>();
  if (is(host::kConditionBuilder)) return MakeRef<ConditionBuilderObject>();
  if (is(host::kDocumentSelection)) return MakeRef<DocumentSelectionObject>(host);
  return {};
}

}  // namespace qva
