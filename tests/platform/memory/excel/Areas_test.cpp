#include "platform/memory/excel/Areas.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class AreasTest : public ExcelTest {};

TEST_F(AreasTest, OfARangeAreTheRangeItself) {
  const ObjectPtr areas = GetObject(Range(u"B2:C5"), u"Areas");
  EXPECT_EQ(Get(areas, u"Count"), Value(1));
  EXPECT_EQ(AddressOf(GetObject(areas, u"Item", {1})), u"$B$2:$C$5");
  for (const std::int32_t position : {0, 2}) {
    EXPECT_EQ(RaisedBy([&] { Get(areas, u"Item", {position}); }), kSubscriptOutOfRange);
  }
}

TEST_F(AreasTest, FormulasInTheUsersLanguageAreThoseOfTheUnitedStates) {
  Put(Range(u"A1"), u"FormulaLocal", u"=1+1");
  EXPECT_EQ(Get(Range(u"A1"), u"FormulaLocal"), Value(u"=1+1"));
  EXPECT_EQ(At(u"A1"), Value(2.0));
  Put(Range(u"A1"), u"FormulaLocal", u"");
  EXPECT_EQ(At(u"A1"), Value());
}

}  // namespace
}  // namespace qva::memory
