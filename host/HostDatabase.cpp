#include "host/HostDatabase.h"

#include "host/HostError.h"
#include "host/ReadFile.h"

namespace qva::embedded {
namespace {

/// The version of the schema, kept in the database's user_version.
constexpr std::u16string_view kSchemaVersion = u"1";

Database OpenChecked(const std::filesystem::path& file) {
  Database database(file, Database::Mode::Read);
  const Query query = database.Prepare("PRAGMA user_version");
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
                                "ORDER BY BookCode DESC LIMIT 1")) {
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

}  // namespace qva::embedded
