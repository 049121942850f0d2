#include "platform/memory/excel/CommandBars.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class CommandBarsTest : public ExcelTest {
 protected:
  ObjectPtr bars = GetObject(application, u"CommandBars");
};

TEST_F(CommandBarsTest, AreFoundByPositionAndByNameInAnyLetterCase) {
  EXPECT_EQ(Get(bars, u"Count"), Value(3));
  const ObjectPtr menu = GetObject(application, u"CommandBars", {u"WorkSheet Menu Bar"});
  EXPECT_EQ(Text(menu, u"Name"), u"Worksheet Menu Bar");
  EXPECT_TRUE(GetObject(bars, u"Item", {1}) == menu);
  EXPECT_EQ(Get(menu, u"Index"), Value(1));
  EXPECT_EQ(Text(GetObject(bars, u"Item", {2}), u"Name"), u"Standard");
  EXPECT_EQ(Text(GetObject(bars, u"Item", {3}), u"Name"), u"Formatting");
}

TEST_F(CommandBarsTest, Raise5ForABarThatIsNotThere) {
  for (const Value& index : {Value(0), Value(4), Value(u"Ataskaita")}) {
    EXPECT_EQ(RaisedBy([&] { Get(bars, u"Item", {index}); }), kInvalidProcedureCall);
  }
}

TEST_F(CommandBarsTest, AreNotVisibleWhileDisabledAndAfterwardsWhatTheyWere) {
  const ObjectPtr bar = GetObject(bars, u"Item", {u"Standard"});
  EXPECT_EQ(Get(bar, u"Visible"), Value(true));
  Put(bar, u"Enabled", false);
  EXPECT_EQ(Get(bar, u"Visible"), Value(false));
  EXPECT_EQ(RaisedBy([&] { Put(bar, u"Visible", true); }), -2147467259);
  Put(bar, u"Enabled", true);
  EXPECT_EQ(Get(bar, u"Visible"), Value(true));
  Put(bar, u"Visible", false);
  EXPECT_EQ(Get(bar, u"Visible"), Value(false));
  EXPECT_EQ(Get(bar, u"Enabled"), Value(true));
}

}  // namespace
}  // namespace qva::memory
