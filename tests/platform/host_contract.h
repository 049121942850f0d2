// What the host's components promise (platform/host.h), as tests that every host passes. A System is made for
// each test and brings the host:
// - ObjectFactory& factory(): creates its components.
// - static HostFacts Facts(): what its books hold.
// - void Press(std::int32_t button): the button of the next message that the user presses.
// - std::vector<ShownMessage> Messages(): those that were shown, in order.
// - void Pick(std::vector<std::optional<std::u16string>> codes): the rows that the user picks from the lists
//   that come, or leaves them; told before the first one.
// - std::size_t Lists(): how many lists were shown.
// - std::optional<std::vector<std::u16string>> Codes(): those of the last list; nothing where only the user
//   could tell.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/date.h"
#include "platform/host.h"
#include "tests/raised_error.h"
#include "tests/readable_values.h"

namespace qva {

struct ShownMessage {
  std::u16string text, title;
  std::vector<std::u16string> captions;
};

struct HostFacts {
  struct AccountSet {
    std::u16string code, name;
    bool is_budget = false;
  };
  struct Document {
    std::int32_t id = 0;
    std::u16string code;
    Date date;
  };

  std::u16string book;                   ///< in capitals
  std::u16string empty_book;             ///< without account sets
  std::vector<AccountSet> account_sets;  ///< of the book, in the order of their codes, which are in capitals
  /// The book's budget documents from the day of the first to that of the last, three or more: by day, and
  /// by code on the one day that is the last two's. Neither their codes nor their numbers alone are in order.
  /// The first one has postings.
  std::vector<Document> budgets;
  std::u16string company_code, vat_code, company_name, address, telephone, fax, director, chief_accountant;
  std::u16string archive;             ///< folder of the reports archive
  std::int32_t number_of_a_text = 0;  ///< in the library of texts
};

template <class System>
class HostContract : public testing::Test {
 protected:
  ~HostContract() override { EXPECT_EQ(Object::LiveCount(), live_before) << "objects stay alive"; }

  host::Book Book(std::u16string_view code = u"") {
    return host::CommonObjects::Create(factory).CreateBook(code.empty() ? facts.book : code);
  }
  host::Table AccountSets() { return Book().Table(host::kAccountSetTable); }
  host::CompanyAttributes Company() {
    auto company = host::CompanyAttributes::Create(factory);
    company.Init(Book());
    return company;
  }
  host::Lookup PathKeys() {
    return host::DataAccess::Create(factory).Lookup(host::kPathKeyLookup, host::Book());
  }
  /// A selection on the book.
  host::DocumentSelection Selection() {
    auto selection = host::DocumentSelection::Create(factory);
    selection.Init(Book());
    return selection;
  }
  std::u16string AnyBudget() {
    return host::ConditionBuilder::Create(factory).Equal(host::kDocumentTypeField, host::kBudgetDocument);
  }
  /// The documents that the user was shown last are these.
  void ExpectShown(const std::vector<HostFacts::Document>& documents) {
    std::vector<std::u16string> codes;
    for (const HostFacts::Document& document : documents) codes.push_back(document.code);
    EXPECT_EQ(system.Codes().value_or(codes), codes);
  }

