#include "platform/memory/excel/CommandBars.h"

#include <gtest/gtest.h>

#include "platform/memory/excel/Refusals.h"
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

TEST_F(CommandBarsTest, OfExcelItselfHaveControlsWithoutParameters) {
  for (int position = 1; position <= 3; ++position) {
    const ObjectPtr bar = GetObject(bars, u"Item", {position});
    EXPECT_EQ(Get(bar, u"BuiltIn"), Value(true));
    const ObjectPtr control = GetObject(GetObject(bar, u"Controls"), u"Item", {1});
    EXPECT_EQ(Text(control, u"Parameter"), u"");
    EXPECT_NE(Text(control, u"Caption"), u"");
    EXPECT_TRUE(GetObject(bar, u"Controls", {1}) == control);
  }
}

TEST_F(CommandBarsTest, AreAddedHiddenAndWithoutControlsAndTakeThem) {
  const ObjectPtr bar = Call(bars, u"Add", Arguments().Named(u"Name", u"Ataskaita")).ToObject();
  EXPECT_EQ(Get(bars, u"Count"), Value(4));
  EXPECT_TRUE(GetObject(bars, u"Item", {u"ATASKAITA"}) == bar);
  EXPECT_EQ(Get(bar, u"BuiltIn"), Value(false));
  EXPECT_EQ(Get(bar, u"Enabled"), Value(true));
  EXPECT_EQ(Get(bar, u"Visible"), Value(false));
  const ObjectPtr controls = GetObject(bar, u"Controls");
  EXPECT_EQ(Get(controls, u"Count"), Value(0));
  EXPECT_EQ(RaisedBy([&] { Get(controls, u"Item", {1}); }), kInvalidProcedureCall);

  const ObjectPtr control = Call(controls, u"Add", Arguments().Named(u"Parameter", u"Ataskaita")).ToObject();
  EXPECT_EQ(Get(controls, u"Count"), Value(1));
  EXPECT_TRUE(GetObject(controls, u"Item", {1}) == control);
  EXPECT_EQ(Text(control, u"Parameter"), u"Ataskaita");
  Put(control, u"Caption", u"Spausdinti");
  EXPECT_EQ(Text(control, u"Caption"), u"Spausdinti");
}

TEST_F(CommandBarsTest, HaveDifferentNames) {
  EXPECT_EQ(RaisedBy([&] { Call(bars, u"Add", {u"STANDARD"}); }), kInvalidProcedureCall);
  EXPECT_EQ(Text(Call(bars, u"Add").ToObject(), u"Name"), u"Custom 1");
  EXPECT_EQ(Text(Call(bars, u"Add").ToObject(), u"Name"), u"Custom 2");
}

TEST_F(CommandBarsTest, AreGoneWithTheirControlsOnceTheyWereDeleted) {
  const ObjectPtr bar = Call(bars, u"Add", {u"Ataskaita"}).ToObject();
  const ObjectPtr controls = GetObject(bar, u"Controls");
  const ObjectPtr control = Call(controls, u"Add").ToObject();
  Call(bar, u"Delete");
  EXPECT_EQ(Get(bars, u"Count"), Value(3));
  EXPECT_EQ(RaisedBy([&] { Get(bars, u"Item", {u"Ataskaita"}); }), kInvalidProcedureCall);
  for (const std::u16string_view member :
       {u"Name", u"Index", u"Visible", u"Enabled", u"BuiltIn", u"Controls"}) {
    EXPECT_EQ(RaisedBy([&] { Get(bar, member); }), kObjectGone) << ToUtf8(member);
  }
  EXPECT_EQ(RaisedBy([&] { Put(bar, u"Visible", true); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Call(bar, u"Delete"); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Get(controls, u"Count"); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Call(controls, u"Add"); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Get(control, u"Parameter"); }), kObjectGone);
}

TEST_F(CommandBarsTest, OfExcelItselfAreNotDeleted) {
  const ObjectPtr menu = GetObject(bars, u"Item", {1});
  EXPECT_EQ(RaisedBy([&] { Call(menu, u"Delete"); }), -2147467259);
  EXPECT_EQ(Get(bars, u"Count"), Value(3));
}

}  // namespace
}  // namespace qva::memory
