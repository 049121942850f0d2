#include "platform/recordset/RecordsetFactory.h"

#include "platform/ado.h"
#include "tests/platform/core_test.h"
#include "tests/platform/object_factory_contract.h"

namespace qva {
namespace {

struct RecordsetSystem {
  static constexpr std::u16string_view kKnown = ado::kRecordset;
  ObjectFactory& factory() { return recordsets; }

  recordset::RecordsetFactory recordsets;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(RecordsetFactory, ObjectFactoryContract, RecordsetSystem);

}  // namespace qva

namespace qva::recordset {
namespace {

using RecordsetFactoryTest = CoreTest;

TEST_F(RecordsetFactoryTest, CreatesANewRecordsetEachTimeInAnyLetterCase) {
  RecordsetFactory factory;
  const ObjectPtr first = factory.Create(u"adodb.RECORDSET");
  EXPECT_EQ(first->TypeName(), u"Recordset");
  EXPECT_FALSE(first == factory.Create(u"ADODB.Recordset"));
  EXPECT_EQ(ado::Recordset(first).Fields().Count(), 0);
}

TEST_F(RecordsetFactoryTest, CreatesNothingElse) {
  RecordsetFactory factory;
  for (const char16_t* identifier : {u"ADODB.Connection", u"ADODB", u"", u"ADODB.Recordset.6.0"}) {
    EXPECT_EQ(RaisedBy([&] { factory.Create(identifier); }), kCannotCreateObject) << ToUtf8(identifier);
  }
}

}  // namespace
}  // namespace qva::recordset
