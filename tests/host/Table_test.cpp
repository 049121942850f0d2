#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

class TableTest : public HostTest {
 protected:
  /// The block that Rows gives, each record as the texts of its fields with "|" between them.
  static std::vector<std::string> Texts(const Value& rows) {
    const Array& block = rows.ToArray();
    EXPECT_EQ(block.dimensions.size(), 2u);
    EXPECT_EQ(block.dimensions[0].lower, 1);
    EXPECT_EQ(block.dimensions[1].lower, 1);
    const auto columns = static_cast<std::size_t>(block.dimensions[1].count);
    EXPECT_EQ(block.elements.size(), columns * static_cast<std::size_t>(block.dimensions[0].count));
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < block.elements.size(); ++i) {
      const std::string text = ToUtf8(block.elements[i].ToText());
      if (i % columns == 0) {
        texts.push_back(text);
      } else {
        texts.back() += "|" + text;
      }
    }
    return texts;
  }
  void Execute(const char* sql) { Database(options_.database, Database::Mode::Write).Execute(sql); }
};

TEST_F(TableTest, GivesTheAccountSetsOfItsBookInTheOrderOfTheirCodes) {
  EXPECT_THAT(Texts(OpenBook(u"MEDVILNE").Table(u"GLAccountSet").Rows({u"Code", u"Name", u"IsBudget"})),
              testing::ElementsAre(
                  "BIUDZ|Biudžeto sąskaitų planas|True", "GAMYBA|Gamybos padalinio biudžetas|True",
                  "O'BRIEN|Padalinio „O'Brien“ biudžetas|True", "PAGR|Pagrindinis sąskaitų planas|False"));
  EXPECT_THAT(Texts(OpenBook(u"BALTIJA").Table(u"GLAccountSet").Rows({u"BookCode", u"Code"})),
              testing::ElementsAre("BALTIJA|BIUDZ", "BALTIJA|PAGR", "BALTIJA|ŽVEJYBA"));
}

TEST_F(TableTest, TheTableOfBooksListsAllBooks) {
  const auto books = OpenBook(u"BALTIJA").Table(u"Book");
  EXPECT_THAT(Texts(books.Rows({u"Code", u"Name"})),
              testing::ElementsAre("BALTIJA|Baltijos žvejų krantinė", "MEDVILNE|Medvilnės namai"));
  EXPECT_TRUE(books.Seek(u"MEDVILNE"));
  EXPECT_EQ(books.Field(u"Name"), Value(u"Medvilnės namai"));
}

TEST_F(TableTest, SeekFindsARecordOfItsOwnBookAlone) {
  const auto account_sets = OpenBook(u"MEDVILNE").Table(u"GLAccountSet");
  EXPECT_TRUE(account_sets.Seek(u"GAMYBA"));
  EXPECT_EQ(account_sets.Field(u"Code"), Value(u"GAMYBA"));
  EXPECT_EQ(account_sets.Field(u"BookCode"), Value(u"MEDVILNE"));
  EXPECT_FALSE(account_sets.Seek(u"ŽVEJYBA"));
  EXPECT_TRUE(OpenBook(u"BALTIJA").Table(u"GLAccountSet").Seek(u"ŽVEJYBA"));
}

TEST_F(TableTest, AnAmountIsCurrencyHoweverGreatItIs) {
  OpenBook(u"MEDVILNE");
  Execute(
      "INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, VATClassCode, "
      "VATAmount, Name) VALUES ('MEDVILNE', '2031-01-15', 'OPER', '2710', '5000', 3000000000, 'PVM1', "
      "630000000, ''), ('MEDVILNE', '2031-02-15', 'OPER', '2710', '5000', 922337203685477, NULL, 0, '');"
      "INSERT INTO GLPosting VALUES ('MEDVILNE', 105, 99, 'BIUDZ', '5000', -3000000000)");
  const host::Book book = OpenBook(u"MEDVILNE");
  const auto months = book.Table(u"GLAccountMonth");
  ASSERT_TRUE(months.Seek(u"2710/2031-01"));
  EXPECT_EQ(months.Field(u"Debit"), Value(Currency{30'000'000'000'000}));
  ASSERT_TRUE(months.Seek(u"5000/2031-01"));
  EXPECT_EQ(months.Field(u"Credit"), Value(Currency{30'000'000'000'000}));
  ASSERT_TRUE(months.Seek(u"2710/2031-02"));
  EXPECT_EQ(months.Field(u"Debit").ToText(), u"922337203685477");
  const auto vat = book.Table(u"VATMonth");
  ASSERT_TRUE(vat.Seek(u"2031-01/PVM1"));
  EXPECT_EQ(vat.Field(u"Base"), Value(Currency{30'000'000'000'000}));
  EXPECT_EQ(vat.Field(u"VATAmount"), Value(Currency{6'300'000'000'000}));
  const auto postings = book.Table(u"GLDocumentPosting");
  ASSERT_TRUE(postings.Seek(u"105/99"));
  EXPECT_EQ(postings.Field(u"Amount"), Value(Currency{-30'000'000'000'000}));
}

