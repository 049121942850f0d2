#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

using PathKeyLookupTest = HostTest;

TEST_F(PathKeyLookupTest, GivesTheCommonFolderWithoutABook) {
  const auto lookup = host::DataAccess::Create(factory_).Lookup(u"PathKey", host::Book());
  EXPECT_TRUE(lookup.Run({u"BookRepSave"}));
  EXPECT_EQ(Get(lookup.object(), u"Value"), Value(u"C:\\Ataskaitos\\Archyvas"));
}

TEST_F(PathKeyLookupTest, ABooksOwnFolderComesBeforeTheCommonOne) {
  const auto data = host::DataAccess::Create(factory_);
  const auto own = data.Lookup(u"PathKey", OpenBook(u"BALTIJA"));
  EXPECT_TRUE(own.Run({u"BookRepSave"}));
  EXPECT_EQ(own.Result(), u"C:\\Ataskaitos\\Baltija");
  const auto common = data.Lookup(u"PathKey", OpenBook(u"MEDVILNE"));
  EXPECT_TRUE(common.Run({u"BookRepSave"}));
  EXPECT_EQ(common.Result(), u"C:\\Ataskaitos\\Archyvas");
}

TEST_F(PathKeyLookupTest, AMissIsFalseWithAnEmptyValueAlsoAfterAHit) {
  const auto lookup = host::DataAccess::Create(factory_).Lookup(u"PathKey", host::Book());
  EXPECT_TRUE(lookup.Run({u"BookRepSave"}));
  EXPECT_FALSE(lookup.Run({u"bookrepsave"}));
  EXPECT_EQ(Get(lookup.object(), u"Value"), Value(u""));
  EXPECT_FALSE(lookup.Run({u""}));
  EXPECT_FALSE(lookup.Run({u"' OR '1' = '1"}));
}

TEST_F(PathKeyLookupTest, TheListMayHaveAnyLowerBound) {
  const auto lookup = host::DataAccess::Create(factory_).Lookup(u"PathKey", host::Book());
  EXPECT_EQ(Call(lookup.object(), u"Run", {Array::Of({u"BookRepSave"}, 1)}), Value(true));
}

TEST_F(PathKeyLookupTest, ReadingTheValueBeforeRunIsRefused) {
  const auto lookup = host::DataAccess::Create(factory_).Lookup(u"PathKey", host::Book());
  ExpectFailure([&] { lookup.Result(); }, Failure::NotInitialised, u"NVXCommonObjects", u"before Lookup.Run");
}

TEST_F(PathKeyLookupTest, AnotherNumberOfParametersIsRefused) {
  const auto lookup = host::DataAccess::Create(factory_).Lookup(u"PathKey", host::Book());
  for (const std::vector<Value>& list : {std::vector<Value>{}, std::vector<Value>{u"BookRepSave", u"X"}}) {
    ExpectFailure([&] { lookup.Run(list); }, Failure::WrongParameters, u"NVXCommonObjects",
                  u"a list of one parameter");
  }
  const Value block = Array::Block(1, 1, {u"BookRepSave"});
  ExpectFailure([&] { Call(lookup.object(), u"Run", {block}); }, Failure::WrongParameters,
                u"NVXCommonObjects", u"a list of one parameter");
}

TEST_F(PathKeyLookupTest, AParameterOutsideAListIsATypeMismatch) {
  const auto lookup = host::DataAccess::Create(factory_).Lookup(u"PathKey", host::Book());
  const auto error = ErrorOf([&] { Call(lookup.object(), u"Run", {u"BookRepSave"}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kTypeMismatch);
}

TEST_F(PathKeyLookupTest, TheNameIgnoresLetterCaseAndTheBookMayBeLeftOut) {
  const auto data = host::DataAccess::Create(factory_);
  const host::Lookup lookup(GetObject(data.object(), u"Lookup", {u"pathkey"}));
  EXPECT_TRUE(lookup.Run({u"BookForms"}));
}

TEST_F(PathKeyLookupTest, AnUnknownLookupIsRefused) {
  ExpectFailure([&] { host::DataAccess::Create(factory_).Lookup(u"Rates", host::Book()); },
                Failure::UnknownLookup, u"NVXCommonObjects", u"no lookup \"Rates\"");
}

TEST_F(PathKeyLookupTest, AnUnusableDatabaseIsReported) {
  WriteFile(options_.database, std::string(5000, 'x'));
  ExpectFailure([&] { host::DataAccess::Create(factory_).Lookup(u"PathKey", host::Book()); },
                Failure::DatabaseUnusable, u"NVXCommonObjects", u"file is not a database");
}

}  // namespace
}  // namespace qva::embedded
