#include "platform/memory/MemoryHost.h"

#include <optional>

#include "platform/date.h"
#include "platform/host.h"
#include "platform/member_table.h"
#include "platform/memory/MemoryHostTables.h"
#include "platform/text.h"

namespace qva {
namespace {

AutomationError HostError(std::u16string description) {
  return AutomationError(kObjectErrorBase + 1, std::u16string(host::kCommonLibrary), std::move(description));
}

template <class T>
const T& Find(const std::map<std::u16string, T>& map, std::u16string_view key, std::u16string_view what) {
  const auto found = map.find(std::u16string(key));
  if (found == map.end()) throw HostError(u"No " + std::u16string(what) + u" '" + std::u16string(key) + u"'");
  return found->second;
}

class BookObject : public Described<BookObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Book", "")
        .Get<&BookObject::BookCode>(u"BookCode")
        .Get<&BookObject::Table>(u"Table", {{u"Name"}})
        .Default(u"BookCode");
  }
  BookObject(MemoryHost& host, std::u16string code) : host_(host), code_(std::move(code)) {}
  std::u16string BookCode() const { return code_; }
  ObjectPtr Table(std::u16string name) const {
    ObjectPtr table = MakeHostTable(host_, code_, name);
    if (!table) throw HostError(u"No table '" + name + u"'");
    return table;
  }
  const MemoryHost::Company& company() const { return Find(host_.books, code_, u"book"); }

 private:
  MemoryHost& host_;
  std::u16string code_;
};

class CommonObjectsObject : public Described<CommonObjectsObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"CommonObjects", "")
        .Method<&CommonObjectsObject::CreateBook>(u"CreateBook", {{u"BookCode"}});
  }
  explicit CommonObjectsObject(MemoryHost& host) : host_(host) {}
  ObjectPtr CreateBook(std::u16string code) {
    Find(host_.books, code, u"book");
    return MakeRef<BookObject>(host_, code);
  }

 private:
  MemoryHost& host_;
};

class PlantObject : public Described<PlantObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Plant", "").Method<&PlantObject::Init>(u"Init", {{u"Book"}});
  }
  explicit PlantObject(MemoryHost& host) : host_(host) {}
  void Init(ObjectPtr book) { host_.plants_made.push_back(host::Book(std::move(book)).BookCode()); }

 private:
  MemoryHost& host_;
};

class SessionObject : public Described<SessionObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Session", "").Method<&SessionObject::SetBook>(u"SetBook", {{u"Book"}});
  }
  explicit SessionObject(MemoryHost& host) : host_(host) {}
  void SetBook(ObjectPtr book) {
    host_.books_set.push_back(book ? host::Book(std::move(book)).BookCode() : std::u16string());
  }

 private:
  MemoryHost& host_;
};

class ClientToolsObject : public Described<ClientToolsObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"ClientTools", "").Get<&ClientToolsObject::Session>(u"Session");
  }
  explicit ClientToolsObject(MemoryHost& host) : session_(MakeRef<SessionObject>(host)) {}
  ObjectPtr Session() const { return session_; }

 private:
  ObjectPtr session_;
};

class AddressObject : public Described<AddressObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Address", "")
        .Get<&AddressObject::FullText>(u"FullText")
        .Get<&AddressObject::Contact>(u"Contact", {{u"Kind"}});
  }
  explicit AddressObject(const MemoryHost::Address& address) : address_(address) {}
  std::u16string FullText() const { return address_.full_text; }
  std::u16string Contact(std::u16string kind) const {
    const auto found = address_.contacts.find(kind);
    return found == address_.contacts.end() ? std::u16string() : found->second;
  }

 private:
  MemoryHost::Address address_;
};

class CompanyAttributesObject : public Described<CompanyAttributesObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"CompanyAttributes", "")
        .Method<&CompanyAttributesObject::Init>(u"Init", {{u"Book"}})
        .Get<&CompanyAttributesObject::Code>(u"Code")
        .Get<&CompanyAttributesObject::VATCode>(u"VATCode")
        .Get<&CompanyAttributesObject::Name>(u"Name")
        .Get<&CompanyAttributesObject::Address>(u"Address", {{u"Kind"}})
        .Get<&CompanyAttributesObject::ResponsiblePerson>(u"ResponsiblePerson", {{u"Role"}});
  }
  explicit CompanyAttributesObject(MemoryHost& host) : host_(host) {}
  void Init(ObjectPtr book) { company_ = &Find(host_.books, host::Book(book).BookCode(), u"book"); }
  std::u16string Code() const { return company().code; }
  std::u16string VATCode() const { return company().vat_code; }
  std::u16string Name() const { return company().name; }
  ObjectPtr Address(std::u16string kind) const {
    const auto found = company().addresses.find(kind);
    return MakeRef<AddressObject>(found == company().addresses.end() ? MemoryHost::Address() : found->second);
  }
  std::u16string ResponsiblePerson(std::u16string role) const {
    const auto found = company().persons.find(role);
    return found == company().persons.end() ? std::u16string() : found->second;
  }

 private:
  const MemoryHost::Company& company() const {
    if (!company_) throw HostError(u"Init was not called");
    return *company_;
  }
  MemoryHost& host_;
  const MemoryHost::Company* company_ = nullptr;
};