  System system;
  ObjectFactory& factory = system.factory();
  const HostFacts facts = System::Facts();
  const long live_before = Object::LiveCount();
};

TYPED_TEST_SUITE_P(HostContract);

// Books and tables.

TYPED_TEST_P(HostContract, ABookIsOpenedByItsCode) {
  EXPECT_EQ(this->Book().BookCode(), this->facts.book);
  EXPECT_EQ(Get(this->Book().object(), u""), Value(this->facts.book)) << "the default member";
  for (const std::u16string& code : {std::u16string(u"nera"), ToLower(this->facts.book), std::u16string()}) {
    const auto common = host::CommonObjects::Create(this->factory);
    EXPECT_NE(RaisedBy([&] { common.CreateBook(code); }), 0) << ToUtf8(code);
  }
}

TYPED_TEST_P(HostContract, TablesAreNamedInAnyLetterCase) {
  EXPECT_TRUE(this->Book().Table(u"glACCOUNTset").Seek(this->facts.account_sets.front().code));
  EXPECT_TRUE(this->Book().Table(host::kBookTable).Seek(this->facts.empty_book));
  EXPECT_TRUE(this->Book().Table(host::kCarrierTable));
  EXPECT_NE(RaisedBy([&] { this->Book().Table(u"Nera"); }), 0);
}

TYPED_TEST_P(HostContract, ARecordIsMadeTheCurrentOneByItsKey) {
  const host::Table table = this->AccountSets();
  for (const HostFacts::AccountSet& set : this->facts.account_sets) {
    EXPECT_TRUE(table.Seek(set.code));
    EXPECT_EQ(table.Field(host::kCodeField), Value(set.code));
    EXPECT_EQ(table.Field(u"nAME"), Value(set.name));
    EXPECT_EQ(table.Field(host::kIsBudgetField), Value(set.is_budget));
    EXPECT_EQ(RaisedBy([&] { table.Field(u"Nera"); }), kSubscriptOutOfRange);
  }
}

TYPED_TEST_P(HostContract, WithoutACurrentRecordThereIsNoField) {
  const host::Table table = this->AccountSets();
  EXPECT_EQ(RaisedBy([&] { table.Field(host::kCodeField); }), kSubscriptOutOfRange);
  const std::u16string code = this->facts.account_sets.front().code;
  for (const std::u16string& other : {std::u16string(u"nera"), std::u16string(), ToLower(code)}) {
    EXPECT_TRUE(table.Seek(code));
    EXPECT_FALSE(table.Seek(other)) << ToUtf8(other);
    EXPECT_EQ(RaisedBy([&] { table.Field(host::kCodeField); }), kSubscriptOutOfRange);
  }
  EXPECT_FALSE(this->Book(this->facts.empty_book).Table(host::kAccountSetTable).Seek(code));
}

TYPED_TEST_P(HostContract, RowsAreABlockFromOneInTheOrderOfTheKey) {
  const Value rows = this->AccountSets().Rows({u"name", host::kCodeField});
  const Array& block = rows.ToArray();
  ASSERT_EQ(block.dimensions.size(), 2u);
  EXPECT_EQ(block.dimensions[0].lower, 1);
  EXPECT_EQ(block.dimensions[1].lower, 1);
  EXPECT_EQ(block.dimensions[1].count, 2);
  std::vector<Value> expected;
  for (const HostFacts::AccountSet& set : this->facts.account_sets) {
    expected.insert(expected.end(), {Value(set.name), Value(set.code)});
  }
  EXPECT_EQ(block.elements, expected);
}

TYPED_TEST_P(HostContract, RowsAreEmptyWithoutRecords) {
  const host::Table table = this->Book(this->facts.empty_book).Table(host::kAccountSetTable);
  EXPECT_EQ(table.Rows({host::kCodeField}), Value());
  EXPECT_EQ(RaisedBy([&] { table.Rows({u"Nera"}); }), kSubscriptOutOfRange);
}

TYPED_TEST_P(HostContract, RowsNeedFieldsThatThereAre) {
  const host::Table table = this->AccountSets();
  EXPECT_EQ(RaisedBy([&] { table.Rows({host::kCodeField, u"Nera"}); }), kSubscriptOutOfRange);
  EXPECT_NE(RaisedBy([&] { table.Rows({}); }), 0);
  EXPECT_EQ(RaisedBy([&] { Get(table.object(), u"Rows", {u"Code"}); }), kTypeMismatch);
}

// What the connection hands around.

TYPED_TEST_P(HostContract, PlantAndClientToolsTakeABook) {
  const auto plant = host::Plant::Create(this->factory);
  plant.Init(this->Book());
  EXPECT_NE(RaisedBy([&] { plant.Init(host::Book()); }), 0);
  const auto tools = host::ClientTools::Create(this->factory);
  tools.SetBook(this->Book());
  tools.SetBook(host::Book());
}

// Companies.

TYPED_TEST_P(HostContract, ACompanyHasItsAttributes) {
  const host::CompanyAttributes company = this->Company();
  EXPECT_EQ(company.Code(), this->facts.company_code);
  EXPECT_EQ(company.VATCode(), this->facts.vat_code);
  EXPECT_EQ(company.Name(), this->facts.company_name);
  const host::Address address = company.Address(u"");
  EXPECT_EQ(address.FullText(), this->facts.address);
  EXPECT_EQ(address.Contact(host::kTelephone), this->facts.telephone);
  EXPECT_EQ(address.Contact(host::kFax), this->facts.fax);
  EXPECT_EQ(company.ResponsiblePerson(host::kDirector), this->facts.director);
  EXPECT_EQ(company.ResponsiblePerson(host::kChiefAccountant), this->facts.chief_accountant);
}

TYPED_TEST_P(HostContract, WhatACompanyDoesNotHaveIsEmpty) {
  const host::CompanyAttributes company = this->Company();
  EXPECT_EQ(company.Address(u"").Contact(u"nera"), u"");
  EXPECT_EQ(company.Address(u"nera").FullText(), u"");
  EXPECT_EQ(company.Address(u"nera").Contact(host::kTelephone), u"");
  EXPECT_EQ(company.ResponsiblePerson(u"nera"), u"");
  EXPECT_EQ(company.ResponsiblePerson(ToLower(host::kDirector)), u"") << "in capitals alone";
}

TYPED_TEST_P(HostContract, ACompanyIsOfABook) {
  const auto company = host::CompanyAttributes::Create(this->factory);
  EXPECT_NE(RaisedBy([&] { company.Code(); }), 0);
  EXPECT_NE(RaisedBy([&] { company.Address(u""); }), 0);
  EXPECT_NE(RaisedBy([&] { company.Init(host::Book()); }), 0);
}

// Lookups.

TYPED_TEST_P(HostContract, ALookupFindsTheFolderOfAPathKey) {
  const host::Lookup lookup = this->PathKeys();
  EXPECT_TRUE(lookup.Run({host::kArchiveKey}));
  EXPECT_EQ(lookup.Result(), this->facts.archive);
  EXPECT_FALSE(lookup.Run({u"nera"}));
  EXPECT_EQ(lookup.Result(), u"");
  EXPECT_FALSE(lookup.Run({ToLower(host::kArchiveKey)})) << "compared exactly";
}

TYPED_TEST_P(HostContract, ALookupTakesOneKey) {
  const host::Lookup lookup = this->PathKeys();
  EXPECT_NE(RaisedBy([&] { lookup.Result(); }), 0) << "was not run";
  EXPECT_NE(RaisedBy([&] { lookup.Run({}); }), 0);
  EXPECT_NE(RaisedBy([&] { lookup.Run({host::kArchiveKey, host::kArchiveKey}); }), 0);
  EXPECT_EQ(RaisedBy([&] { Call(lookup.object(), u"Run", {host::kArchiveKey}); }), kTypeMismatch);
}

TYPED_TEST_P(HostContract, LookupsAreNamedInAnyLetterCase) {
  const auto access = host::DataAccess::Create(this->factory);
  EXPECT_TRUE(access.Lookup(u"pathKEY", this->Book()).Run({host::kArchiveKey}));
  EXPECT_TRUE(host::Lookup(GetObject(access.object(), u"Lookup", {host::kPathKeyLookup})))
      << "the book may be left out";
  EXPECT_NE(RaisedBy([&] { access.Lookup(u"Nera", this->Book()); }), 0);
}

// Settings.

TYPED_TEST_P(HostContract, SettingsAreFoundByNameAndNumber) {
  const auto settings = host::SettingsCollection::Create(this->factory);
  settings.Add(u"Year", 3, 2024);
  settings.Add(u"Plan", 7);
  EXPECT_EQ(settings.Item(u"yEAR").Value(), Value(2024));
  EXPECT_EQ(settings.Item(u"Plan").Value(), Value());
  EXPECT_EQ(Get(GetObject(settings.object(), u"Item", {1}), u""), Value(2024));
  for (const Value& index : {Value(u"Nera"), Value(0), Value(3)}) {
    EXPECT_EQ(RaisedBy([&] { GetObject(settings.object(), u"Item", {index}); }), kSubscriptOutOfRange);
  }
}

TYPED_TEST_P(HostContract, ASettingsNameIsTakenOnce) {
  constexpr std::int32_t kTaken = 457;
  const auto settings = host::SettingsCollection::Create(this->factory);
  settings.Add(u"Year", 3, 2024);
  EXPECT_EQ(RaisedBy([&] { settings.Add(u"YEAR", 3, 2025); }), kTaken);
  EXPECT_NE(RaisedBy([&] { settings.Add(u"", 3); }), 0);
  EXPECT_EQ(settings.Item(u"Year").Value(), Value(2024));
}

TYPED_TEST_P(HostContract, ASettingTakesAValueOrAnObject) {
  const auto settings = host::SettingsCollection::Create(this->factory);
  settings.Add(u"A", 1, 1);
  settings.Add(u"B", 1, u"text");
  const host::SettingsItem item = settings.Item(u"A");
  item.SetValue(u"2");
  EXPECT_EQ(item.Value(), Value(u"2"));
  item.SetValue(settings.Item(u"B").object());
  EXPECT_EQ(item.Value(), Value(u"text")) << "an object's default member";
  EXPECT_EQ(RaisedBy([&] { item.SetValue(ObjectPtr()); }), kObjectNotSet);
  EXPECT_EQ(item.Value(), Value(u"text"));
  item.SetObject(settings.Item(u"B").object());
  EXPECT_TRUE(item.Value().Is(Value::Type::Object));
  item.SetObject({});
  EXPECT_EQ(item.Value(), Value(ObjectPtr()));
  EXPECT_EQ(RaisedBy([&] { PutRef(item.object(), u"Value", 3); }), kTypeMismatch);
}

// Messages.

TYPED_TEST_P(HostContract, AMessageGivesTheNumberOfThePressedButton) {
  this->system.Press(2);
  const auto message = host::Message::Create(this->factory);
  EXPECT_EQ(message.Show(u"Tekstas", u"Antraštė", {Value(u"Taip"), Value(u"Ne")}), 2);
  const std::vector<ShownMessage> messages = this->system.Messages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages.front().text, u"Tekstas");
  EXPECT_EQ(messages.front().title, u"Antraštė");
  EXPECT_THAT(messages.front().captions, testing::ElementsAre(u"Taip", u"Ne"));
}

