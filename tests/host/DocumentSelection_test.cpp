#include "platform/date.h"
#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

class DocumentSelectionTest : public HostTest {
 protected:
  host::DocumentSelection On(std::u16string_view book_code) {
    const auto selection = host::DocumentSelection::Create(factory_);
    selection.Init(OpenBook(book_code));
    return selection;
  }
  /// The condition that leaves the budget documents with postings on an account set.
  std::u16string OnAccountSet(std::u16string_view book_code, std::u16string_view account_set) {
    const auto build = host::ConditionBuilder::Create(factory_);
    const auto query = host::Query::Create(factory_);
    query.Init(OpenBook(book_code));
    query.From(u"GLContAccountPostBBN", u"AccPost");
    query.Join(u"THDocument", u"Doc", u"AccPost.DocId = Doc.IDC");
    query.Select(u"AccPost.DocId");
    query.SetDistinct(true);
    query.SetCondition(
        build.And(build.Equal(u"AccPost.AccSetCode", account_set), build.Equal(u"Doc.DocTypeCode", u"BOBN")));
    return build.In(u"IDC", u"(" + query.Sql() + u")");
  }
  /// The codes of the documents that a selection shows.
  std::vector<std::string> Offered(std::u16string_view book_code, Date from, Date to,
                                   std::u16string_view condition, std::u16string_view type = u"BOBN") {
    On(book_code).Open(type, from, to, condition);
    std::vector<std::string> codes;
    for (const auto& row : chooser_.shown.back().rows) codes.push_back(ToUtf8(row.front()));
    return codes;
  }
  static Date Day(int year, int month, int day) { return DateFromParts(year, month, day); }

  const Date first_ = Day(2000, 1, 1);
  const Date last_ = Day(2099, 12, 31);
};

TEST_F(DocumentSelectionTest, ShowsCodeDateAndNameUnderLithuanianCaptions) {
  std::u16string marked = u"?";
  chooser_.user = [&](const ChoiceList&, std::u16string_view selected) {
    marked = selected;
    return std::nullopt;
  };
  On(u"MEDVILNE").Open(u"BOBN", Day(2024, 1, 1), Day(2024, 12, 31), OnAccountSet(u"MEDVILNE", u"BIUDZ"));
  ASSERT_EQ(chooser_.shown.size(), 1u);
  const ChoiceList& list = chooser_.shown.front();
  EXPECT_EQ(list.title, u"Biudžeto dokumentai");
  EXPECT_THAT(list.captions, testing::ElementsAre(u"Kodas", u"Data", u"Pavadinimas"));
  EXPECT_THAT(list.rows, testing::ElementsAre(
                             testing::ElementsAre(u"BIU-2024-01", u"2024-01-01", u"2024 metų biudžetas"),
                             testing::ElementsAre(u"BIU-2024-02", u"2024-07-01",
                                                  u"2024 metų II pusmečio patikslinimas")));
  EXPECT_EQ(marked, u"");
}

TEST_F(DocumentSelectionTest, GivesTheNumberAndTheFieldsOfTheDocumentThatTheUserPicks) {
  const auto selection = On(u"MEDVILNE");
  Pick(1);
  EXPECT_EQ(selection.Open(u"BOBN", first_, last_, OnAccountSet(u"MEDVILNE", u"BIUDZ")),
            Value(std::int32_t{102}));
  EXPECT_EQ(selection.Field(u"Code"), Value(u"BIU-2024-01"));
  EXPECT_EQ(selection.Field(u"idc"), Value(std::int32_t{102}));
  EXPECT_EQ(selection.Field(u"DocDate"), Value(Day(2024, 1, 1)));
  EXPECT_EQ(selection.Field(u"BookCode"), Value(u"MEDVILNE"));
  EXPECT_EQ(selection.Field(u"DocTypeCode"), Value(u"BOBN"));
  EXPECT_EQ(selection.Field(u"Name"), Value(u"2024 metų biudžetas"));
}

