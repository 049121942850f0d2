#include "host/CompanyAttributes.h"

#include "host/Book.h"
#include "host/HostError.h"

namespace qva::embedded {
namespace {

/// The two texts with the separator between them when both are there.
std::u16string Joined(const std::u16string& first, std::u16string_view separator,
                      const std::u16string& second) {
  if (first.empty() || second.empty()) return first + second;
  return first + std::u16string(separator) + second;
}

}  // namespace

ClassBuilder Address::Describe() {
  return ClassBuilder(u"Address", "An address of a company")
      .Get<&Address::FullText>(u"FullText", {}, "Street, postcode and town in one line")
      .Get<&Address::Contact>(u"Contact", {{u"Kind"}}, "The contact of a kind");
}

std::u16string Address::FullText() const {
  return Joined(row_.street, u", ", Joined(row_.post_code, u" ", row_.town));
}

std::u16string Address::Contact(std::u16string kind) const {
  return database_->FindContact(company_code_, kind_, kind).value_or(u"");
}

ClassBuilder CompanyAttributes::Describe() {
  return ClassBuilder(u"CompanyAttributes", "The attributes of a company")
      .Method<&CompanyAttributes::Init>(u"Init", {{u"Book"}}, "Reads the company of a book")
      .Get<&CompanyAttributes::Code>(u"Code", {}, "Registration code")
      .Get<&CompanyAttributes::VATCode>(u"VATCode", {}, "VAT payer code")
      .Get<&CompanyAttributes::Name>(u"Name", {}, "Name")
      .Get<&CompanyAttributes::Address>(u"Address", {{u"Kind"}}, "The address of a kind")
      .Get<&CompanyAttributes::ResponsiblePerson>(u"ResponsiblePerson", {{u"Role"}},
                                                  "The name of the person of a role");
}

void CompanyAttributes::Init(ObjectPtr book) {
  const std::u16string book_code = CodeOfBook(book, kCommonLibrary, u"CompanyAttributes.Init");
  auto database = store_->Open();
  std::optional<CompanyRow> company = database->FindCompany(book_code);
  if (!company) {
    throw HostError(Failure::UnknownBook, kCommonLibrary,
                    u"The host database has no company for the book \"" + book_code + u"\"");
  }
  database_ = std::move(database);
  company_ = std::move(company);
}

Ref<Address> CompanyAttributes::Address(std::u16string kind) const {
  const std::u16string& company_code = Company().code;
  AddressRow row = database_->FindAddress(company_code, kind).value_or(AddressRow{});
  return MakeRef<embedded::Address>(company_code, std::move(kind), std::move(row), database_);
}

std::u16string CompanyAttributes::ResponsiblePerson(std::u16string role) const {
  const std::u16string& company_code = Company().code;
  return database_->FindPerson(company_code, role).value_or(u"");
}

const CompanyRow& CompanyAttributes::Company() const {
  if (!company_) {
    throw HostError(Failure::NotInitialised, kCommonLibrary,
                    u"CompanyAttributes was used before CompanyAttributes.Init");
  }
  return *company_;
}

}  // namespace qva::embedded
