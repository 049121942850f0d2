#include "platform/memory/MemoryHostTables.h"

#include "platform/date.h"
#include "platform/host.h"
#include "platform/member_table.h"
#include "platform/text.h"

namespace qva {
namespace {

using Record = std::map<std::u16string, Value>;

class TableObject : public Described<TableObject> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription& description = ClassBuilder(u"Table", "")
                                                     .Method<&TableObject::Seek>(u"Seek", {{u"Key"}})
                                                     .Get<&TableObject::Field>(u"Field", {{u"Name"}})
                                                     .Get<&TableObject::Rows>(u"Rows", {{u"Fields"}});
    return description;
  }
  TableObject(const MemoryHost& host, std::map<std::u16string, Record> records)
      : host_(host), records_(std::move(records)) {}

  bool Seek(std::u16string key) {
    RefuseIfTold();
    const auto found = records_.find(key);
    current_ = found == records_.end() ? nullptr : &found->second;
    return current_ != nullptr;
  }
  Value Field(std::u16string name) const {
    if (!current_) throw AutomationError(kSubscriptOutOfRange);
    return FieldOf(*current_, name);
  }
  Value Rows(Value fields) const {
    RefuseIfTold();
    if (records_.empty()) return {};
    const std::vector<Value>& names = fields.ToArray().elements;
    std::vector<Value> cells;
    for (const auto& [key, record] : records_) {
      for (const Value& name : names) cells.push_back(FieldOf(record, name.ToText()));
    }
    return Array::Block(static_cast<std::int32_t>(records_.size()), static_cast<std::int32_t>(names.size()),
                        std::move(cells));
  }

 private:
  void RefuseIfTold() const {
    if (host_.refuses_tables) throw AutomationError(kAutomationFailed);
  }
  static Value FieldOf(const Record& record, const std::u16string& name) {
    const auto found = record.find(name);
    if (found == record.end()) throw AutomationError(kSubscriptOutOfRange);
    return found->second;
  }

  const MemoryHost& host_;
  std::map<std::u16string, Record> records_;  ///< by primary key
  const Record* current_ = nullptr;
};

std::u16string Quoted(const Value& value) {
  return u"'" + ReplaceAll(value.ToText(), u"'", u"''") + u"'";
}

class ConditionBuilderObject : public Described<ConditionBuilderObject> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription& description =
        ClassBuilder(u"ConditionBuilder", "")
            .Method<&ConditionBuilderObject::Equal>(u"Equal", {{u"Field"}, {u"Value"}})
            .Method<&ConditionBuilderObject::And>(u"And", {{u"First"}, {u"Second"}})
            .Method<&ConditionBuilderObject::In>(u"In", {{u"Field"}, {u"SubQuery"}});
    return description;
  }
  std::u16string Equal(std::u16string field, Value value) const { return field + u" = " + Quoted(value); }
  std::u16string And(std::u16string first, std::u16string second) const { return first + u" AND " + second; }
  std::u16string In(std::u16string field, std::u16string sub_query) const {
    return field + u" IN " + sub_query;
  }
};

class QueryObject : public Described<QueryObject> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription& description =
        ClassBuilder(u"Query", "")
            .Method<&QueryObject::Init>(u"Init", {{u"Book"}})
            .Method<&QueryObject::From>(u"From", {{u"Table"}, {u"Alias"}})
            .Method<&QueryObject::Join>(u"Join", {{u"Table"}, {u"Alias"}, {u"Condition"}})
            .Method<&QueryObject::Select>(u"Select", {{u"Field"}})
            .Property<&QueryObject::distinct_>(u"Distinct")
            .Property<&QueryObject::condition_>(u"Condition")
            .Get<&QueryObject::Sql>(u"Sql");
    return description;
  }
  void Init(ObjectPtr book) { host::Book(book).BookCode(); }
  void From(std::u16string table, std::u16string alias) { from_ = table + u" " + alias; }
  void Join(std::u16string table, std::u16string alias, std::u16string condition) {
    from_ += u" JOIN " + table + u" " + alias + u" ON " + condition;
  }
  void Select(std::u16string field) { fields_ += (fields_.empty() ? u"" : u", ") + field; }
  std::u16string Sql() const {
    return u"SELECT " + std::u16string(distinct_ ? u"DISTINCT " : u"") + fields_ + u" FROM " + from_ +
           u" WHERE " + condition_;
  }

 private:
  std::u16string from_;
  std::u16string fields_;
  std::u16string condition_;
  bool distinct_ = false;
};

class DocumentSelectionObject : public Described<DocumentSelectionObject> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription& description =
        ClassBuilder(u"DocumentSelection", "")
            .Method<&DocumentSelectionObject::Init>(u"Init", {{u"Book"}})
            .Method<&DocumentSelectionObject::Open>(u"Open",
                                                    {{u"DocumentType"}, {u"From"}, {u"To"}, {u"Condition"}})
            .Get<&DocumentSelectionObject::Field>(u"Field", {{u"Name"}});
    return description;
  }
  explicit DocumentSelectionObject(MemoryHost& host) : host_(host) {}
  void Init(ObjectPtr book) { book_code_ = host::Book(book).BookCode(); }
  std::int32_t Open(std::u16string type, Date from, Date to, std::u16string condition) {
    host_.selection_conditions.push_back(std::move(condition));
    ChoiceList list{u"Dokumentai", {u"Kodas", u"Data"}, {}};
    std::vector<const MemoryHost::Document*> offered;
    for (const MemoryHost::Document& document : host_.documents) {
      if (document.book_code != book_code_ || document.type != type) continue;
      if (document.date < from || document.date > to) continue;
      offered.push_back(&document);
      list.rows.push_back({document.code, FormatByWindowsPattern(document.date, u"yyyy-MM-dd")});
    }
    const auto chosen = host_.list_chooser ? host_.list_chooser->Choose(list, u"") : std::nullopt;
    selected_ = chosen ? offered.at(*chosen) : nullptr;
    return selected_ ? selected_->id : 0;
  }
  Value Field(std::u16string name) const {
    if (!selected_ || name != u"Code") throw AutomationError(kSubscriptOutOfRange);
    return selected_->code;
  }

 private:
  MemoryHost& host_;
  std::u16string book_code_;
  const MemoryHost::Document* selected_ = nullptr;
};

}  // namespace

ObjectPtr MakeHostTable(MemoryHost& host, std::u16string_view book_code, std::u16string_view name) {
  std::map<std::u16string, Record> records;
  if (EqualIgnoringCase(name, u"Book")) {
    for (const auto& [code, company] : host.books) records[code] = {{u"Code", code}, {u"Name", company.name}};
  } else if (EqualIgnoringCase(name, u"GLAccountSet")) {
    for (const MemoryHost::AccountSet& set : host.account_sets[std::u16string(book_code)]) {
      records[set.code] = {{u"Code", set.code}, {u"Name", set.name}, {u"IsBudget", set.is_budget}};
    }
  } else if (!EqualIgnoringCase(name, u"REFBankAccountRole")) {
    return {};
  }
  return MakeRef<TableObject>(host, std::move(records));
}

ObjectPtr MakeHostQueryObject(MemoryHost& host, std::u16string_view programmatic_identifier) {
  const auto is = [&](std::u16string_view id) { return EqualIgnoringCase(programmatic_identifier, id); };
  if (is(host::kQuery)) return MakeRef<QueryObject>();
  if (is(host::kConditionBuilder)) return MakeRef<ConditionBuilderObject>();
  if (is(host::kDocumentSelection)) return MakeRef<DocumentSelectionObject>(host);
  return {};
}

}  // namespace qva
