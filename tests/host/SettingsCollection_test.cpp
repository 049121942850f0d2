#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

class SettingsCollectionTest : public HostTest {
 protected:
  host::SettingsCollection settings_ = host::SettingsCollection::Create(factory_);
};

TEST_F(SettingsCollectionTest, AnItemKeepsItsNameTypeAndValue) {
  settings_.Add(u"LastPerBeg", 9, Date{45292});
  const ObjectPtr item = settings_.Item(u"LastPerBeg").object();
  EXPECT_EQ(Get(item, u"Name"), Value(u"LastPerBeg"));
  EXPECT_EQ(Get(item, u"Type"), Value(std::int32_t{9}));
  EXPECT_EQ(Get(item, u"Value"), Value(Date{45292}));
}

TEST_F(SettingsCollectionTest, AnItemAddedWithoutAValueIsEmpty) {
  settings_.Add(u"Year", 3);
  EXPECT_EQ(settings_.Item(u"Year").Value(), Value());
}

TEST_F(SettingsCollectionTest, ItemsAreFoundByNameInAnyLetterCaseAndByNumber) {
  settings_.Add(u"Plan", 7, u"PVZ");
  settings_.Add(u"Mėnuo", 3, std::int32_t{4});
  EXPECT_EQ(settings_.Item(u"MĖNUO").Value(), Value(std::int32_t{4}));
  EXPECT_EQ(GetObject(settings_.object(), u"Item", {std::int32_t{1}}), settings_.Item(u"plan").object());
  EXPECT_EQ(GetObject(settings_.object(), u"Item", {std::int16_t{2}}), settings_.Item(u"mėnuo").object());
  EXPECT_EQ(Get(settings_.object(), u"Count"), Value(std::int32_t{2}));
}

TEST_F(SettingsCollectionTest, ADefaultMemberReachesTheItemAndItsValue) {
  settings_.Add(u"Quarter", 3, std::int32_t{2});
  EXPECT_EQ(Get(settings_.object(), u"", {u"Quarter"}).ToInt32(), 2);
}

TEST_F(SettingsCollectionTest, AValueOfEachKindIsGivenBackAsItCame) {
  settings_.Add(u"X", 3);
  for (const Value& value : {Value(), Value(Null{}), Value(true), Value(2.5), Value(Currency{15000}),
                             Value(u"2024"), Array::Of({u"a"})}) {
    settings_.Item(u"X").SetValue(value);
    EXPECT_EQ(settings_.Item(u"X").Value(), value);
  }
}

TEST_F(SettingsCollectionTest, AnObjectIsSetByReferenceOrAdded) {
  const ObjectPtr object = factory_.Create(host::kPlant);
  settings_.Add(u"BudgetRS", 100, object);
  EXPECT_EQ(settings_.Item(u"BudgetRS").Value().ToObject(), object);
  const ObjectPtr other = factory_.Create(host::kPlant);
  settings_.Item(u"BudgetRS").SetObject(other);
  EXPECT_EQ(settings_.Item(u"BudgetRS").Value().ToObject(), other);
  EXPECT_EQ(object->ReferenceCount(), 1);
  settings_.Item(u"BudgetRS").SetObject(nullptr);
  EXPECT_TRUE(settings_.Item(u"BudgetRS").Value().IsNothing());
}

TEST_F(SettingsCollectionTest, AssigningAnObjectWithoutSetTakesItsDefaultProperty) {
  settings_.Add(u"Book", 7);
  settings_.Item(u"Book").SetValue(OpenBook(u"MEDVILNE").object());
  EXPECT_EQ(settings_.Item(u"Book").Value(), Value(u"MEDVILNE"));
  const auto error = ErrorOf([&] { settings_.Item(u"Book").SetValue(ObjectPtr()); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kObjectNotSet);
  EXPECT_EQ(settings_.Item(u"Book").Value(), Value(u"MEDVILNE"));
}

TEST_F(SettingsCollectionTest, SettingAPlainValueByReferenceIsATypeMismatch) {
  settings_.Add(u"X", 100);
  const auto error = ErrorOf([&] { PutRef(settings_.Item(u"X").object(), u"Value", u"text"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kTypeMismatch);
}

TEST_F(SettingsCollectionTest, ATakenNameIsRefused) {
  settings_.Add(u"Plan", 7, u"a");
  const auto error = ErrorOf([&] { settings_.Add(u"PLAN", 7, u"b"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), 457);
  EXPECT_EQ(error->source(), u"NVXCommonObjects");
  EXPECT_EQ(settings_.Item(u"Plan").Value(), Value(u"a"));
}

TEST_F(SettingsCollectionTest, AnEmptyNameIsRefused) {
  ExpectFailure([&] { settings_.Add(u"", 7); }, Failure::WrongParameters, u"NVXCommonObjects",
                u"needs a name");
}

TEST_F(SettingsCollectionTest, AnUnknownNameOrNumberIsOutOfRange) {
  settings_.Add(u"Plan", 7);
  for (const Value& index : {Value(u"Year"), Value(u"1"), Value(u""), Value(std::int32_t{0}),
                             Value(std::int32_t{2}), Value(std::int32_t{-1})}) {
    const auto error = ErrorOf([&] { GetObject(settings_.object(), u"Item", {index}); });
    ASSERT_TRUE(error) << ToUtf8(DescribeValue(index));
    EXPECT_EQ(error->number(), kSubscriptOutOfRange);
    EXPECT_THAT(ToUtf8(error->description()), testing::HasSubstr(ToUtf8(DescribeValue(index))));
  }
}

TEST_F(SettingsCollectionTest, AnIndexThatIsNoNumberIsRefused) {
  const auto error = ErrorOf([&] { GetObject(settings_.object(), u"Item", {Null{}}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kInvalidUseOfNull);
}

TEST_F(SettingsCollectionTest, AnItemOutlivesTheCollection) {
  settings_.Add(u"Plan", 7, u"a");
  const host::SettingsItem item = settings_.Item(u"Plan");
  settings_ = host::SettingsCollection();
  EXPECT_EQ(item.Value(), Value(u"a"));
}

}  // namespace
}  // namespace qva::embedded