TEST_F(DocumentSelectionTest, GivesZeroAndForgetsTheEarlierDocumentWhenTheUserLeaves) {
  const auto selection = On(u"MEDVILNE");
  Pick(0);
  selection.Open(u"BOBN", first_, last_, u"1 = 1");
  Pick({});
  EXPECT_EQ(selection.Open(u"BOBN", first_, last_, u"1 = 1"), Value(std::int32_t{0}));
  const auto error = ErrorOf([&] { selection.Field(u"Code"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kSubscriptOutOfRange);
  EXPECT_EQ(error->description(), u"No document is selected");
}

TEST_F(DocumentSelectionTest, AFailedOpeningForgetsTheEarlierDocument) {
  const auto selection = On(u"MEDVILNE");
  Pick(0);
  selection.Open(u"BOBN", first_, last_, u"1 = 1");
  EXPECT_TRUE(ErrorOf([&] { selection.Open(u"BOBN", first_, last_, u"("); }));
  EXPECT_TRUE(ErrorOf([&] { selection.Field(u"Code"); }));
}

TEST_F(DocumentSelectionTest, AFieldThatDocumentsLackIsNamed) {
  const auto selection = On(u"MEDVILNE");
  Pick(0);
  selection.Open(u"BOBN", first_, last_, u"1 = 1");
  const auto error = ErrorOf([&] { selection.Field(u"Spalva"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kSubscriptOutOfRange);
  EXPECT_THAT(ToUtf8(error->description()), testing::HasSubstr("no field \"Spalva\""));
}

TEST_F(DocumentSelectionTest, BothDaysOfTheRangeBelongToIt) {
  EXPECT_THAT(Offered(u"MEDVILNE", Day(2024, 1, 1), Day(2024, 12, 31), u"1 = 1"),
              testing::ElementsAre("BIU-2024-01", "BIU-2024-02", "BIU-2024-03"));
  EXPECT_THAT(Offered(u"MEDVILNE", Day(2024, 1, 2), Day(2024, 12, 30), u"1 = 1"),
              testing::ElementsAre("BIU-2024-02"));
  EXPECT_THAT(Offered(u"MEDVILNE", Day(2024, 7, 1), Day(2024, 7, 1), u"1 = 1"),
              testing::ElementsAre("BIU-2024-02"));
  EXPECT_THAT(Offered(u"MEDVILNE", Day(2024, 12, 31), Day(2024, 1, 1), u"1 = 1"), testing::IsEmpty());
}

TEST_F(DocumentSelectionTest, TheTimeOfDayOfTheRangeDoesNotCount) {
  EXPECT_THAT(Offered(u"MEDVILNE", Date{Day(2024, 7, 1).serial + 0.75}, Date{Day(2024, 12, 31).serial + 0.25},
                      u"1 = 1"),
              testing::ElementsAre("BIU-2024-02", "BIU-2024-03"));
}

TEST_F(DocumentSelectionTest, DocumentsWithoutPostingsOnTheAccountSetAreNotOffered) {
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"1 = 1"),
              testing::ElementsAre("BIU-2023-01", "BIU-2024-01", "BIU-2024-02", "BIU-2024-03", "BIU-2025-01",
                                   "BIU-2025-02", "BIU-2026-01"));
  EXPECT_THAT(
      Offered(u"MEDVILNE", first_, last_, OnAccountSet(u"MEDVILNE", u"BIUDZ")),
      testing::ElementsAre("BIU-2023-01", "BIU-2024-01", "BIU-2024-02", "BIU-2025-01", "BIU-2026-01"));
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, OnAccountSet(u"MEDVILNE", u"GAMYBA")),
              testing::ElementsAre("BIU-2024-03", "BIU-2025-01", "BIU-2026-01"));
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, OnAccountSet(u"MEDVILNE", u"PAGR")), testing::IsEmpty());
}

