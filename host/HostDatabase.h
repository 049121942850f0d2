// The host's database: every query on it, but for those on tables as such (host/TableReader.h).
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/Database.h"
#include "host/TableReader.h"
#include "platform/value.h"

namespace qva::embedded {

struct BookRow {
  std::u16string code;
  std::u16string name;
};

struct CompanyRow {
  std::u16string code;  ///< registration code
  std::u16string vat_code;
  std::u16string name;
};

struct AddressRow {
  std::u16string street;
  std::u16string post_code;
  std::u16string town;
};

/// A database of the host's schema (host/sample.sql), opened for reading. All codes, kinds, roles and keys
/// are compared exactly. Every operation raises Failure::DatabaseUnusable when the database fails it.
class HostDatabase {
 public:
  /// Opens an existing file; also raises when the schema is of another version or lacks a table or column.
  explicit HostDatabase(const std::filesystem::path& file);

  std::optional<BookRow> FindBook(std::u16string_view book_code) const;
  /// The company whose book it is.
  std::optional<CompanyRow> FindCompany(std::u16string_view book_code) const;
  /// The address of a kind; the empty kind is the company's own.
  std::optional<AddressRow> FindAddress(std::u16string_view company_code, std::u16string_view kind) const;
  /// The contact of a kind at the address of a kind.
  std::optional<std::u16string> FindContact(std::u16string_view company_code,
                                            std::u16string_view address_kind, std::u16string_view kind) const;
  /// The full name of the person of a role.
  std::optional<std::u16string> FindPerson(std::u16string_view company_code, std::u16string_view role) const;
  /// The folder of a path key: the book's own, else the common one. The empty code means no book.
  std::optional<std::u16string> FindFolder(std::u16string_view path_key, std::u16string_view book_code) const;

  /// The folders in which books keep their reports.
  std::vector<std::u16string> ArchiveFolders() const;

  /// The table that books give out under a name in any letter case; null when there is none.
  const TableReader* FindTable(std::u16string_view name) const;
  /// The table of all documents.
  const TableReader& documents() const { return documents_; }
  /// What the documents of a type are called together.
  std::optional<std::u16string> FindDocumentTypeName(std::u16string_view document_type) const;
  /// The records of documents() of a book and type, from day to day with both included, that meet a condition
  /// on their fields; by date, then code. The notation of conditions ends here: ConditionBuilder and Query
  /// have made SQL of it, which is run as it is given, as one expression: it can leave documents out and
  /// cannot bring any in. Raises Failure::WrongCondition for any other text, and when its evaluation fails.
  std::vector<Record> FindDocuments(std::u16string_view book_code, std::u16string_view document_type,
                                    Date from, Date to, std::u16string_view condition) const;

 private:
  // All statements are prepared at once, so that a database that lacks something is refused when it is
  // opened. The connection comes first: it must outlive them.
  Database database_;
  Statement book_;
  Statement company_;
  Statement address_;
  Statement contact_;
  Statement person_;
  Statement folder_;
  Statement document_type_;
  TableReader books_;
  TableReader account_sets_;
  TableReader bank_account_roles_;
  TableReader documents_;
  TableReader postings_;
  TableReader accounts_;
  TableReader entries_;
  TableReader account_months_;
  TableReader vat_months_;
};

}  // namespace qva::embedded
