#include "tests/extending/HttpHost.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "host/ClientTools.h"
#include "host/HostError.h"
#include "host/Message.h"
#include "host/MessageResource.h"
#include "host/Plant.h"
#include "host/SettingsCollection.h"
#include "platform/cannot_create.h"
#include "platform/date.h"
#include "platform/host.h"
#include "platform/member_table.h"
#include "platform/text.h"

namespace qva::http {
namespace {

using embedded::Failure;

AutomationError HttpError(Failure failure, std::u16string description) {
  return embedded::HostError(failure, embedded::kCommonLibrary, std::move(description));
}

/// A text as a part of an address.
std::string Escaped(std::u16string_view text) {
  std::string escaped;
  for (const char c : ToUtf8(text)) {
    const auto byte = static_cast<unsigned char>(c);
    char code[4];
    std::snprintf(code, sizeof code, "%%%02X", byte);
    escaped += std::isalnum(byte) || c == '-' || c == '.' ? std::string(1, c) : code;
  }
  return escaped;
}

std::string DayText(Date date) {
  return ToUtf8(FormatByWindowsPattern(date, u"yyyy-MM-dd"));
}

/// The parts of a text between separators.
std::vector<std::u16string> Split(std::u16string_view text, char16_t separator) {
  std::vector<std::u16string> parts(1);
  for (const char16_t c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

/// What the service gives as a table.
struct Records {
  std::vector<std::u16string> fields, types;
  std::vector<std::vector<std::u16string>> rows;

  explicit Records(std::string_view body) {
    std::vector<std::u16string> lines = Split(FromUtf8(body), u'\n');
    for (const std::u16string& head : Split(lines.front(), u'\t')) {
      const std::vector<std::u16string> name_and_type = Split(head, u':');
      fields.push_back(name_and_type.front());
      types.push_back(name_and_type.back());
    }
    for (std::size_t i = 1; i < lines.size(); ++i) {
      if (!lines[i].empty()) rows.push_back(Split(lines[i], u'\t'));
    }
  }

  /// The place of a field in any letter case. Raises 9 for one that the table lacks.
  std::size_t PlaceOf(std::u16string_view field) const {
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (EqualIgnoringCase(fields[i], field)) return i;
    }
    throw AutomationError(kSubscriptOutOfRange);
  }
  Value At(std::size_t row, std::size_t place) const {
    const Value text = rows[row].at(place);
    if (types[place] == u"number") return text.ToInt32();
    if (types[place] == u"money") return text.ToCurrency();
    if (types[place] == u"flag") return text.ToBoolean();
    if (types[place] == u"day") return text.ToDate();
    return text;
  }
  Value At(std::size_t row, std::u16string_view field) const { return At(row, PlaceOf(field)); }
};

std::string Require(Service& service, const std::string& path, Failure failure, std::u16string what) {
  if (auto body = service.Get(path)) return *std::move(body);
  throw HttpError(failure, u"The service has no " + what);
}

std::string PathOf(const ObjectPtr& book) {
  return "/books/" + Escaped(host::Book(book).BookCode());
}

// --- Books and their tables

class Table : public Described<Table> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Table", "")
        .Method<&Table::Seek>(u"Seek", {{u"Key"}})
        .Get<&Table::Field>(u"Field", {{u"Name"}})
        .Get<&Table::Rows>(u"Rows", {{u"Fields"}});
  }
  explicit Table(Records records) : records_(std::move(records)) {}

