#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

using CreateBook = HostTest;

TEST_F(CreateBook, OpensTheBooksOfTheSampleCompanies) {
  const auto first = OpenBook(u"MEDVILNE");
  const auto second = OpenBook(u"BALTIJA");
  EXPECT_EQ(first.BookCode(), u"MEDVILNE");
  EXPECT_EQ(Get(first.object(), u"Name"), Value(u"Medvilnės namai"));
  EXPECT_EQ(second.BookCode(), u"BALTIJA");
  EXPECT_EQ(Get(second.object(), u"Name"), Value(u"Baltijos žvejų krantinė"));
  EXPECT_NE(first.object(), second.object());
}

TEST_F(CreateBook, TheBooksDefaultMemberIsItsCode) {
  EXPECT_EQ(Value(OpenBook(u"MEDVILNE").object()).ToText(), u"MEDVILNE");
}

TEST_F(CreateBook, AllBooksAreListedByCode) {
  const Value rows = host::CommonObjects::Create(factory_).Books().Rows({u"Code", u"Name"});
  EXPECT_THAT(rows.ToArray().elements,
              testing::ElementsAre(Value(u"BALTIJA"), Value(u"Baltijos žvejų krantinė"), Value(u"MEDVILNE"),
                                   Value(u"Medvilnės namai")));
}

TEST_F(CreateBook, RefusesAnUnknownCodeAndNamesIt) {
  for (const auto code : {u"NERA", u"medvilne", u"MEDVILNE ", u"", u"' OR '1' = '1"}) {
    ExpectFailure([&] { OpenBook(code); }, Failure::UnknownBook, u"NVXCommonObjects",
                  u"There is no book \"" + std::u16string(code) + u"\"");
  }
}

TEST_F(CreateBook, FirstUseCreatesTheDatabaseAndItsFolder) {
  options_.database = folder_.path() / "new" / "folder" / "host.sqlite";
  EmbeddedHost factory(options_, platform_.services());
  const auto book = host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE");
  EXPECT_EQ(book.BookCode(), u"MEDVILNE");
  EXPECT_TRUE(std::filesystem::is_regular_file(options_.database));
}

TEST_F(CreateBook, FirstUseLeavesNothingButTheDatabase) {
  OpenBook(u"MEDVILNE");
  EXPECT_THAT(Files(), testing::ElementsAre("host.sqlite"));
}

TEST_F(CreateBook, LaterUseNeedsNoSampleAndKeepsWhatTheDatabaseHolds) {
  OpenBook(u"MEDVILNE");
  Database(options_.database, Database::Mode::Write)
      .Execute("UPDATE Book SET Name = 'Kita knyga' WHERE Code = 'MEDVILNE'");
  options_.sample = folder_.path() / "missing.sql";
  EmbeddedHost factory(options_, platform_.services());
  const auto book = host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE");
  EXPECT_EQ(Get(book.object(), u"Name"), Value(u"Kita knyga"));
}

TEST_F(CreateBook, AMissingSampleIsNamedAndLeavesNothing) {
  options_.sample = folder_.path() / "missing.sql";
  EmbeddedHost factory(options_, platform_.services());
  ExpectFailure([&] { host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE"); },
                Failure::DatabaseNotCreated, u"NVXCommonObjects", u"missing.sql\" cannot be read");
  EXPECT_THAT(Files(), testing::IsEmpty());
}

TEST_F(CreateBook, ASampleThatFailsHalfWayLeavesNothing) {
  options_.sample = folder_.path() / "sample.sql";
  WriteFile(options_.sample,
            "PRAGMA user_version = 3; CREATE TABLE Book (Code TEXT); INSERT INTO Nowhere VALUES (1);");
  EmbeddedHost factory(options_, platform_.services());
  ExpectFailure([&] { host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE"); },
                Failure::DatabaseNotCreated, u"NVXCommonObjects", u"no such table: Nowhere");
  EXPECT_THAT(Files(), testing::ElementsAre("sample.sql"));
}

TEST_F(CreateBook, ASampleWhoseRowsContradictEachOtherLeavesNothing) {
  options_.sample = folder_.path() / "sample.sql";
  std::ifstream good(kHostFolder / "sample.sql");
  const std::string script((std::istreambuf_iterator<char>(good)), {});
  WriteFile(options_.sample, script + "INSERT INTO Book VALUES ('X', 'X', 'nobody');");
  EmbeddedHost factory(options_, platform_.services());
  ExpectFailure([&] { host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE"); },
                Failure::DatabaseNotCreated, u"NVXCommonObjects", u"FOREIGN KEY constraint failed");
  EXPECT_THAT(Files(), testing::ElementsAre("sample.sql"));
}

TEST_F(CreateBook, ASampleOfAnotherSchemaDoesNotBecomeTheDatabase) {
  options_.sample = folder_.path() / "sample.sql";
  WriteFile(options_.sample, "CREATE TABLE Book (Code TEXT);");
  EmbeddedHost factory(options_, platform_.services());
  ExpectFailure([&] { host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE"); },
                Failure::DatabaseNotCreated, u"NVXCommonObjects", u"version 0 where 3 is needed");
  EXPECT_THAT(Files(), testing::ElementsAre("sample.sql"));
}

TEST_F(CreateBook, AFolderThatCannotBeIsReported) {
  WriteFile(folder_.path() / "file", "");
  options_.database = folder_.path() / "file" / "host.sqlite";
  EmbeddedHost factory(options_, platform_.services());
  ExpectFailure([&] { host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE"); },
                Failure::DatabaseNotCreated, u"NVXCommonObjects", u"its folder cannot be written");
}

TEST_F(CreateBook, AFolderInTheDatabasesPlaceIsReported) {
  std::filesystem::create_directory(options_.database);
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"it is a folder");
}

TEST_F(CreateBook, AFileThatIsNoDatabaseIsReportedAndKept) {
  const std::string text(5000, 'x');
  WriteFile(options_.database, text);
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"file is not a database");
  EXPECT_EQ(std::filesystem::file_size(options_.database), text.size());
}

TEST_F(CreateBook, AnEmptyFileIsReportedAsADatabaseOfNoSchema) {
  WriteFile(options_.database, "");
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"version 0 where 3 is needed");
}

TEST_F(CreateBook, ADatabaseOfAnotherSchemaVersionIsReported) {
  OpenBook(u"MEDVILNE");
  Database(options_.database, Database::Mode::Write).Execute("PRAGMA user_version = 1");
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"version 1 where 3 is needed");
}

TEST_F(CreateBook, EachMissingTableIsReported) {
  for (const std::string table :
       {"Contact", "Address", "ResponsiblePerson", "PathKey", "Book", "Company", "GLAccountSet",
        "REFBankAccountRole", "DocumentType", "THDocument", "GLAccount"}) {
    std::filesystem::remove(options_.database);
    OpenBook(u"MEDVILNE");
    Database(options_.database, Database::Mode::Write).Execute("DROP TABLE " + table);
    ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                  u"no such table: " + FromUtf8(table));
  }
}

