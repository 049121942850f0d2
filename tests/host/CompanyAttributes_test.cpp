#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

using CompanyAttributesTest = HostTest;

TEST_F(CompanyAttributesTest, GivesEveryAttributeOfTheBooksCompany) {
  const auto company = AttributesOf(u"MEDVILNE");
  EXPECT_EQ(company.Code(), u"398417265");
  EXPECT_EQ(company.VATCode(), u"LT100099172410");
  EXPECT_EQ(company.Name(), u"UAB „Medvilnės namai“");
  EXPECT_EQ(company.Address(u"").FullText(), u"Audėjų g. 14-3, LT-44177 Kaunas");
  EXPECT_EQ(company.Address(u"").Contact(u"TEL"), u"+370 37 000 112");
  EXPECT_EQ(company.Address(u"").Contact(u"FA"), u"+370 37 000 113");
  EXPECT_EQ(company.Address(u"").Contact(u"EL"), u"info@medvilnesnamai.example");
  EXPECT_EQ(company.ResponsiblePerson(u"DIR"), u"Rūta Žiedaitė");
  EXPECT_EQ(company.ResponsiblePerson(u"FDIR"), u"Šarūnas Įkalnis");
}

TEST_F(CompanyAttributesTest, ContactsBelongToTheirAddress) {
  const auto warehouse = AttributesOf(u"MEDVILNE").Address(u"SAND");
  EXPECT_EQ(warehouse.FullText(), u"Verpėjų g. 2B, LT-44178 Kaunas");
  EXPECT_EQ(warehouse.Contact(u"TEL"), u"+370 37 000 118");
  EXPECT_EQ(warehouse.Contact(u"FA"), u"");
}

TEST_F(CompanyAttributesTest, ASecondBookGivesItsOwnCompany) {
  const auto first = AttributesOf(u"MEDVILNE");
  const auto second = AttributesOf(u"BALTIJA");
  EXPECT_EQ(second.Code(), u"399503183");
  EXPECT_EQ(second.Name(), u"AB „Baltijos žvejų krantinė“");
  EXPECT_EQ(second.Address(u"").FullText(), u"Krantinės g. 7, LT-91246 Klaipėda");
  EXPECT_EQ(second.Address(u"").Contact(u"TEL"), u"+370 46 000 240");
  EXPECT_EQ(first.Code(), u"398417265");
}

TEST_F(CompanyAttributesTest, InitAgainMovesToTheOtherBook) {
  const auto company = AttributesOf(u"MEDVILNE");
  company.Init(OpenBook(u"BALTIJA"));
  EXPECT_EQ(company.ResponsiblePerson(u"DIR"), u"Česlovas Ąžuolas");
}

TEST_F(CompanyAttributesTest, WhatTheCompanyLacksIsEmptyText) {
  const auto company = AttributesOf(u"BALTIJA");
  EXPECT_EQ(Get(company.Address(u"").object(), u"Contact", {u"FA"}), Value(u""));
  EXPECT_EQ(Get(company.Address(u"SAND").object(), u"FullText"), Value(u""));
  EXPECT_EQ(company.Address(u"SAND").Contact(u"TEL"), u"");
  EXPECT_EQ(company.ResponsiblePerson(u"ADM"), u"");
}

TEST_F(CompanyAttributesTest, FullTextLeavesOutEmptyParts) {
  OpenBook(u"MEDVILNE");
  const Database database(options_.database, Database::Mode::Write);
  const std::pair<std::string, std::u16string> addresses[] = {
      {"'', '', 'Kaunas'", u"Kaunas"},
      {"'', 'LT-44177', 'Kaunas'", u"LT-44177 Kaunas"},
      {"'Audėjų g. 1', '', 'Kaunas'", u"Audėjų g. 1, Kaunas"},
      {"'Audėjų g. 1', 'LT-44177', ''", u"Audėjų g. 1, LT-44177"},
      {"'Audėjų g. 1', '', ''", u"Audėjų g. 1"},
  };
  for (const auto& [values, full_text] : addresses) {
    database.Execute("REPLACE INTO Address VALUES ('398417265', 'X', " + values + ")");
    EXPECT_EQ(AttributesOf(u"MEDVILNE").Address(u"X").FullText(), full_text);
  }
}