  bool Seek(std::u16string key) {
    const auto found = std::ranges::find(records_.rows, key, [](const auto& row) { return row.front(); });
    current_ = static_cast<std::size_t>(found - records_.rows.begin());
    return found != records_.rows.end();
  }
  Value Field(std::u16string name) const {
    if (current_ >= records_.rows.size()) throw AutomationError(kSubscriptOutOfRange);
    return records_.At(current_, name);
  }
  Value Rows(Value fields) const {
    std::vector<std::size_t> places;
    for (const Value& name : fields.ToArray().elements) places.push_back(records_.PlaceOf(name.ToText()));
    if (places.empty()) throw HttpError(Failure::WrongParameters, u"Rows needs the names of fields");
    if (records_.rows.empty()) return {};
    std::vector<Value> block;
    for (std::size_t row = 0; row < records_.rows.size(); ++row) {
      for (const std::size_t place : places) block.push_back(records_.At(row, place));
    }
    return Array::Block(static_cast<std::int32_t>(records_.rows.size()),
                        static_cast<std::int32_t>(places.size()), std::move(block));
  }

 private:
  Records records_;
  std::size_t current_ = static_cast<std::size_t>(-1);
};

class Book : public Described<Book> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Book", "")
        .Get<&Book::BookCode>(u"BookCode")
        .Get<&Book::Table>(u"Table", {{u"Name"}})
        .Default(u"BookCode");
  }
  Book(Service& service, std::u16string code) : service_(service), code_(std::move(code)) {}

  std::u16string BookCode() const { return code_; }
  ObjectPtr Table(std::u16string name) const {
    return MakeRef<http::Table>(
        Records(Require(service_, "/books/" + Escaped(code_) + "/tables/" + Escaped(ToLower(name)),
                        Failure::UnknownTable, u"table \"" + name + u"\"")));
  }

 private:
  Service& service_;
  std::u16string code_;
};

class CommonObjects : public Described<CommonObjects> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"CommonObjects", "")
        .Method<&CommonObjects::CreateBook>(u"CreateBook", {{u"BookCode"}});
  }
  explicit CommonObjects(Service& service) : service_(service) {}

  ObjectPtr CreateBook(std::u16string code) const {
    Require(service_, "/books/" + Escaped(code), Failure::UnknownBook, u"book \"" + code + u"\"");
    return MakeRef<Book>(service_, std::move(code));
  }

 private:
  Service& service_;
};

// --- Companies and folders

/// What a company has under a name, spelt as it is; empty for what it lacks.
std::u16string TextOf(const Records& company, std::u16string_view name) {
  const auto found = std::ranges::find(company.fields, name);
  if (found == company.fields.end()) return {};
  return company.rows.front().at(static_cast<std::size_t>(found - company.fields.begin()));
}

class Address : public Described<Address> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Address", "")
        .Get<&Address::FullText>(u"FullText")
        .Get<&Address::Contact>(u"Contact", {{u"Kind"}});
  }
  explicit Address(std::optional<Records> company) : company_(std::move(company)) {}

  std::u16string FullText() const { return Contact(u"Address"); }
  std::u16string Contact(std::u16string kind) const { return company_ ? TextOf(*company_, kind) : u""; }

 private:
  std::optional<Records> company_;
};

class CompanyAttributes : public Described<CompanyAttributes> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"CompanyAttributes", "")
        .Method<&CompanyAttributes::Init>(u"Init", {{u"Book"}})
        .Get<&CompanyAttributes::Code>(u"Code")
        .Get<&CompanyAttributes::VATCode>(u"VATCode")
        .Get<&CompanyAttributes::Name>(u"Name")
        .Get<&CompanyAttributes::Address>(u"Address", {{u"Kind"}})
        .Get<&CompanyAttributes::ResponsiblePerson>(u"ResponsiblePerson", {{u"Role"}});
  }
  explicit CompanyAttributes(Service& service) : service_(service) {}

  void Init(ObjectPtr book) {
    company_.emplace(Require(service_, PathOf(book) + "/company", Failure::UnknownBook, u"company"));
  }
  std::u16string Code() const { return TextOf(Company(), u"Code"); }
  std::u16string VATCode() const { return TextOf(Company(), u"VATCode"); }
  std::u16string Name() const { return TextOf(Company(), u"Name"); }
  /// The service knows the company's own address alone.
  ObjectPtr Address(std::u16string kind) const {
    const Records& company = Company();
    return MakeRef<http::Address>(kind.empty() ? std::optional(company) : std::nullopt);
  }
  std::u16string ResponsiblePerson(std::u16string role) const { return TextOf(Company(), role); }

 private:
  const Records& Company() const {
    if (!company_) throw HttpError(Failure::NotInitialised, u"Init was not called");
    return *company_;
  }

  Service& service_;
  std::optional<Records> company_;
};