class LookupObject : public Described<LookupObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Lookup", "")
        .Method<&LookupObject::Run>(u"Run", {{u"Parameters"}})
        .Get<&LookupObject::Result>(u"Value");
  }
  explicit LookupObject(MemoryHost& host) : host_(host) {}
  bool Run(Value parameters) {
    const std::vector<Value>& keys = parameters.ToArray().elements;
    if (keys.size() != 1) throw HostError(u"A lookup takes one parameter");
    const auto found = host_.path_keys.find(keys.front().ToText());
    result_ = found == host_.path_keys.end() ? std::u16string() : found->second;
    return found != host_.path_keys.end();
  }
  std::u16string Result() const {
    if (!result_) throw HostError(u"Run was not called");
    return *result_;
  }

 private:
  MemoryHost& host_;
  std::optional<std::u16string> result_;
};

class DataAccessObject : public Described<DataAccessObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"DataAccess", "")
        .Get<&DataAccessObject::Lookup>(u"Lookup", {{u"Name"}, Optional(u"Book")});
  }
  explicit DataAccessObject(MemoryHost& host) : host_(host) {}
  ObjectPtr Lookup(std::u16string name, ObjectPtr) const {
    if (!EqualIgnoringCase(name, host::kPathKeyLookup)) throw HostError(u"No lookup '" + name + u"'");
    return MakeRef<LookupObject>(host_);
  }

 private:
  MemoryHost& host_;
};

class SettingsItemObject : public Described<SettingsItemObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"SettingsItem", "")
        .Get<&SettingsItemObject::Name>(u"Name")
        .Get<&SettingsItemObject::Type>(u"Type")
        .Property<&SettingsItemObject::Content, &SettingsItemObject::SetContent>(u"Value")
        .PutRef<&SettingsItemObject::SetObject>(u"Value")
        .Default(u"Value");
  }
  SettingsItemObject(std::u16string name, std::int32_t type, Value value)
      : name_(std::move(name)), type_(type), value_(std::move(value)) {}
  std::u16string Name() const { return name_; }
  std::int32_t Type() const { return type_; }
  Value Content() const { return value_; }
  void SetContent(Value value) {
    value_ = value.Is(Value::Type::Object) ? Get(value.ToObject(), u"") : std::move(value);
  }
  void SetObject(ObjectPtr object) { value_ = std::move(object); }

 private:
  std::u16string name_;
  std::int32_t type_;
  Value value_;
};

class SettingsCollectionObject : public Described<SettingsCollectionObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"SettingsCollection", "")
        .Method<&SettingsCollectionObject::Add>(
            u"Add", {{u"Name"}, {u"Type"}, Optional(u"Value", DefaultValue::Empty())})
        .Get<&SettingsCollectionObject::Item>(u"Item", {{u"Name"}})
        .Get<&SettingsCollectionObject::Count>(u"Count")
        .Default(u"Item");
  }
  void Add(std::u16string name, std::int32_t type, Value value) {
    if (name.empty()) throw HostError(u"A setting needs a name");
    if (FindItem(name)) {
      throw AutomationError(kKeyIsTaken, std::u16string(host::kCommonLibrary),
                            StandardDescription(kKeyIsTaken));
    }
    items_.push_back(MakeRef<SettingsItemObject>(name, type, std::move(value)));
  }
  ObjectPtr Item(Value index) const {
    if (index.Is(Value::Type::Text)) {
      if (auto item = FindItem(index.As<std::u16string>())) return item;
      throw AutomationError(kSubscriptOutOfRange);
    }
    const std::int32_t position = index.ToInt32();
    if (position < 1 || position > Count()) throw AutomationError(kSubscriptOutOfRange);
    return items_[static_cast<std::size_t>(position) - 1];
  }
  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }

 private:
  Ref<SettingsItemObject> FindItem(std::u16string_view name) const {
    for (const auto& item : items_) {
      if (EqualIgnoringCase(item->Name(), name)) return item;
    }
    return {};
  }
  std::vector<Ref<SettingsItemObject>> items_;
};