TEST_F(CompanyAttributesTest, EveryMemberBeforeInitIsRefused) {
  const auto company = host::CompanyAttributes::Create(factory_);
  const std::function<void()> members[] = {
      [&] { company.Code(); },
      [&] { company.VATCode(); },
      [&] { company.Name(); },
      [&] { company.Address(u""); },
      [&] { company.ResponsiblePerson(u"DIR"); },
  };
  for (const auto& member : members) {
    ExpectFailure(member, Failure::NotInitialised, u"NVXCommonObjects", u"before CompanyAttributes.Init");
  }
}

TEST_F(CompanyAttributesTest, InitWithoutABookIsRefused) {
  const auto company = host::CompanyAttributes::Create(factory_);
  ExpectFailure([&] { company.Init(host::Book()); }, Failure::WrongParameters, u"NVXCommonObjects",
                u"CompanyAttributes.Init needs a book");
}

TEST_F(CompanyAttributesTest, InitWithAnotherObjectInsteadOfABookIsRefused) {
  const auto company = host::CompanyAttributes::Create(factory_);
  const auto error = ErrorOf([&] { company.Init(host::Book(factory_.Create(host::kPlant))); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kUnsupportedMember);
}

TEST_F(CompanyAttributesTest, AFailedInitLeavesTheObjectAsItWas) {
  const auto company = AttributesOf(u"MEDVILNE");
  const auto vanished = OpenBook(u"BALTIJA");
  Database(options_.database, Database::Mode::Write).Execute("DELETE FROM Book WHERE Code = 'BALTIJA'");
  ExpectFailure([&] { company.Init(vanished); }, Failure::UnknownBook, u"NVXCommonObjects",
                u"no company for the book \"BALTIJA\"");
  EXPECT_EQ(company.Code(), u"398417265");
}

TEST_F(CompanyAttributesTest, ATableThatFailsLaterIsReported) {
  const auto company = AttributesOf(u"MEDVILNE");
  const auto address = company.Address(u"");
  Database(options_.database, Database::Mode::Write)
      .Execute("DROP TABLE Contact; DROP TABLE Address; DROP TABLE ResponsiblePerson");
  ExpectFailure([&] { company.Address(u""); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"no such table: Address");
  ExpectFailure([&] { address.Contact(u"TEL"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"no such table: Contact");
  ExpectFailure([&] { company.ResponsiblePerson(u"DIR"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"no such table: ResponsiblePerson");
}

TEST_F(CompanyAttributesTest, AnAddressOutlivesTheObjectThatGaveIt) {
  const host::Address address = AttributesOf(u"MEDVILNE").Address(u"");
  EXPECT_EQ(address.Contact(u"TEL"), u"+370 37 000 112");
}

TEST_F(CompanyAttributesTest, TextsWithQuotesAreDataAndNotSql) {
  const auto company = AttributesOf(u"MEDVILNE");
  EXPECT_EQ(company.ResponsiblePerson(u"DIR' OR '1' = '1"), u"");
  EXPECT_EQ(company.Address(u"").Contact(u"'; DROP TABLE Contact; --"), u"");
  EXPECT_EQ(company.Address(u"").Contact(u"TEL"), u"+370 37 000 112");
}

/// The check digit of a Lithuanian registration or VAT code's digits: the weights 1 … 9, 1, 2 … and, when
/// their sum leaves 10 modulo 11, the weights from 3 on.
int CheckDigit(std::u16string_view digits) {
  const auto remainder = [&](std::size_t first_weight) {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
      sum += static_cast<std::size_t>(digits[i] - u'0') * (1 + (i + first_weight - 1) % 9);
    }
    return static_cast<int>(sum % 11);
  };
  const int first = remainder(1);
  return first < 10 ? first : remainder(3) % 10;
}

TEST_F(CompanyAttributesTest, TheSampleCompaniesCodesAreWellFormed) {
  for (const auto book : {u"MEDVILNE", u"BALTIJA"}) {
    const std::u16string code = AttributesOf(book).Code();
    ASSERT_EQ(code.size(), 9u);
    EXPECT_EQ(CheckDigit(code.substr(0, 8)), code.back() - u'0') << ToUtf8(code);

    const std::u16string vat_code = AttributesOf(book).VATCode();
    ASSERT_EQ(vat_code.size(), 14u);
    EXPECT_EQ(vat_code.substr(0, 2), u"LT");
    EXPECT_EQ(vat_code[12], u'1');  // as in every code of 12 digits
    EXPECT_EQ(CheckDigit(vat_code.substr(2, 11)), vat_code.back() - u'0') << ToUtf8(vat_code);
  }
}

}  // namespace
}  // namespace qva::embedded
