#include "host/HostDatabase.h"

#include "host/HostError.h"
#include "host/ReadFile.h"
#include "host/SqlText.h"
#include "platform/host.h"
#include "platform/text.h"

namespace qva::embedded {
namespace {

using Type = FieldType;

/// The version of the schema, kept in the database's user_version.
constexpr std::u16string_view kSchemaVersion = u"3";

Database OpenChecked(const std::filesystem::path& file) {
  Database database(file, Database::Mode::Read);
  const Statement query = database.Prepare("PRAGMA user_version");
  Cursor row = query.Run({});
  const std::u16string version = row.Next() ? row.Text(0) : std::u16string();
  if (version != kSchemaVersion) {
    throw HostError(Failure::DatabaseUnusable, kCommonLibrary,
                    u"The host database \"" + PathText(file) + u"\" cannot be used: its schema has version " +
                        version + u" where " + std::u16string(kSchemaVersion) + u" is needed");
  }
  return database;
}

/// The first column of the first row.
std::optional<std::u16string> FirstText(Cursor&& row) {
  if (!row.Next()) return std::nullopt;
  return row.Text(0);
}

}  // namespace

HostDatabase::HostDatabase(const std::filesystem::path& file)
    : database_(OpenChecked(file)),
      book_(database_.Prepare("SELECT Code, Name FROM Book WHERE Code = ?1")),
      company_(database_.Prepare("SELECT Company.Code, Company.VATCode, Company.Name "
                                 "FROM Book JOIN Company ON Company.Code = Book.CompanyCode "
                                 "WHERE Book.Code = ?1")),
      address_(database_.Prepare("SELECT Street, PostCode, Town FROM Address "
                                 "WHERE CompanyCode = ?1 AND Kind = ?2")),
      contact_(database_.Prepare("SELECT Value FROM Contact "
                                 "WHERE CompanyCode = ?1 AND AddressKind = ?2 AND Kind = ?3")),
      person_(database_.Prepare("SELECT FullName FROM ResponsiblePerson "
                                "WHERE CompanyCode = ?1 AND Role = ?2")),
      folder_(database_.Prepare("SELECT Folder FROM PathKey WHERE Code = ?1 AND BookCode IN (?2, '') "
                                "ORDER BY BookCode DESC LIMIT 1")),
      document_type_(database_.Prepare("SELECT Name FROM DocumentType WHERE Code = ?1")),
      books_(database_, host::kBookTable, TableReader::Scope::AllBooks, host::kCodeField,
             {{host::kCodeField, Type::Text}, {host::kNameField, Type::Text}, {u"CompanyCode", Type::Text}}),
      account_sets_(database_, host::kAccountSetTable, TableReader::Scope::OneBook, host::kCodeField,
                    {{u"BookCode", Type::Text},
                     {host::kCodeField, Type::Text},
                     {host::kNameField, Type::Text},
                     {host::kIsBudgetField, Type::Flag}}),
      bank_account_roles_(
          database_, host::kCarrierTable, TableReader::Scope::OneBook, host::kCodeField,
          {{u"BookCode", Type::Text}, {host::kCodeField, Type::Text}, {host::kNameField, Type::Text}}),
      documents_(database_, host::kDocumentTable, TableReader::Scope::OneBook, host::kDocumentIdField,
                 {{host::kDocumentIdField, Type::Number},
                  {u"BookCode", Type::Text},
                  {host::kDocumentTypeField, Type::Text},
                  {host::kCodeField, Type::Text},
                  {u"DocDate", Type::Day},
                  {host::kNameField, Type::Text}}),
      postings_(database_, u"GLDocumentPosting", TableReader::Scope::OneBook, host::kCodeField,
                {{u"BookCode", Type::Text},
                 {host::kCodeField, Type::Text},
                 {host::kPostedDocumentField, Type::Number},
                 {host::kPostedAccountSetField, Type::Text},
                 {u"AccountCode", Type::Text},
                 {u"Amount", Type::Amount}}),
      accounts_(database_, u"GLAccount", TableReader::Scope::OneBook, host::kCodeField,
                {{u"BookCode", Type::Text}, {host::kCodeField, Type::Text}, {host::kNameField, Type::Text}}),
      entries_(database_, u"GLEntry", TableReader::Scope::OneBook, u"Id",
               {{u"Id", Type::Number},
                {u"BookCode", Type::Text},
                {u"EntryDate", Type::Day},
                {u"Kind", Type::Text},
                {u"DebitAccount", Type::Text},
                {u"CreditAccount", Type::Text},
                {u"Amount", Type::Amount},
                {host::kNameField, Type::Text}}),
      account_months_(database_, u"GLAccountMonth", TableReader::Scope::OneBook, host::kCodeField,
                      {{u"BookCode", Type::Text},
                       {host::kCodeField, Type::Text},
                       {u"AccountCode", Type::Text},
                       {u"Month", Type::Day},
                       {u"IsClosing", Type::Flag},
                       {u"Debit", Type::Amount},
                       {u"Credit", Type::Amount}}),
      vat_months_(database_, u"VATMonth", TableReader::Scope::OneBook, host::kCodeField,
                  {{u"BookCode", Type::Text},
                   {host::kCodeField, Type::Text},
                   {u"Month", Type::Day},
                   {u"VATClassCode", Type::Text},
                   {u"IsSale", Type::Flag},
                   {u"Base", Type::Amount},
                   {u"VATAmount", Type::Amount}}) {
  // Callers' conditions alone query the view; whether it is there shows here.
  database_.Prepare("SELECT " + ToUtf8(host::kPostedDocumentField) + ", " +
                    ToUtf8(host::kPostedAccountSetField) + " FROM " + ToUtf8(host::kPostingView));
}

std::optional<BookRow> HostDatabase::FindBook(std::u16string_view book_code) const {
  Cursor row = book_.Run({book_code});
  if (!row.Next()) return std::nullopt;
  return BookRow{row.Text(0), row.Text(1)};
}

std::optional<CompanyRow> HostDatabase::FindCompany(std::u16string_view book_code) const {
  Cursor row = company_.Run({book_code});
  if (!row.Next()) return std::nullopt;
  return CompanyRow{row.Text(0), row.Text(1), row.Text(2)};
}

std::optional<AddressRow> HostDatabase::FindAddress(std::u16string_view company_code,
                                                    std::u16string_view kind) const {
  Cursor row = address_.Run({company_code, kind});
  if (!row.Next()) return std::nullopt;
  return AddressRow{row.Text(0), row.Text(1), row.Text(2)};
}

std::optional<std::u16string> HostDatabase::FindContact(std::u16string_view company_code,
                                                        std::u16string_view address_kind,
                                                        std::u16string_view kind) const {
  return FirstText(contact_.Run({company_code, address_kind, kind}));
}

std::optional<std::u16string> HostDatabase::FindPerson(std::u16string_view company_code,
                                                       std::u16string_view role) const {
  return FirstText(person_.Run({company_code, role}));
}

std::optional<std::u16string> HostDatabase::FindFolder(std::u16string_view path_key,
                                                       std::u16string_view book_code) const {
  return FirstText(folder_.Run({path_key, book_code}));
}

std::vector<std::u16string> HostDatabase::ArchiveFolders() const {
  std::vector<std::u16string> folders;
  const Statement query = database_.Prepare("SELECT DISTINCT Folder FROM PathKey WHERE Code = ?1");
  for (Cursor row = query.Run({host::kArchiveKey}); row.Next();) folders.push_back(row.Text(0));
  return folders;
}

const TableReader* HostDatabase::FindTable(std::u16string_view name) const {
  for (const TableReader* table : {&books_, &account_sets_, &bank_account_roles_, &documents_, &postings_,
                                   &accounts_, &entries_, &account_months_, &vat_months_}) {
    if (EqualIgnoringCase(table->name(), name)) return table;
  }
  return nullptr;
}

std::optional<std::u16string> HostDatabase::FindDocumentTypeName(std::u16string_view document_type) const {
  return FirstText(document_type_.Run({document_type}));
}

std::vector<Record> HostDatabase::FindDocuments(std::u16string_view book_code,
                                                std::u16string_view document_type, Date from, Date to,
                                                std::u16string_view condition) const {
  const std::string expression = ToUtf8(condition);
  // A text could close the parentheses that it is put into, or stand there without being an expression. As
  // the end of a statement of its own it passes only when its parentheses match, and within parentheses only
  // when no clause or statement follows the expression: a text that passes both is one expression.
  const Statement alone = database_.Prepare("SELECT 1 FROM THDocument WHERE " + expression, Author::Caller);
  if (alone.ParameterCount() != 0) {
    throw HostError(Failure::WrongCondition, kCommonLibrary,
                    u"The condition cannot be used: it has parameters");
  }
  const Statement documents = database_.Prepare(
      documents_.Select() + " WHERE BookCode = ?1 AND DocTypeCode = ?2 AND DocDate BETWEEN ?3 AND ?4 AND (" +
          expression + ") ORDER BY DocDate, Code",
      Author::Caller);
  return documents_.ReadAll(documents.Run({book_code, document_type, DayText(from), DayText(to)}));
}

}  // namespace qva::embedded