TYPED_TEST_P(HostContract, AMessageNeedsCaptions) {
  const auto message = host::Message::Create(this->factory);
  EXPECT_NE(RaisedBy([&] { message.Show(u"Tekstas", u"", {}); }), 0);
  EXPECT_EQ(RaisedBy([&] { Call(message.object(), u"Show", {u"Tekstas", u"", u"Gerai"}); }), kTypeMismatch);
  EXPECT_TRUE(this->system.Messages().empty());
}

TYPED_TEST_P(HostContract, TextsComeFromTheirLibrary) {
  const auto texts = host::MessageResource::Create(this->factory);
  EXPECT_NE(RaisedBy([&] { texts.Text(this->facts.number_of_a_text); }), 0);
  EXPECT_NE(RaisedBy([&] { texts.Init(u"Nera"); }), 0);
  texts.Init(host::kMessageResourceLibrary);
  EXPECT_NE(texts.Text(this->facts.number_of_a_text), u"");
  EXPECT_EQ(RaisedBy([&] { texts.Text(9999); }), kSubscriptOutOfRange);
}

// Documents.

TYPED_TEST_P(HostContract, ADocumentIsSelectedFromARangeOfDays) {
  const host::DocumentSelection selection = this->Selection();
  const auto& budgets = this->facts.budgets;
  const HostFacts::Document& first = budgets.front();
  const HostFacts::Document& last = budgets.back();
  this->system.Pick({first.code, last.code, std::nullopt});
  const auto open = [&](double from, double to) {
    return selection.Open(host::kBudgetDocument, {first.date.serial + from}, {last.date.serial + to},
                          this->AnyBudget());
  };
  EXPECT_EQ(open(0, 0), Value(first.id)) << "first and last day included";
  this->ExpectShown(budgets);
  EXPECT_EQ(selection.Field(u"cODE"), Value(first.code));
  EXPECT_EQ(RaisedBy([&] { selection.Field(u"Nera"); }), kSubscriptOutOfRange);
  EXPECT_EQ(open(1, 0), Value(last.id));
  this->ExpectShown({budgets.begin() + 1, budgets.end()});
  EXPECT_EQ(selection.Field(host::kCodeField), Value(last.code));
  EXPECT_EQ(open(0, -1), Value(0));
  this->ExpectShown({budgets.begin(), budgets.end() - 2});
  EXPECT_EQ(RaisedBy([&] { selection.Field(host::kCodeField); }), kSubscriptOutOfRange)
      << "what was selected before counts no more";
  EXPECT_EQ(this->system.Lists(), 3u);
}

