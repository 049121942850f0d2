// The attributes of the company whose book is open.
#pragma once

#include <memory>
#include <optional>

#include "host/HostStore.h"
#include "platform/member_table.h"

namespace qva::embedded {

/// One address of a company with its contacts.
class Address : public Described<Address> {
 public:
  static ClassBuilder Describe();
  Address(std::u16string company_code, std::u16string kind, AddressRow row,
          std::shared_ptr<const HostDatabase> database)
      : company_code_(std::move(company_code)),
        kind_(std::move(kind)),
        row_(std::move(row)),
        database_(std::move(database)) {}

  /// "Street, postcode town", without the parts that are empty.
  std::u16string FullText() const;
  /// The contact of a kind, empty when there is none.
  std::u16string Contact(std::u16string kind) const;

 private:
  std::u16string company_code_;
  std::u16string kind_;
  AddressRow row_;
  std::shared_ptr<const HostDatabase> database_;
};

/// Every member but Init raises Failure::NotInitialised before a successful Init.
class CompanyAttributes : public Described<CompanyAttributes> {
 public:
  static ClassBuilder Describe();
  explicit CompanyAttributes(std::shared_ptr<HostStore> store) : store_(std::move(store)) {}

  /// Reads the company of a book. Raises Failure::WrongParameters without a book, Failure::UnknownBook for a
  /// book that the host does not know, and what HostStore::Open raises; the object is then as before.
  void Init(ObjectPtr book);
  std::u16string Code() const { return Company().code; }
  std::u16string VATCode() const { return Company().vat_code; }
  std::u16string Name() const { return Company().name; }
  /// The address of a kind; of a kind without a record an address whose texts are all empty.
  Ref<embedded::Address> Address(std::u16string kind) const;
  /// The name of the person of a role, empty when there is none.
  std::u16string ResponsiblePerson(std::u16string role) const;

 private:
  const CompanyRow& Company() const;

  std::shared_ptr<HostStore> store_;
  std::shared_ptr<const HostDatabase> database_;
  std::optional<CompanyRow> company_;
};

}  // namespace qva::embedded