TEST_F(TableTest, ANumberBeyondItsFieldsRangeOverflows) {
  const auto raised = [&](std::u16string_view table, std::u16string_view key) {
    const auto error = ErrorOf([&] { OpenBook(u"MEDVILNE").Table(table).Seek(key); });
    return error ? error->number() : 0;
  };
  OpenBook(u"MEDVILNE");
  const auto post = [&](const char* amount) {
    Execute(("DELETE FROM GLPosting WHERE Line = 99; INSERT INTO GLPosting VALUES ('MEDVILNE', 105, 99, "
             "'BIUDZ', '5000', " +
             std::string(amount) + ")")
                .c_str());
  };
  post("922337203685478");
  EXPECT_EQ(raised(u"GLDocumentPosting", u"105/99"), kOverflow);
  post("-922337203685478");
  EXPECT_EQ(raised(u"GLDocumentPosting", u"105/99"), kOverflow);
  post("9223372036854775807");
  EXPECT_EQ(raised(u"GLDocumentPosting", u"105/99"), kOverflow);
  post("1");
  EXPECT_EQ(raised(u"GLDocumentPosting", u"105/99"), 0);

  Execute(
      "INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name) VALUES "
      "('MEDVILNE', '2031-01-15', 'OPER', '2710', '5000', 9223372036854775807, ''), "
      "('MEDVILNE', '2031-01-16', 'OPER', '2710', '5000', 9223372036854775807, '')");
  EXPECT_EQ(raised(u"GLAccountMonth", u"2710/2031-01"), kOverflow) << "the sum itself is too great";

  Execute(
      "DROP VIEW GLDocumentPosting; CREATE VIEW GLDocumentPosting AS SELECT BookCode, 'x' AS Code, "
      "2147483648 "
      "AS DocId, AccSetCode, AccountCode, 1e300 AS Amount FROM GLPosting");
  EXPECT_EQ(raised(u"GLDocumentPosting", u"x"), kOverflow) << "a document's number";
  Execute(
      "DROP VIEW GLDocumentPosting; CREATE VIEW GLDocumentPosting AS SELECT BookCode, 'x' AS Code, 1 AS "
      "DocId, "
      "AccSetCode, AccountCode, 1e300 AS Amount FROM GLPosting");
  EXPECT_EQ(raised(u"GLDocumentPosting", u"x"), kOverflow) << "no whole number";
}

TEST_F(TableTest, AFlagIsABoolean) {
  const auto account_sets = OpenBook(u"MEDVILNE").Table(u"GLAccountSet");
  account_sets.Seek(u"BIUDZ");
  EXPECT_EQ(account_sets.Field(u"IsBudget"), Value(true));
  account_sets.Seek(u"PAGR");
  EXPECT_EQ(account_sets.Field(u"IsBudget"), Value(false));
}

TEST_F(TableTest, ADocumentsNumberIsAWholeNumberAndItsDateADate) {
  const auto documents = OpenBook(u"MEDVILNE").Table(u"THDocument");
  EXPECT_TRUE(documents.Seek(u"104"));
  EXPECT_EQ(documents.Field(u"IDC"), Value(std::int32_t{104}));
  EXPECT_EQ(documents.Field(u"DocDate"), Value(Date{45657}));
  EXPECT_EQ(documents.Field(u"Code"), Value(u"BIU-2024-03"));
  EXPECT_FALSE(documents.Seek(u"201")) << "another book's";
}

TEST_F(TableTest, RowsStandInTheOrderOfTheKeyAndFieldsInTheOrderAskedFor) {
  EXPECT_THAT(Texts(OpenBook(u"BALTIJA").Table(u"THDocument").Rows({u"DocTypeCode", u"IDC"})),
              testing::ElementsAre("BOBN|201", "BOBN|202", "BOBN|203", "BOBN|204", "BOBN|205", "GLOP|206"));
  Execute("UPDATE GLAccountSet SET Name = Code || Name");
  Execute("UPDATE GLAccountSet SET Name = 'Ž' WHERE Code = 'BIUDZ'");
  EXPECT_THAT(Texts(OpenBook(u"BALTIJA").Table(u"GLAccountSet").Rows({u"Name", u"Code"})),
              testing::ElementsAre("Ž|BIUDZ", "PAGRPagrindinis sąskaitų planas|PAGR",
                                   "ŽVEJYBAŽvejybos sezono biudžetas|ŽVEJYBA"));
}

TEST_F(TableTest, KeysAreComparedExactlyWhateverCharactersTheyHave) {
  const auto account_sets = OpenBook(u"MEDVILNE").Table(u"GLAccountSet");
  EXPECT_TRUE(account_sets.Seek(u"O'BRIEN"));
  EXPECT_EQ(account_sets.Field(u"Name"), Value(u"Padalinio „O'Brien“ biudžetas"));
  for (const auto key : {u"biudz", u"BIUDZ ", u"", u"%", u"X' OR '1'='1", u"'", u"O''BRIEN"}) {
    EXPECT_FALSE(account_sets.Seek(key)) << ToUtf8(key);
  }
}

