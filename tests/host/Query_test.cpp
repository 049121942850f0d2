#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

class QueryTest : public HostTest {
 protected:
  host::Query NewQuery() {
    const auto query = host::Query::Create(factory_);
    query.Init(OpenBook(u"MEDVILNE"));
    return query;
  }
  /// The first column of what a text gives on the database.
  std::vector<std::string> Results(std::u16string_view sql) {
    const Database database(options_.database, Database::Mode::Read);
    const Statement statement = database.Prepare(ToUtf8(sql));
    Cursor row = statement.Run({});
    std::vector<std::string> texts;
    while (row.Next()) texts.push_back(ToUtf8(row.Text(0)));
    return texts;
  }
  host::Query BudgetDocuments(std::u16string_view account_set) {
    const auto build = host::ConditionBuilder::Create(factory_);
    const auto query = NewQuery();
    query.From(u"GLContAccountPostBBN", u"AccPost");
    query.SetCondition(
        build.And(build.Equal(u"AccPost.AccSetCode", account_set), build.Equal(u"Doc.DocTypeCode", u"BOBN")));
    query.SetDistinct(true);
    query.Select(u"AccPost.DocId");
    query.Join(u"THDocument", u"Doc", u"AccPost.DocId = Doc.IDC");
    return query;
  }
};

TEST_F(QueryTest, TheQueryOfAnAccountSetsBudgetDocumentsReadsAsItIsPutTogether) {
  EXPECT_EQ(ToUtf8(BudgetDocuments(u"X").Sql()),
            "SELECT DISTINCT AccPost.DocId FROM GLContAccountPostBBN AccPost JOIN THDocument Doc "
            "ON AccPost.DocId = Doc.IDC WHERE AccPost.AccSetCode = 'X' AND Doc.DocTypeCode = 'BOBN'");
}

TEST_F(QueryTest, TheQueryOfAnAccountSetsBudgetDocumentsFindsEachOnceAndNoOtherType) {
  EXPECT_THAT(Results(BudgetDocuments(u"GAMYBA").Sql()), testing::UnorderedElementsAre("104", "105", "107"));
  EXPECT_THAT(Results(BudgetDocuments(u"O'BRIEN").Sql()), testing::UnorderedElementsAre("102", "107"));
  EXPECT_THAT(Results(BudgetDocuments(u"PAGR").Sql()), testing::IsEmpty());
}

TEST_F(QueryTest, ACodeCannotWidenTheQuery) {
  for (const auto code : {u"X' OR '1'='1", u"' OR 1=1 --", u"", u"'"}) {
    EXPECT_THAT(Results(BudgetDocuments(code).Sql()), testing::IsEmpty()) << ToUtf8(code);
  }
}

TEST_F(QueryTest, PartsThatAreNotGivenAreLeftOut) {
  const auto query = NewQuery();
  query.From(u"Book", u"B");
  query.Select(u"B.Code");
  EXPECT_EQ(query.Sql(), u"SELECT B.Code FROM Book B");
  EXPECT_THAT(Results(query.Sql()), testing::UnorderedElementsAre("BALTIJA", "MEDVILNE"));
}

TEST_F(QueryTest, FieldsAndJoinsAddUpInTheirOrder) {
  const auto query = NewQuery();
  query.From(u"THDocument", u"Doc");
  query.Join(u"DocumentType", u"Type", u"Type.Code = Doc.DocTypeCode");
  query.Join(u"Book", u"B", u"B.Code = Doc.BookCode");
  query.Select(u"Type.Name");
  query.Select(u"Doc.Code");
  EXPECT_EQ(ToUtf8(query.Sql()),
            "SELECT Type.Name, Doc.Code FROM THDocument Doc JOIN DocumentType Type ON Type.Code = "
            "Doc.DocTypeCode JOIN Book B ON B.Code = Doc.BookCode");
  EXPECT_EQ(Results(query.Sql()).size(), 15u);
}

TEST_F(QueryTest, ALaterTableConditionOrDistinctTakesTheEarlierOnesPlace) {
  const auto query = NewQuery();
  query.From(u"Company", u"C");
  query.From(u"Book", u"B");
  query.Select(u"Code");
  query.SetDistinct(true);
  query.SetDistinct(false);
  query.SetCondition(u"1 = 0");
  query.SetCondition(u"");
  EXPECT_EQ(query.Sql(), u"SELECT Code FROM Book B");
  EXPECT_EQ(Get(query.object(), u"Distinct"), Value(false));
  EXPECT_EQ(Get(query.object(), u"Condition"), Value(u""));
}

TEST_F(QueryTest, InitNeedsABook) {
  const auto query = host::Query::Create(factory_);
  ExpectFailure([&] { query.Init(host::Book()); }, Failure::WrongParameters, u"NVXCommonObjects",
                u"Query.Init needs a book");
  query.From(u"Book", u"B");
  query.Select(u"Code");
  ExpectFailure([&] { query.Sql(); }, Failure::NotInitialised, u"NVXCommonObjects", u"before Query.Init");
}

TEST_F(QueryTest, ThereIsNoTextBeforeATableAndAFieldAreGiven) {
  const auto query = NewQuery();
  ExpectFailure([&] { query.Sql(); }, Failure::NotInitialised, u"NVXCommonObjects", u"Query.From");
  query.From(u"Book", u"B");
  ExpectFailure([&] { query.Sql(); }, Failure::NotInitialised, u"NVXCommonObjects", u"Query.Select");
}

TEST_F(QueryTest, TablesAndAliasesAreNamesAndFieldsHaveOnePointAtMost) {
  const auto query = NewQuery();
  for (const auto name : {u"", u"a.b", u"a b", u"1a", u"a'", u"a;", u"a)", u"Sąskaita", u"(SELECT 1)"}) {
    for (const auto& step : {std::function<void()>([&] { query.From(name, u"A"); }),
                             std::function<void()>([&] { query.From(u"Book", name); }),
                             std::function<void()>([&] { query.Join(name, u"A", u"1 = 1"); }),
                             std::function<void()>([&] { query.Join(u"Book", name, u"1 = 1"); })}) {
      ExpectFailure(step, Failure::WrongParameters, u"NVXCommonObjects", u"needs a name");
    }
  }
  for (const auto field : {u"", u"a.b.c", u"*", u"1", u"a FROM Book --", u"a,b"}) {
    ExpectFailure([&] { query.Select(field); }, Failure::WrongParameters, u"NVXCommonObjects",
                  u"Query.Select needs a field");
  }
  ExpectFailure([&] { query.Join(u"Book", u"B", u" "); }, Failure::WrongParameters, u"NVXCommonObjects",
                u"Query.Join needs a condition");
}

TEST_F(QueryTest, ARefusedPartLeavesTheQueryAsItWas) {
  const auto query = NewQuery();
  query.From(u"Book", u"B");
  query.Select(u"B.Code");
  EXPECT_TRUE(ErrorOf([&] { query.From(u"a b", u"A"); }));
  EXPECT_TRUE(ErrorOf([&] { query.Join(u"Company", u"C", u""); }));
  EXPECT_TRUE(ErrorOf([&] { query.Select(u"*"); }));
  EXPECT_EQ(query.Sql(), u"SELECT B.Code FROM Book B");
}

}  // namespace
}  // namespace qva::embedded