TEST_F(CreateBook, AMissingViewOfPostingsAndWhatItReadsIsReported) {
  for (const auto& [drop, missing] :
       {std::pair("DROP TABLE GLPosting", u"no such table: main.GLPosting"),
        {"DROP VIEW GLContAccountPostBBN", u"no such table: GLContAccountPostBBN"}}) {
    std::filesystem::remove(options_.database);
    OpenBook(u"MEDVILNE");
    Database(options_.database, Database::Mode::Write).Execute(drop);
    ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects", missing);
  }
}

TEST_F(CreateBook, AMissingFieldOfABooksTableIsReported) {
  OpenBook(u"MEDVILNE");
  Database(options_.database, Database::Mode::Write)
      .Execute("ALTER TABLE GLAccountSet RENAME COLUMN Name TO Title");
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"no such column: Name");
}

TEST_F(CreateBook, AMissingColumnIsReported) {
  OpenBook(u"MEDVILNE");
  Database(options_.database, Database::Mode::Write).Execute("ALTER TABLE Company DROP COLUMN VATCode");
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"no such column: Company.VATCode");
}

TEST_F(CreateBook, DamagedPagesAreReportedWhereTheyAreMet) {
  OpenBook(u"MEDVILNE");
  // The first page holds the schema and stays; every other one is overwritten.
  constexpr std::streamoff kPageSize = 4096;
  const auto size = static_cast<std::streamoff>(std::filesystem::file_size(options_.database));
  ASSERT_GT(size, kPageSize);
  {
    std::fstream file(options_.database, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(kPageSize);
    file << std::string(static_cast<std::size_t>(size - kPageSize), '\xA5');
  }
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"database disk image is malformed");
}

TEST_F(CreateBook, ATruncatedDatabaseIsReported) {
  OpenBook(u"MEDVILNE");
  std::filesystem::resize_file(options_.database, 4096);
  ExpectFailure([&] { OpenBook(u"MEDVILNE"); }, Failure::DatabaseUnusable, u"NVXCommonObjects",
                u"database disk image is malformed");
}

TEST_F(CreateBook, AFailedOpeningDoesNotHinderTheNext) {
  WriteFile(options_.database, std::string(5000, 'x'));
  EXPECT_TRUE(ErrorOf([&] { OpenBook(u"MEDVILNE"); }));
  std::filesystem::remove(options_.database);
  EXPECT_EQ(OpenBook(u"MEDVILNE").BookCode(), u"MEDVILNE");
}

/// The open file descriptors of this process that lead to the file.
int DescriptorsOn(const std::filesystem::path& file) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code error;
    if (std::filesystem::read_symlink(entry.path(), error) == std::filesystem::canonical(file)) ++count;
  }
  return count;
}

TEST_F(CreateBook, BooksShareOneConnectionThatClosesWithTheLastOfThem) {
  {
    const auto first = OpenBook(u"MEDVILNE");
    const auto second = OpenBook(u"BALTIJA");
    EXPECT_EQ(DescriptorsOn(options_.database), 1);
  }
  EXPECT_EQ(DescriptorsOn(options_.database), 0);
}

TEST_F(CreateBook, ARefusedBookLeavesTheDatabaseClosed) {
  EXPECT_TRUE(ErrorOf([&] { OpenBook(u"NERA"); }));
  EXPECT_EQ(DescriptorsOn(options_.database), 0);
}

}  // namespace
}  // namespace qva::embedded