TEST_F(DocumentSelectionTest, AnotherBooksDocumentsAreNeverOffered) {
  EXPECT_THAT(Offered(u"BALTIJA", first_, last_, OnAccountSet(u"BALTIJA", u"ŽVEJYBA")),
              testing::ElementsAre("BIU-2024-02", "BIU-2025-01"));
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, OnAccountSet(u"BALTIJA", u"ŽVEJYBA")), testing::IsEmpty());
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"BookCode = 'BALTIJA' OR 1 = 1"), testing::SizeIs(7));
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"IDC = 203"), testing::IsEmpty());
}

TEST_F(DocumentSelectionTest, OtherTypesAreNotOfferedAndHaveATitleOfTheirOwn) {
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"1 = 1", u"GLOP"), testing::ElementsAre("BO-2024-001"));
  EXPECT_EQ(chooser_.shown.back().title, u"Didžiosios knygos operacijos");
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"1 = 1", u"bobn"), testing::IsEmpty());
  EXPECT_EQ(chooser_.shown.back().title, u"Dokumentai");
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"1 = 1", u"X' OR '1'='1"), testing::IsEmpty());
}

TEST_F(DocumentSelectionTest, AnEmptyListIsShownToo) {
  EXPECT_EQ(On(u"MEDVILNE").Open(u"BOBN", Day(1999, 1, 1), Day(1999, 12, 31), u"1 = 1"),
            Value(std::int32_t{0}));
  ASSERT_EQ(chooser_.shown.size(), 1u);
  EXPECT_TRUE(chooser_.shown.front().rows.empty());
}

TEST_F(DocumentSelectionTest, AnAccountSetCodeWithAQuotationMarkNeitherBreaksNorWidens) {
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, OnAccountSet(u"MEDVILNE", u"O'BRIEN")),
              testing::ElementsAre("BIU-2024-01", "BIU-2026-01"));
  for (const auto code :
       {u"X' OR '1'='1", u"X') OR ('1'='1", u"BIUDZ' --", u"'; DROP TABLE THDocument; --"}) {
    EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, OnAccountSet(u"MEDVILNE", code)), testing::IsEmpty())
        << ToUtf8(code);
  }
}

TEST_F(DocumentSelectionTest, AConditionThatIsNotOneExpressionIsRefusedBeforeAnythingIsShown) {
  const auto selection = On(u"MEDVILNE");
  for (const std::u16string condition : {u"",
                                         u" ",
                                         u"-- nothing",
                                         u"bet kas",
                                         u"Nera = 1",
                                         u"IDC IN (SELECT DocId FROM Nera)",
                                         u"1 = ",
                                         u"(",
                                         u")",
                                         u"1 = 1) OR (1 = 1",
                                         u"1 = 1) UNION SELECT * FROM THDocument WHERE (1 = 1",
                                         u"1 = 1; DROP TABLE Book",
                                         u"1 = 1;",
                                         u"1 = 1; ",
                                         u"1 = 1 --",
                                         u"1 = 1 /*",
                                         u"1 = 1) --",
                                         u"1 = 1) /*",
                                         u"1 = 1 ORDER BY IDC",
                                         u"1 = 1 LIMIT 1",
                                         u"1 = 1 GROUP BY IDC HAVING (1 = 1)",
                                         u"1 = 1 UNION SELECT 1",
                                         u"1, 1",
                                         u"SELECT 1",
                                         u"count(*) > 0",
                                         u"'1",
                                         u"\"1",
                                         u"?1 = ?1",
                                         u":book = 1",
                                         u"IDC = @id",
                                         u"load_extension('x')",
                                         u"1 = 1) AND IDC IN (SELECT IDC FROM THDocument"}) {
    ExpectFailure([&] { selection.Open(u"BOBN", first_, last_, condition); }, Failure::WrongCondition,
                  u"NVXCommonObjects", u"The condition cannot be used: ");
    EXPECT_TRUE(chooser_.shown.empty()) << ToUtf8(condition);
  }
  ExpectFailure([&] { selection.Open(u"BOBN", first_, last_, std::u16string(u"1 = 1\0) OR (1 = 1", 17)); },
                Failure::WrongCondition, u"NVXCommonObjects", u"more text follows");
}

