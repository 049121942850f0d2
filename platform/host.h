// The host system's closed components as the library sees them. Everything that depends on what an
// installation's host really calls its classes and members stands in this one file; docs/host-interface.md
// is its table. Each operation raises the component's own AutomationError when it fails.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation.h"
#include "platform/object_factory.h"
#include "platform/text.h"

namespace qva::host {

/// Programmatic identifiers of the host's creatable classes.
inline constexpr std::u16string_view kCommonObjects = u"NVXCommonObjects.CommonObjects";
inline constexpr std::u16string_view kPlant = u"NVXCommonObjects.Plant";
inline constexpr std::u16string_view kClientTools = u"NVXClientTools.ClientTools";
inline constexpr std::u16string_view kSettingsCollection = u"NVXCommonObjects.SettingsCollection";
inline constexpr std::u16string_view kCompanyAttributes = u"NVXCommonObjects.CompanyAttributes";
inline constexpr std::u16string_view kDataAccess = u"NVXCommonObjects.DataAccess";
inline constexpr std::u16string_view kQuery = u"NVXCommonObjects.Query";
inline constexpr std::u16string_view kConditionBuilder = u"NVXCommonObjects.ConditionBuilder";
inline constexpr std::u16string_view kDocumentSelection = u"NVXCommonObjects.DocumentSelection";
inline constexpr std::u16string_view kMessage = u"QVA_Common.Message";
inline constexpr std::u16string_view kMessageResource = u"QVA_Common.MessageResource";

/// The library of a class, the source of its errors.
constexpr std::u16string_view LibraryOf(std::u16string_view programmatic_identifier) {
  return programmatic_identifier.substr(0, programmatic_identifier.find(u'.'));
}
/// That of most of them.
inline constexpr std::u16string_view kCommonLibrary = LibraryOf(kCommonObjects);

/// All of them: the table by which fronts register them, the doctor looks for them and tests create them. The
/// order stays, a new one comes last: class identifiers of COM are made of the places (server/demo).
inline constexpr std::u16string_view kCreatableClasses[] = {
    kCommonObjects,     kPlant,      kClientTools,    kSettingsCollection,
    kCompanyAttributes, kDataAccess, kQuery,          kConditionBuilder,
    kDocumentSelection, kMessage,    kMessageResource};

/// True for an identifier of one of the host's libraries, whether the class is there or not.
inline bool IsHostIdentifier(std::u16string_view programmatic_identifier) {
  const std::u16string_view library = LibraryOf(programmatic_identifier);
  if (library == programmatic_identifier) return false;  // no class of any
  return std::ranges::any_of(kCreatableClasses, [&](std::u16string_view creatable) {
    return EqualIgnoringCase(LibraryOf(creatable), library);
  });
}

// The names by which the library asks the components, the other half of the page's table.

/// The library of the numbered texts.
inline constexpr std::u16string_view kMessageResourceLibrary = u"QVAFormRes";
/// The lookup of folders, and the key of the reports archive's.
inline constexpr std::u16string_view kPathKeyLookup = u"PathKey";
inline constexpr std::u16string_view kArchiveKey = u"BookRepSave";
/// Kinds of contacts and roles of persons.
inline constexpr std::u16string_view kTelephone = u"TEL";
inline constexpr std::u16string_view kFax = u"FA";
inline constexpr std::u16string_view kDirector = u"DIR";
inline constexpr std::u16string_view kChiefAccountant = u"FDIR";
/// A book's tables and views.
inline constexpr std::u16string_view kBookTable = u"Book";
inline constexpr std::u16string_view kAccountSetTable = u"GLAccountSet";
inline constexpr std::u16string_view kCarrierTable = u"REFBankAccountRole";  ///< lends lists its structure
inline constexpr std::u16string_view kDocumentTable = u"THDocument";
inline constexpr std::u16string_view kPostingView = u"GLContAccountPostBBN";
/// Their fields: of every table of codes, of account sets, of documents, of postings.
inline constexpr std::u16string_view kCodeField = u"Code";
inline constexpr std::u16string_view kNameField = u"Name";
inline constexpr std::u16string_view kIsBudgetField = u"IsBudget";
inline constexpr std::u16string_view kDocumentIdField = u"IDC";
inline constexpr std::u16string_view kDocumentTypeField = u"DocTypeCode";
inline constexpr std::u16string_view kPostedDocumentField = u"DocId";
inline constexpr std::u16string_view kPostedAccountSetField = u"AccSetCode";
/// The type of documents that budgets are.
inline constexpr std::u16string_view kBudgetDocument = u"BOBN";
/// The host's settings store: application; the forms' section, with the code of the current book; the general
/// section, with whether forms are debugged.
inline constexpr std::u16string_view kSettingsApplication = u"Quillon Enterprise";
inline constexpr std::u16string_view kFormsSection = u"Forms\\MDI";
inline constexpr std::u16string_view kBookSetting = u"P0";
inline constexpr std::u16string_view kGeneralSection = u"General";
inline constexpr std::u16string_view kFormDebugSetting = u"AppFormDebug";

/// One of a book's tables.
class Table : public Facade {
 public:
  using Facade::Facade;
  /// Makes the record of a primary key the current one; false, and no current record, when there is none.
  bool Seek(std::u16string_view key) const { return Call(u"Seek", {key}).ToBoolean(); }
  /// A field of the current record: texts, whole numbers, Booleans for flags, dates. Raises 9 for a field
  /// that the table lacks, and when there is no record.
  qva::Value Field(std::u16string_view name) const { return Get(u"Field", {name}); }
  /// The named fields of all records in the order of the primary key: a block of records by fields, both from
  /// 1. Empty when there are no records. Raises 9 for a field that the table lacks.
  qva::Value Rows(const std::vector<Value>& fields) const { return Get(u"Rows", {Array::Of(fields)}); }
};

/// One company's books, as CreateBook returns them.
class Book : public Facade {
 public:
  using Facade::Facade;
  /// The code that names the book.
  std::u16string BookCode() const { return Get(u"BookCode").ToText(); }
  /// The table of a name. Raises when the book has none.
  qva::host::Table Table(std::u16string_view name) const {
    return qva::host::Table(GetObject(u"Table", {name}));
  }
};

/// The host's common object.
class CommonObjects : public Facade {
 public:
  using Facade::Facade;
  static CommonObjects Create(ObjectFactory& factory) {
    return CommonObjects(factory.Create(kCommonObjects));
  }
  /// Opens the book that `code` names. Raises when there is none or its database cannot be read.
  Book CreateBook(std::u16string_view code) const { return Book(Call(u"CreateBook", {code}).ToObject()); }
  /// The table of all books. The embedded host alone has it.
  Table Books() const { return Table(GetObject(u"Books")); }
};

/// The host's plant object.
class Plant : public Facade {
 public:
  using Facade::Facade;
  static Plant Create(ObjectFactory& factory) { return Plant(factory.Create(kPlant)); }
  /// To be called first.
  void Init(const Book& book) const { Call(u"Init", {book.object()}); }
};

/// The host's client tools. The session is their first property.
class ClientTools : public Facade {
 public:
  using Facade::Facade;
  static ClientTools Create(ObjectFactory& factory) { return ClientTools(factory.Create(kClientTools)); }
  /// Makes the book the one that the host's client tools work on.
  void SetBook(const Book& book) const { qva::Call(GetObject(u"Session"), u"SetBook", {book.object()}); }
};

/// An address of a company.
class Address : public Facade {
 public:
  using Facade::Facade;
  /// Street, postcode and town in one line.
  std::u16string FullText() const { return Get(u"FullText").ToText(); }
  /// The contact of a kind. Empty when there is none.
  std::u16string Contact(std::u16string_view kind) const { return Get(u"Contact", {kind}).ToText(); }
};

/// A company's attributes.
class CompanyAttributes : public Facade {
 public:
  using Facade::Facade;
  static CompanyAttributes Create(ObjectFactory& factory) {
    return CompanyAttributes(factory.Create(kCompanyAttributes));
  }
  /// To be called first.
  void Init(const Book& book) const { Call(u"Init", {book.object()}); }
  /// Registration code.
  std::u16string Code() const { return Get(u"Code").ToText(); }
  std::u16string VATCode() const { return Get(u"VATCode").ToText(); }
  std::u16string Name() const { return Get(u"Name").ToText(); }
  /// The address record of a kind; the empty kind is the company's own address. A kind without a record gives
  /// an address whose texts are empty.
  qva::host::Address Address(std::u16string_view kind) const {
    return qva::host::Address(GetObject(u"Address", {kind}));
  }
  /// The name of the person of a role. Empty when there is none.
  std::u16string ResponsiblePerson(std::u16string_view role) const {
    return Get(u"ResponsiblePerson", {role}).ToText();
  }
};

/// Message texts by number.
class MessageResource : public Facade {
 public:
  using Facade::Facade;
  static MessageResource Create(ObjectFactory& factory) {
    return MessageResource(factory.Create(kMessageResource));
  }
  /// Takes the texts from the named resource library. Raises when there is no such library.
  void Init(std::u16string_view library) const { Call(u"Init", {library}); }
  /// The text of a number; raises 9 (Subscript out of range) for a number without text.
  std::u16string Text(std::int32_t number) const { return Get(u"Text", {number}).ToText(); }
};

/// The common message object.
class Message : public Facade {
 public:
  using Facade::Facade;
  static Message Create(ObjectFactory& factory) { return Message(factory.Create(kMessage)); }
  /// Shows a text with one button for each caption, in order. Result: the number of the pressed button, the
  /// first being 1.
  std::int32_t Show(std::u16string_view text, std::u16string_view title,
                    const std::vector<Value>& captions) const {
    return Call(u"Show", {text, title, Array::Of(captions)}).ToInt32();
  }
};

/// A lookup of the host's data access.
class Lookup : public Facade {
 public:
  using Facade::Facade;
  /// Runs the lookup; true when it found something.
  bool Run(const std::vector<Value>& parameters) const {
    return Call(u"Run", {Array::Of(parameters)}).ToBoolean();
  }
  /// What the last Run found, empty when it found nothing.
  std::u16string Result() const { return Get(u"Value").ToText(); }
};

/// The host's data access.
class DataAccess : public Facade {
 public:
  using Facade::Facade;
  static DataAccess Create(ObjectFactory& factory) { return DataAccess(factory.Create(kDataAccess)); }
  /// The lookup of a name on a book; no book means the host's common data.
  qva::host::Lookup Lookup(std::u16string_view name, const Book& book) const {
    return qva::host::Lookup(GetObject(u"Lookup", {name, book.object()}));
  }
};

// Conditions and queries are texts in a notation of the host's own, such as its database's SQL: its condition
// builder and its query make them, its document selection takes them. The library reads nothing of them. What
// it says itself are the parentheses around a sub-query, and "field = field" as the condition of a join.

/// Makes the text of conditions, with every value quoted as the host's database wants it.
class ConditionBuilder : public Facade {
 public:
  using Facade::Facade;
  static ConditionBuilder Create(ObjectFactory& factory) {
    return ConditionBuilder(factory.Create(kConditionBuilder));
  }
  /// "field = value"; whatever characters the value has, it stays one value.
  std::u16string Equal(std::u16string_view field, Value value) const {
    return Call(u"Equal", {field, std::move(value)}).ToText();
  }
  /// Both conditions, joined with AND.
  std::u16string And(std::u16string_view first, std::u16string_view second) const {
    return Call(u"And", {first, second}).ToText();
  }
  /// "field IN sub-query". The sub-query comes in parentheses; none are added.
  std::u16string In(std::u16string_view field, std::u16string_view sub_query) const {
    return Call(u"In", {field, sub_query}).ToText();
  }
};

/// A query on a book's tables and views, put together part by part.
class Query : public Facade {
 public:
  using Facade::Facade;
  static Query Create(ObjectFactory& factory) { return Query(factory.Create(kQuery)); }
  /// To be called first.
  void Init(const Book& book) const { Call(u"Init", {book.object()}); }
  /// The table or view that the query reads, under an alias.
  void From(std::u16string_view table, std::u16string_view alias) const { Call(u"From", {table, alias}); }
  /// One more table or view, with the condition that ties it to the others.
  void Join(std::u16string_view table, std::u16string_view alias, std::u16string_view condition) const {
    Call(u"Join", {table, alias, condition});
  }
  /// One more field of the result, such as "AccPost.DocId".
  void Select(std::u16string_view field) const { Call(u"Select", {field}); }
  /// Whether equal rows of the result count once.
  void SetDistinct(bool distinct) const { Put(u"Distinct", distinct); }
  /// The condition that rows must meet, as the condition builder makes it.
  void SetCondition(std::u16string_view condition) const { Put(u"Condition", condition); }
  /// The query's text.
  std::u16string Sql() const { return Get(u"Sql").ToText(); }
};

/// Lets the user select one of a book's documents.
class DocumentSelection : public Facade {
 public:
  using Facade::Facade;
  static DocumentSelection Create(ObjectFactory& factory) {
    return DocumentSelection(factory.Create(kDocumentSelection));
  }
  /// To be called first.
  void Init(const Book& book) const { Call(u"Init", {book.object()}); }
  /// Shows the documents of a type whose date lies within the range (both days included) and which meet the
  /// condition. Result: the identifier (a number above 0) of the one that the user selected, 0 when none.
  Value Open(std::u16string_view document_type, Date from, Date to, std::u16string_view condition) const {
    return Call(u"Open", {document_type, from, to, condition});
  }
  /// A field of the selected document, such as "Code".
  qva::Value Field(std::u16string_view name) const { return Get(u"Field", {name}); }
};

/// One named item of a settings collection.
class SettingsItem : public Facade {
 public:
  using Facade::Facade;
  qva::Value Value() const { return Get(u"Value"); }
  void SetValue(qva::Value value) const { Put(u"Value", std::move(value)); }
  void SetObject(ObjectPtr object) const { PutRef(u"Value", std::move(object)); }
};

/// The host's keyed settings collection.
class SettingsCollection : public Facade {
 public:
  using Facade::Facade;
  static SettingsCollection Create(ObjectFactory& factory) {
    return SettingsCollection(factory.Create(kSettingsCollection));
  }
  /// Adds an item of the host's own type code. Raises 457 when the name (in any letter case) is taken.
  void Add(std::u16string_view name, std::int32_t type_code) const { Call(u"Add", {name, type_code}); }
  void Add(std::u16string_view name, std::int32_t type_code, Value value) const {
    Call(u"Add", {name, type_code, std::move(value)});
  }
  /// The item of a name in any letter case. Raises 9 when there is none.
  SettingsItem Item(std::u16string_view name) const { return SettingsItem(GetObject(u"Item", {name})); }
};

}  // namespace qva::host
