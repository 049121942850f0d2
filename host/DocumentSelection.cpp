#include "host/DocumentSelection.h"

#include "host/Book.h"
#include "host/HostError.h"
#include "platform/host.h"

namespace qva::embedded {
namespace {

/// The title of the list where the type of document is unknown.
constexpr std::u16string_view kTitle = u"Dokumentai";

struct Column {
  std::u16string_view field;
  std::u16string_view caption;
};
constexpr Column kColumns[] = {
    {host::kCodeField, u"Kodas"}, {u"DocDate", u"Data"}, {host::kNameField, u"Pavadinimas"}};

ChoiceList ListOf(const std::vector<Record>& documents, const TableReader& table) {
  ChoiceList list;
  list.rows.resize(documents.size());
  for (const Column& column : kColumns) {
    list.captions.emplace_back(column.caption);
    const std::size_t position = table.FieldPosition(column.field);
    for (std::size_t i = 0; i < documents.size(); ++i) {
      list.rows[i].push_back(documents[i][position].ToText());
    }
  }
  return list;
}

}  // namespace

ClassBuilder DocumentSelection::Describe() {
  return ClassBuilder(u"DocumentSelection", "Lets the user select a document")
      .Method<&DocumentSelection::Init>(u"Init", {{u"Book"}}, "Gives the selection its book")
      .Method<&DocumentSelection::Open>(u"Open", {{u"DocumentType"}, {u"From"}, {u"To"}, {u"Condition"}},
                                        "Shows the documents and lets the user select one")
      .Get<&DocumentSelection::Field>(u"Field", {{u"Name"}}, "A field of the selected document");
}

void DocumentSelection::Init(ObjectPtr book) {
  std::u16string book_code = CodeOfBook(book, kCommonLibrary, u"DocumentSelection.Init");
  auto database = store_->Open();
  if (!database->FindBook(book_code)) {
    throw HostError(Failure::UnknownBook, kCommonLibrary,
                    u"There is no book \"" + book_code + u"\" in the host database");
  }
  database_ = std::move(database);
  book_code_ = std::move(book_code);
  document_.reset();
}

std::int32_t DocumentSelection::Open(std::u16string document_type, Date from, Date to,
                                     std::u16string condition) {
  document_.reset();
  if (!database_) {
    throw HostError(Failure::NotInitialised, kCommonLibrary,
                    u"DocumentSelection.Open was called before DocumentSelection.Init");
  }
  if (!list_chooser_) {
    throw HostError(Failure::NoListChooser, kCommonLibrary,
                    u"DocumentSelection.Open has nothing that could show the documents");
  }
  std::vector<Record> documents = database_->FindDocuments(book_code_, document_type, from, to, condition);
  const TableReader& table = database_->documents();
  ChoiceList list = ListOf(documents, table);
  list.title = database_->FindDocumentTypeName(document_type).value_or(std::u16string(kTitle));
  const std::optional<std::size_t> choice = list_chooser_->Choose(list, u"");
  if (!choice) return 0;
  document_ = std::move(documents[*choice]);
  return (*document_)[table.FieldPosition(host::kDocumentIdField)].ToInt32();
}

Value DocumentSelection::Field(std::u16string name) const {
  if (!document_) {
    throw AutomationError(kSubscriptOutOfRange, std::u16string(kCommonLibrary), u"No document is selected");
  }
  return (*document_)[database_->documents().FieldPosition(name)];
}

}  // namespace qva::embedded
