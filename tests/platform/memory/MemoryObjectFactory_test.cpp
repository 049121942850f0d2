#include "platform/memory/MemoryObjectFactory.h"

#include <gtest/gtest.h>

#include "platform/ado.h"
#include "platform/memory/excel/Application.h"
#include "tests/platform/core_test.h"
#include "tests/platform/object_factory_contract.h"

namespace qva {
namespace {

struct MemoryFactorySystem {
  static constexpr std::u16string_view kKnown = ado::kRecordset;
  ObjectFactory& factory() { return memory; }

  MemoryObjectFactory memory;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryObjectFactory, ObjectFactoryContract, MemoryFactorySystem);

namespace {

using MemoryObjectFactoryTest = CoreTest;

TEST_F(MemoryObjectFactoryTest, MakesANewObjectEachTimeInAnyLetterCase) {
  platform.object_factory.Register<memory::Application>(u"Excel.Application");
  const ObjectPtr first = platform.object_factory.Create(u"excel.APPLICATION");
  const ObjectPtr second = platform.object_factory.Create(u"Excel.Application");
  EXPECT_EQ(first->TypeName(), u"Application");
  EXPECT_FALSE(first == second);
}

TEST_F(MemoryObjectFactoryTest, Raises429ForWhatItDoesNotKnow) {
  EXPECT_EQ(RaisedBy([&] { platform.object_factory.Create(u"No.Such"); }), kCannotCreateObject);
}

TEST_F(MemoryObjectFactoryTest, NamesTheClassAndTheCauseInItsError429) {
  platform.object_factory.Register(u"A.Nothing", [] { return ObjectPtr(); });
  const auto description_of = [&](std::u16string_view identifier) {
    return ErrorOf([&] { platform.object_factory.Create(identifier); }).value().description();
  };
  EXPECT_EQ(description_of(u"No.Such"), u"No.Such: no such class");
  EXPECT_EQ(description_of(u"A.Nothing"), u"A.Nothing: its creator gives nothing");
}

TEST_F(MemoryObjectFactoryTest, Raises429ForACreatorThatGivesNothingAndPassesOnWhatItRaises) {
  platform.object_factory.Register(u"A.Nothing", [] { return ObjectPtr(); });
  platform.object_factory.Register(u"A.Failure",
                                   []() -> ObjectPtr { throw AutomationError(5, u"A", u"refused"); });
  EXPECT_EQ(RaisedBy([&] { platform.object_factory.Create(u"A.Nothing"); }), kCannotCreateObject);
  EXPECT_EQ(RaisedBy([&] { platform.object_factory.Create(u"A.Failure"); }), 5);
}

TEST_F(MemoryObjectFactoryTest, KnowsRecordsetsFromTheStart) {
  const ado::Recordset recordset = ado::Recordset::Create(platform.object_factory);
  recordset.Fields().Append(u"Code", ado::adVarChar, 5, ado::adFldUnspecified);
  recordset.Open();
  EXPECT_EQ(recordset.RecordCount(), 0);
}

TEST_F(MemoryObjectFactoryTest, ReplacesAnEarlierRegistration) {
  platform.object_factory.Register(u"A.B", [] { return ObjectPtr(); });
  platform.object_factory.Register<memory::Application>(u"a.b");
  EXPECT_TRUE(platform.object_factory.Create(u"A.B"));
}

}  // namespace
}  // namespace qva