class Lookup : public Described<Lookup> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Lookup", "")
        .Method<&Lookup::Run>(u"Run", {{u"Parameters"}})
        .Get<&Lookup::Folder>(u"Value");
  }
  Lookup(Service& service, std::string book) : service_(service), book_(std::move(book)) {}

  bool Run(Value parameters) {
    const std::vector<Value>& keys = parameters.ToArray().elements;
    if (keys.size() != 1) throw HttpError(Failure::WrongParameters, u"The lookup takes one key");
    const auto found = service_.Get(book_ + "/folders/" + Escaped(keys.front().ToText()));
    folder_ = FromUtf8(found.value_or(""));
    return found.has_value();
  }
  std::u16string Folder() const {
    if (!folder_) throw HttpError(Failure::NotInitialised, u"Run was not called");
    return *folder_;
  }

 private:
  Service& service_;
  std::string book_;
  std::optional<std::u16string> folder_;
};

class DataAccess : public Described<DataAccess> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"DataAccess", "")
        .Get<&DataAccess::Lookup>(u"Lookup", {{u"Name"}, Optional(u"Book")});
  }
  explicit DataAccess(Service& service) : service_(service) {}

  ObjectPtr Lookup(std::u16string name, ObjectPtr book) const {
    if (!EqualIgnoringCase(name, host::kPathKeyLookup)) {
      throw HttpError(Failure::UnknownLookup, u"There is no lookup \"" + name + u"\"");
    }
    return MakeRef<http::Lookup>(service_, book ? PathOf(book) : "");
  }

 private:
  Service& service_;
};

// --- Documents, and conditions in a notation that the service reads: (= Code "BIUDZ")

class ConditionBuilder : public Described<ConditionBuilder> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"ConditionBuilder", "")
        .Method<&ConditionBuilder::Equal>(u"Equal", {{u"Field"}, {u"Value"}})
        .Method<&ConditionBuilder::And>(u"And", {{u"First"}, {u"Second"}})
        .Method<&ConditionBuilder::In>(u"In", {{u"Field"}, {u"SubQuery"}});
  }
  std::u16string Equal(std::u16string field, Value value) const {
    const std::u16string text = ReplaceAll(ReplaceAll(value.ToText(), u"\\", u"\\\\"), u"\"", u"\\\"");
    return u"(= " + field + u" \"" + text + u"\")";
  }
  std::u16string And(std::u16string first, std::u16string second) const {
    if (first.empty() || second.empty())
      throw HttpError(Failure::WrongParameters, u"And needs two conditions");
    return u"(and " + first + u" " + second + u")";
  }
  std::u16string In(std::u16string field, std::u16string sub_query) const {
    if (!sub_query.starts_with(u'(') || !sub_query.ends_with(u')')) {
      throw HttpError(Failure::WrongParameters, u"In needs a sub-query in parentheses");
    }
    return u"(in " + field + u" " + sub_query + u")";
  }
};

class Query : public Described<Query> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Query", "")
        .Method<&Query::Init>(u"Init", {{u"Book"}})
        .Method<&Query::From>(u"From", {{u"Table"}, {u"Alias"}})
        .Method<&Query::Join>(u"Join", {{u"Table"}, {u"Alias"}, {u"Condition"}})
        .Method<&Query::Select>(u"Select", {{u"Field"}})
        .Property<&Query::distinct_>(u"Distinct")
        .Property<&Query::condition_>(u"Condition")
        .Get<&Query::Text>(u"Sql");
  }
  void Init(ObjectPtr book) {
    host::Book(book).BookCode();
    has_book_ = true;
  }
  void From(std::u16string table, std::u16string alias) { tables_ = table + u" " + alias; }
  void Join(std::u16string table, std::u16string alias, std::u16string condition) {
    tables_ += u", " + table + u" " + alias + u" on " + condition;
  }
  void Select(std::u16string field) { fields_ += u" " + field; }
  std::u16string Text() const {
    if (!has_book_ || tables_.empty() || fields_.empty()) {
      throw HttpError(Failure::NotInitialised, u"The query lacks its book, its table or its fields");
    }
    return (distinct_ ? u"each" : u"all") + fields_ + u" of " + tables_ + u" where " + condition_;
  }

 private:
  std::u16string tables_, fields_, condition_;
  bool distinct_ = false;
  bool has_book_ = false;
};

