// A host over a service on the network, with no database behind it: the example of docs/extending.md.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/services.h"

namespace qva::http {

/// What the host asks, by GET. Its answers are UTF-8.
class Service {
 public:
  virtual ~Service() = default;

  /// The body of a resource; nothing when there is no such resource. Raises 57 (Device I/O error) when the
  /// service does not answer.
  virtual std::optional<std::string> Get(const std::string& path) = 0;
};

/// Creates the host's components (platform/host.h) over the resources
/// - /books/CODE: the book's name
/// - /books/CODE/company: table of one record: Code, VATCode, Name, Address, TEL, FA, DIR, FDIR
/// - /books/CODE/tables/name: table, its key first; the name is in lower case
/// - /books/CODE/documents?…: table: IDC, Code, Date, Name, by day and code; type, days and condition as
///   asked
/// - /books/CODE/folders/KEY: a path key's folder; /folders/KEY where no book is meant
///
/// A table has a line for each record below one of the fields' names and types ("Debit:money"), parted by
/// tabs. What needs no data comes from the embedded host.
class HttpHost : public ObjectFactory {
 public:
  /// Borrows the service and, of the services, message box and list chooser. `texts` is the folder of the
  /// resource libraries.
  HttpHost(Service& service, const Services& services, std::filesystem::path texts)
      : service_(service), services_(services), texts_(std::move(texts)) {}

  ObjectPtr Create(std::u16string_view programmatic_identifier) override;

 private:
  Service& service_;
  const Services services_;
  const std::filesystem::path texts_;
};

}  // namespace qva::http