TEST_F(DocumentSelectionTest, AConditionWhoseEvaluationFailsIsReportedAsTheConditions) {
  ExpectFailure([&] { On(u"MEDVILNE").Open(u"BOBN", first_, last_, u"abs(-9223372036854775808) = IDC"); },
                Failure::WrongCondition, u"NVXCommonObjects", u"integer overflow");
}

TEST_F(DocumentSelectionTest, WhateverIsOneExpressionIsRunAsItIs) {
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"IDC = 101 OR Code LIKE '%2026%'"),
              testing::ElementsAre("BIU-2023-01", "BIU-2026-01"));
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"(IDC = 101) OR (IDC = 102)"),
              testing::ElementsAre("BIU-2023-01", "BIU-2024-01"));
  EXPECT_THAT(Offered(u"MEDVILNE", first_, last_, u"Name = ');--' /* none */ OR IDC = 104"),
              testing::ElementsAre("BIU-2024-03"));
}

TEST_F(DocumentSelectionTest, AnUnusableDatabaseIsNotBlamedOnTheCondition) {
  const auto selection = On(u"MEDVILNE");
  std::filesystem::resize_file(options_.database, 4096);
  ExpectFailure([&] { selection.Open(u"BOBN", first_, last_, u"1 = 1"); }, Failure::DatabaseUnusable,
                u"NVXCommonObjects", u"cannot be used");
}

TEST_F(DocumentSelectionTest, OpenBeforeInitIsRefused) {
  const auto selection = host::DocumentSelection::Create(factory_);
  ExpectFailure([&] { selection.Open(u"BOBN", first_, last_, u"1 = 1"); }, Failure::NotInitialised,
                u"NVXCommonObjects", u"before DocumentSelection.Init");
  EXPECT_TRUE(ErrorOf([&] { selection.Field(u"Code"); }));
}

TEST_F(DocumentSelectionTest, InitRefusesNoBookAndABookThatTheHostDoesNotKnow) {
  const auto selection = host::DocumentSelection::Create(factory_);
  ExpectFailure([&] { selection.Init(host::Book()); }, Failure::WrongParameters, u"NVXCommonObjects",
                u"DocumentSelection.Init needs a book");
  const auto book = OpenBook(u"BALTIJA");
  Database(options_.database, Database::Mode::Write)
      .Execute("UPDATE Book SET Code = 'KITA' WHERE Code = 'BALTIJA'");
  ExpectFailure([&] { selection.Init(book); }, Failure::UnknownBook, u"NVXCommonObjects",
                u"There is no book \"BALTIJA\"");
}

TEST_F(DocumentSelectionTest, AnotherInitChangesTheBook) {
  const auto selection = On(u"MEDVILNE");
  Pick(0);
  selection.Open(u"BOBN", first_, last_, u"1 = 1");
  selection.Init(OpenBook(u"BALTIJA"));
  EXPECT_TRUE(ErrorOf([&] { selection.Field(u"Code"); }));
  EXPECT_EQ(selection.Open(u"BOBN", first_, last_, u"1 = 1"), Value(std::int32_t{201}));
}

TEST_F(DocumentSelectionTest, WithoutAListChooserOpenSaysSo) {
  Services services = platform_.services();
  services.list_chooser = nullptr;
  EmbeddedHost factory(options_, services);
  const auto selection = host::DocumentSelection::Create(factory);
  selection.Init(host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE"));
  ExpectFailure([&] { selection.Open(u"BOBN", first_, last_, u"1 = 1"); }, Failure::NoListChooser,
                u"NVXCommonObjects", u"nothing that could show the documents");
}

}  // namespace
}  // namespace qva::embedded