TYPED_TEST_P(HostContract, AnEmptyListOfDocumentsIsShown) {
  const host::DocumentSelection selection = this->Selection();
  const Date day = this->facts.budgets.front().date;
  this->system.Pick({std::nullopt});
  EXPECT_EQ(selection.Open(u"Nera", day, day, this->AnyBudget()), Value(0));
  EXPECT_EQ(this->system.Lists(), 1u);
  this->ExpectShown({});
}

TYPED_TEST_P(HostContract, ASelectionIsOfABook) {
  const auto selection = host::DocumentSelection::Create(this->factory);
  const Date day = this->facts.budgets.front().date;
  EXPECT_NE(RaisedBy([&] { selection.Open(host::kBudgetDocument, day, day, this->AnyBudget()); }), 0);
  EXPECT_EQ(RaisedBy([&] { selection.Field(host::kCodeField); }), kSubscriptOutOfRange);
  EXPECT_NE(RaisedBy([&] { selection.Init(host::Book()); }), 0);
  EXPECT_EQ(this->system.Lists(), 0u);
}

TYPED_TEST_P(HostContract, AQueryIsPutTogetherOfItsParts) {
  const auto query = host::Query::Create(this->factory);
  const auto has_no_text = [&] { return RaisedBy([&] { query.Sql(); }) != 0; };
  EXPECT_NE(RaisedBy([&] { query.Init(host::Book()); }), 0);
  query.Init(this->Book());
  EXPECT_TRUE(has_no_text());
  query.From(host::kPostingView, u"AccPost");
  EXPECT_TRUE(has_no_text());
  query.Select(u"AccPost.DocId");
  const std::u16string plain = query.Sql();
  query.SetCondition(u"1=0");
  EXPECT_NE(query.Sql(), plain);
  query.SetCondition(u"");
  EXPECT_EQ(query.Sql(), plain);
  query.SetDistinct(true);
  EXPECT_NE(query.Sql(), plain);
}

