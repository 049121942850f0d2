// The host's database: every query on it in one place.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/Database.h"

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

 private:
  // All queries are prepared at once, so that a database that lacks something is refused when it is opened.
  // The connection comes first: it must outlive them.
  Database database_;
  Query book_;
  Query company_;
  Query address_;
  Query contact_;
  Query person_;
  Query folder_;
};

}  // namespace qva::embedded