TEST_F(TableTest, NamesOfTablesAndFieldsIgnoreLetterCase) {
  const auto account_sets = OpenBook(u"MEDVILNE").Table(u"glaccountSET");
  EXPECT_TRUE(account_sets.Seek(u"PAGR"));
  EXPECT_EQ(account_sets.Field(u"NAME"), Value(u"Pagrindinis sąskaitų planas"));
  EXPECT_EQ(Texts(account_sets.Rows({u"code"})).size(), 4u);
}

TEST_F(TableTest, AMissLeavesNoCurrentRecord) {
  const auto account_sets = OpenBook(u"MEDVILNE").Table(u"GLAccountSet");
  account_sets.Seek(u"PAGR");
  EXPECT_FALSE(account_sets.Seek(u"NERA"));
  const auto error = ErrorOf([&] { account_sets.Field(u"Name"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kSubscriptOutOfRange);
  EXPECT_THAT(ToUtf8(error->description()), testing::HasSubstr("\"GLAccountSet\" has no current record"));
}

TEST_F(TableTest, AFieldThatTheTableLacksIsNamed) {
  const auto account_sets = OpenBook(u"MEDVILNE").Table(u"GLAccountSet");
  account_sets.Seek(u"PAGR");
  for (const auto& step :
       {std::function<void()>([&] { account_sets.Field(u"Spalva"); }), std::function<void()>([&] {
          account_sets.Rows({u"Code", u"Spalva"});
        })}) {
    const auto error = ErrorOf(step);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), kSubscriptOutOfRange);
    EXPECT_EQ(error->source(), u"NVXCommonObjects");
    EXPECT_THAT(ToUtf8(error->description()), testing::HasSubstr("no field \"Spalva\""));
  }
}

TEST_F(TableTest, ATableWithoutRecordsGivesNoRows) {
  const auto book = OpenBook(u"BALTIJA");
  Execute("DELETE FROM REFBankAccountRole WHERE BookCode = 'BALTIJA'");
  const auto roles = book.Table(u"REFBankAccountRole");
  EXPECT_EQ(roles.Rows({u"Code"}), Value());
  EXPECT_FALSE(roles.Seek(u"ATSK"));
  EXPECT_EQ(ErrorOf([&] { roles.Rows({u"Spalva"}); })->number(), kSubscriptOutOfRange);
  EXPECT_EQ(Texts(OpenBook(u"MEDVILNE").Table(u"REFBankAccountRole").Rows({u"Code"})).size(), 2u);
}

TEST_F(TableTest, RowsRefusesNoNamesAndWhatIsNoList) {
  const auto books = OpenBook(u"MEDVILNE").Table(u"Book");
  ExpectFailure([&] { books.Rows({}); }, Failure::WrongParameters, u"NVXCommonObjects",
                u"needs the names of fields");
  const auto error = ErrorOf([&] { Get(books.object(), u"Rows", {u"Code"}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kTypeMismatch);
}

TEST_F(TableTest, AnUnknownTableIsRefusedAndNamed) {
  const auto book = OpenBook(u"MEDVILNE");
  for (const auto name :
       {u"Nera", u"", u"sqlite_master", u"Book; DROP TABLE Book", u"GLContAccountPostBBN"}) {
    ExpectFailure([&] { book.Table(name); }, Failure::UnknownTable, u"NVXCommonObjects",
                  u"There is no table \"" + std::u16string(name) + u"\"");
  }
}

TEST_F(TableTest, TablesKeepTheirOwnRecordsAndOutliveTheBook) {
  host::Table first, second;
  {
    const auto book = OpenBook(u"MEDVILNE");
    first = book.Table(u"GLAccountSet");
    second = book.Table(u"GLAccountSet");
  }
  first.Seek(u"PAGR");
  second.Seek(u"BIUDZ");
  EXPECT_EQ(first.Field(u"Code"), Value(u"PAGR"));
  EXPECT_EQ(second.Field(u"Code"), Value(u"BIUDZ"));
}

TEST_F(TableTest, TheSampleRefusesContradictoryRows) {
  OpenBook(u"MEDVILNE");
  for (const auto sql :
       {"INSERT INTO GLPosting VALUES ('BALTIJA', 101, 9, 'BIUDZ', '5000', 1)",
        "INSERT INTO GLPosting VALUES ('MEDVILNE', 101, 9, 'NERA', '5000', 1)",
        "INSERT INTO THDocument VALUES (0, 'MEDVILNE', 'BOBN', 'X', '2024-01-01', '')",
        "INSERT INTO THDocument VALUES (9, 'MEDVILNE', 'BOBN', 'X', '2024-02-30', '')",
        "INSERT INTO THDocument VALUES (9, 'MEDVILNE', 'BOBN', 'BIU-2024-01', '2024-01-01', '')",
        "INSERT INTO GLAccountSet VALUES ('MEDVILNE', 'X', '', 2)"}) {
    const Database database(options_.database, Database::Mode::Write);
    database.Execute("PRAGMA foreign_keys = ON");
    ExpectFailure([&] { database.Execute(sql); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                  u"constraint failed");
  }
}

}  // namespace
}  // namespace qva::embedded