class MessageObject : public Described<MessageObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Message", "")
        .Method<&MessageObject::Show>(u"Show", {{u"Text"}, {u"Title"}, {u"Captions"}});
  }
  explicit MessageObject(MemoryHost& host) : host_(host) {}
  std::int32_t Show(std::u16string text, std::u16string title, Value captions) {
    if (!host_.message_box) throw HostError(u"No message box is set");
    std::vector<std::u16string> buttons;
    for (const Value& caption : captions.ToArray().elements) buttons.push_back(caption.ToText());
    if (buttons.empty()) throw HostError(u"A message needs a caption");
    return host_.message_box->Ask(text, title, buttons);
  }

 private:
  MemoryHost& host_;
};

class MessageResourceObject : public Described<MessageResourceObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"MessageResource", "")
        .Method<&MessageResourceObject::Init>(u"Init", {{u"Library"}})
        .Get<&MessageResourceObject::Text>(u"Text", {{u"Number"}});
  }
  explicit MessageResourceObject(MemoryHost& host) : host_(host) {}
  void Init(std::u16string library) {
    if (library != host::kMessageResourceLibrary) throw HostError(u"No library '" + library + u"'");
    host_.resource_library = std::move(library);
    has_texts_ = true;
  }
  std::u16string Text(std::int32_t number) const {
    if (!has_texts_) throw HostError(u"Init was not called");
    const auto found = host_.texts.find(number);
    if (found == host_.texts.end()) throw AutomationError(kSubscriptOutOfRange);
    return found->second;
  }

 private:
  MemoryHost& host_;
  bool has_texts_ = false;
};

}  // namespace

MemoryHost MemoryHost::Sample() {
  MemoryHost host;
  host.books[u"MEDVILNE"] = {
      .code = u"302511789",
      .vat_code = u"LT100005117810",
      .name = u"UAB „Medvilnė“",
      .addresses = {{u"",
                     {.full_text = u"Šaltinių g. 12, LT-03215 Vilnius",
                      .contacts = {{std::u16string(host::kTelephone), u"(8 5) 212 3456"},
                                   {std::u16string(host::kFax), u"(8 5) 212 3457"}}}}},
      .persons = {{std::u16string(host::kDirector), u"Žygimantas Ąžuolaitis"},
                  {std::u16string(host::kChiefAccountant), u"Eglė Čepėnienė"}},
  };
  host.books[u"BALTIJA"] = {.code = u"399503183",
                            .vat_code = u"",
                            .name = u"AB „Baltija“",
                            .addresses = {{u"", {}}},
                            .persons = {}};
  host.account_sets[u"MEDVILNE"] = {{u"F1", u"Finansinė apskaita", false}, {u"B1", u"Biudžetas", true}};
  host.account_sets[u"BALTIJA"] = {{u"F2", u"Finansinė apskaita", false}};
  const std::u16string budget(host::kBudgetDocument);
  host.documents = {{11, u"MEDVILNE", budget, u"BIU-2023", DateFromParts(2023, 6, 30)},
                    {12, u"MEDVILNE", budget, u"BIU-2024", DateFromParts(2024, 6, 30)},
                    {13, u"MEDVILNE", u"SASK", u"S-1", DateFromParts(2024, 6, 30)},
                    {14, u"BALTIJA", budget, u"BIU-B", DateFromParts(2024, 6, 30)}};
  host.path_keys[std::u16string(host::kArchiveKey)] = u"C:\\Ataskaitos";
  const std::int32_t numbers[] = {800, 801, 802, 803, 804, 805, 806, 807, 808, 810,  811,
                                  813, 814, 815, 816, 817, 818, 819, 820, 828, 836,  840,
                                  841, 842, 843, 844, 845, 846, 847, 848, 849, 16514};
  for (const std::int32_t number : numbers) host.texts[number] = u"Tekstas " + NumberText(number);
  for (const std::int32_t number : {800, 814, 819, 842}) host.texts[number] += u": %0";
  return host;
}

ObjectPtr MemoryHost::Create(std::u16string_view programmatic_identifier) {
  const auto is = [&](std::u16string_view id) { return EqualIgnoringCase(programmatic_identifier, id); };
  if (is(host::kCommonObjects)) return MakeRef<CommonObjectsObject>(*this);
  if (is(host::kPlant)) return MakeRef<PlantObject>(*this);
  if (is(host::kClientTools)) return MakeRef<ClientToolsObject>(*this);
  if (is(host::kSettingsCollection)) return MakeRef<SettingsCollectionObject>();
  if (is(host::kCompanyAttributes)) return MakeRef<CompanyAttributesObject>(*this);
  if (is(host::kDataAccess)) return MakeRef<DataAccessObject>(*this);
  if (is(host::kMessage)) return MakeRef<MessageObject>(*this);
  if (is(host::kMessageResource)) return MakeRef<MessageResourceObject>(*this);
  return MakeHostQueryObject(*this, programmatic_identifier);
}

}  // namespace qva
