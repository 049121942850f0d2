// What ObjectFactory promises, as tests that every adapter passes. A System is made for each test and brings
// the adapter:
// - ObjectFactory& factory(): the adapter.
// - static constexpr std::u16string_view kKnown: the identifier of a class that it has.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/object_factory.h"
#include "platform/text.h"
#include "tests/raised_error.h"

namespace qva {

template <class System>
class ObjectFactoryContract : public testing::Test {
 protected:
  ~ObjectFactoryContract() override { EXPECT_EQ(Object::LiveCount(), live_before) << "objects stay alive"; }

  System system;
  ObjectFactory& factory = system.factory();
  const long live_before = Object::LiveCount();
};

TYPED_TEST_SUITE_P(ObjectFactoryContract);

TYPED_TEST_P(ObjectFactoryContract, AnObjectIsANewOneInAnyLetterCase) {
  const ObjectPtr first = this->factory.Create(TypeParam::kKnown);
  const ObjectPtr second = this->factory.Create(ToLower(TypeParam::kKnown));
  ASSERT_TRUE(first && second);
  EXPECT_NE(first.get(), second.get());
  EXPECT_EQ(first->TypeName(), second->TypeName());
}

TYPED_TEST_P(ObjectFactoryContract, AClassThatIsNotThereIsError429WhichNamesIt) {
  for (const std::u16string_view identifier : {u"QVA_Nowhere.Nothing", u"Nothing", u""}) {
    const AutomationError error = ErrorOf([&] { this->factory.Create(identifier); }).value();
    EXPECT_EQ(error.number(), kCannotCreateObject);
    EXPECT_TRUE(error.description().starts_with(std::u16string(identifier) + u": ")) << error.what();
  }
}

REGISTER_TYPED_TEST_SUITE_P(ObjectFactoryContract, AnObjectIsANewOneInAnyLetterCase,
                            AClassThatIsNotThereIsError429WhichNamesIt);

}  // namespace qva