TYPED_TEST_P(HostContract, AConditionMayNameTheTableThatAQueryJoins) {
  const auto query = host::Query::Create(this->factory);
  query.Init(this->Book());
  query.From(host::kPostingView, u"AccPost");
  query.Select(u"AccPost.DocId");
  const auto conditions = host::ConditionBuilder::Create(this->factory);
  query.SetCondition(conditions.Equal(u"Doc.DocTypeCode", host::kBudgetDocument));
  const std::u16string alone = query.Sql();
  query.Join(host::kDocumentTable, u"Doc", u"AccPost.DocId = Doc.IDC");
  EXPECT_NE(query.Sql(), alone);
  const HostFacts::Document& first = this->facts.budgets.front();
  this->system.Pick({first.code});
  const std::u16string posted = conditions.In(host::kDocumentIdField, u"(" + query.Sql() + u")");
  EXPECT_EQ(this->Selection().Open(host::kBudgetDocument, first.date, first.date, posted), Value(first.id));
}

TYPED_TEST_P(HostContract, ConditionsNeedTheirParts) {
  const auto conditions = host::ConditionBuilder::Create(this->factory);
  EXPECT_NE(conditions.And(u"1=0", u"1=1"), u"");
  EXPECT_NE(RaisedBy([&] { conditions.And(u"", u"1=1"); }), 0);
  EXPECT_NE(RaisedBy([&] { conditions.And(u"1=0", u""); }), 0);
  EXPECT_NE(conditions.In(host::kDocumentIdField, u"(SELECT 1)"), u"");
  EXPECT_NE(RaisedBy([&] { conditions.In(host::kDocumentIdField, u"SELECT 1"); }), 0);
}

REGISTER_TYPED_TEST_SUITE_P(HostContract, ABookIsOpenedByItsCode, TablesAreNamedInAnyLetterCase,
                            ARecordIsMadeTheCurrentOneByItsKey, WithoutACurrentRecordThereIsNoField,
                            RowsAreABlockFromOneInTheOrderOfTheKey, RowsAreEmptyWithoutRecords,
                            RowsNeedFieldsThatThereAre, PlantAndClientToolsTakeABook,
                            ACompanyHasItsAttributes, WhatACompanyDoesNotHaveIsEmpty, ACompanyIsOfABook,
                            ALookupFindsTheFolderOfAPathKey, ALookupTakesOneKey,
                            LookupsAreNamedInAnyLetterCase, SettingsAreFoundByNameAndNumber,
                            ASettingsNameIsTakenOnce, ASettingTakesAValueOrAnObject,
                            AMessageGivesTheNumberOfThePressedButton, AMessageNeedsCaptions,
                            TextsComeFromTheirLibrary, ADocumentIsSelectedFromARangeOfDays,
                            AnEmptyListOfDocumentsIsShown, ASelectionIsOfABook, AQueryIsPutTogetherOfItsParts,
                            AConditionMayNameTheTableThatAQueryJoins, ConditionsNeedTheirParts);

}  // namespace qva