class DocumentSelection : public Described<DocumentSelection> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"DocumentSelection", "")
        .Method<&DocumentSelection::Init>(u"Init", {{u"Book"}})
        .Method<&DocumentSelection::Open>(u"Open", {{u"DocumentType"}, {u"From"}, {u"To"}, {u"Condition"}})
        .Get<&DocumentSelection::Field>(u"Field", {{u"Name"}});
  }
  DocumentSelection(Service& service, ListChooser& chooser) : service_(service), chooser_(chooser) {}

  void Init(ObjectPtr book) {
    chosen_.reset();
    book_ = PathOf(book);
  }
  std::int32_t Open(std::u16string type, Date from, Date to, std::u16string condition) {
    chosen_.reset();
    if (book_.empty()) throw HttpError(Failure::NotInitialised, u"Init was not called");
    documents_.emplace(Require(service_,
                               book_ + "/documents?type=" + Escaped(type) + "&from=" + DayText(from) +
                                   "&to=" + DayText(to) + "&where=" + Escaped(condition),
                               Failure::UnknownBook, u"documents"));
    ChoiceList list{u"Dokumentai", {u"Kodas", u"Data", u"Pavadinimas"}, {}};
    for (std::size_t row = 0; row < documents_->rows.size(); ++row) {
      list.rows.emplace_back();
      for (const char16_t* field : {u"Code", u"Date", u"Name"}) {
        list.rows.back().push_back(documents_->At(row, field).ToText());
      }
    }
    chosen_ = chooser_.Choose(list, u"");
    return chosen_ ? documents_->At(*chosen_, u"IDC").ToInt32() : 0;
  }
  Value Field(std::u16string name) const {
    if (!chosen_) throw AutomationError(kSubscriptOutOfRange);
    return documents_->At(*chosen_, name);
  }

 private:
  Service& service_;
  ListChooser& chooser_;
  std::string book_;
  std::optional<Records> documents_;
  std::optional<std::size_t> chosen_;
};

}  // namespace

ObjectPtr HttpHost::Create(std::u16string_view programmatic_identifier) {
  const auto is = [&](std::u16string_view known) {
    return EqualIgnoringCase(programmatic_identifier, known);
  };
  if (is(host::kCommonObjects)) return MakeRef<CommonObjects>(service_);
  if (is(host::kCompanyAttributes)) return MakeRef<CompanyAttributes>(service_);
  if (is(host::kDataAccess)) return MakeRef<DataAccess>(service_);
  if (is(host::kConditionBuilder)) return MakeRef<ConditionBuilder>();
  if (is(host::kQuery)) return MakeRef<Query>();
  if (is(host::kDocumentSelection)) return MakeRef<DocumentSelection>(service_, *services_.list_chooser);
  if (is(host::kPlant)) return MakeRef<embedded::Plant>();
  if (is(host::kClientTools)) return MakeRef<embedded::ClientTools>();
  if (is(host::kSettingsCollection)) return MakeRef<embedded::SettingsCollection>();
  if (is(host::kMessage)) return MakeRef<embedded::Message>(*services_.message_box);
  if (is(host::kMessageResource)) return MakeRef<embedded::MessageResource>(texts_);
  throw CannotCreate(programmatic_identifier);
}

}  // namespace qva::http
