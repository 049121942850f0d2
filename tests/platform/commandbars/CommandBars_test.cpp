#include "platform/commandbars/CommandBars.h"

#include <gtest/gtest.h>

#include "platform/excel_refusals.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::commandbars {
namespace {

constexpr std::int32_t kBarRefused = -2147467259;  // hexadecimal 80004005

class CommandBarsTest : public memory::ExcelTest {
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
    EXPECT_EQ(RaisedBy([&] { Get(bar, member); }), excel::kObjectGone) << ToUtf8(member);
  }
  EXPECT_EQ(RaisedBy([&] { Put(bar, u"Visible", true); }), excel::kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Call(bar, u"Delete"); }), excel::kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Get(controls, u"Count"); }), excel::kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Call(controls, u"Add"); }), excel::kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Get(control, u"Parameter"); }), excel::kObjectGone);
}

TEST_F(CommandBarsTest, OfExcelItselfAreNotDeleted) {
  const ObjectPtr menu = GetObject(bars, u"Item", {1});
  EXPECT_EQ(RaisedBy([&] { Call(menu, u"Delete"); }), -2147467259);
  EXPECT_EQ(Get(bars, u"Count"), Value(3));
}

TEST_F(CommandBarsTest, AreRenamedUnlessTheyAreExcelsOrTheNameIsTaken) {
  const ObjectPtr bar = Call(bars, u"Add", {u"Ataskaita"}).ToObject();
  Put(bar, u"Name", u"Kita");
  EXPECT_TRUE(GetObject(bars, u"Item", {u"kita"}) == bar);
  Put(bar, u"Name", u"KITA");
  EXPECT_EQ(Text(bar, u"Name"), u"KITA");
  EXPECT_EQ(RaisedBy([&] { Put(bar, u"Name", u"standard"); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([&] { Put(GetObject(bars, u"Item", {1}), u"Name", u"x"); }), kBarRefused);
}

TEST_F(CommandBarsTest, StandWhereTheyAreAskedTo) {
  const ObjectPtr bar = Call(bars, u"Add", Arguments{u"Ataskaita"}.Named(u"MenuBar", true)).ToObject();
  EXPECT_EQ(Get(bar, u"Type"), Value(1));
  EXPECT_EQ(Get(bar, u"Position"), Value(std::int32_t{msoBarTop}));
  Put(bar, u"Position", std::int32_t{msoBarFloating});
  EXPECT_EQ(Get(bar, u"Position"), Value(std::int32_t{msoBarFloating}));
  EXPECT_EQ(RaisedBy([&] { Put(bar, u"Position", 9); }), kInvalidProcedureCall);
}

TEST_F(CommandBarsTest, RefuseWhatTheirProtectionForbids) {
  const ObjectPtr bar = Call(bars, u"Add", {u"Ataskaita"}).ToObject();
  const ObjectPtr controls = GetObject(bar, u"Controls");
  const ObjectPtr control = Call(controls, u"Add").ToObject();
  Put(bar, u"Protection", msoBarNoCustomize | msoBarNoMove | msoBarNoChangeVisible);
  EXPECT_EQ(RaisedBy([&] { Call(controls, u"Add"); }), kBarRefused);
  EXPECT_EQ(RaisedBy([&] { Call(control, u"Delete"); }), kBarRefused);
  EXPECT_EQ(RaisedBy([&] { Put(bar, u"Position", std::int32_t{msoBarLeft}); }), kBarRefused);
  EXPECT_EQ(RaisedBy([&] { Put(bar, u"Visible", true); }), kBarRefused);
  Put(bar, u"Visible", false);
  Put(control, u"Caption", u"x");
  Put(bar, u"Protection", std::int32_t{msoBarNoProtection});
  Call(control, u"Delete");
  EXPECT_EQ(Get(controls, u"Count"), Value(0));
}

TEST_F(CommandBarsTest, FindTheirFirstControlThatFits) {
  const ObjectPtr bar = Call(bars, u"Add", {u"Ataskaita"}).ToObject();
  const ObjectPtr controls = GetObject(bar, u"Controls");
  const ObjectPtr first = Call(controls, u"Add", {1, 109}).ToObject();
  const ObjectPtr second = Call(controls, u"Add", {1, 109}).ToObject();
  Put(second, u"Tag", u"TagPrint");
  Put(first, u"Visible", false);
  const auto find = [&](std::u16string_view name, const Value& value) {
    return Call(bar, u"FindControl", Arguments().Named(name, value));
  };
  EXPECT_EQ(find(u"Id", 109), Value(first));
  EXPECT_EQ(find(u"Tag", u"TagPrint"), Value(second));
  EXPECT_EQ(find(u"Visible", true), Value(second));
  EXPECT_TRUE(find(u"Tag", u"tagprint").IsNothing());
  EXPECT_TRUE(find(u"Type", std::int32_t{msoControlPopup}).IsNothing());
}

TEST_F(CommandBarsTest, ThatAreTemporaryEndWithExcel) {
  for (const bool temporary : {true, false}) {
    const ObjectPtr bar =
        Call(bars, u"Add", Arguments{temporary ? u"Trumpam" : u"Ilgam"}.Named(u"Temporary", temporary))
            .ToObject();
    for (const bool control : {true, false}) {
      Call(GetObject(bar, u"Controls"), u"Add", Arguments().Named(u"Temporary", control));
    }
  }
  Call(application, u"OnKey", {u"{F1}", u"x"});
  excel->Restart();
  EXPECT_EQ(Get(bars, u"Count"), Value(4));
  EXPECT_EQ(Get(GetObject(GetObject(bars, u"Item", {u"Ilgam"}), u"Controls"), u"Count"), Value(1));
  EXPECT_EQ(excel->KeyBinding(u"{F1}"), std::nullopt);
}

// An application that has no memory left for showing what changed.
TEST(CommandBars, LeaveNoBarAndNoControlWhenMemoryRunsOut) {
  struct ShortOfMemory : CommandBarApplication {
    void RunMacro(const std::u16string&) override {}
    void CommandBarsChanged() override {
      if (is_short) throw std::bad_alloc();
    }
    bool is_short = false;
  };
  const auto application = std::make_shared<ShortOfMemory>();
  const ObjectPtr bars = MakeRef<CommandBars>(application);
  const ObjectPtr bar = Call(bars, u"Add", {u"Ataskaita"}).ToObject();
  const ObjectPtr controls = GetObject(bar, u"Controls");

  application->is_short = true;
  EXPECT_THROW(Call(bars, u"Add", {u"Kita"}), std::bad_alloc);
  EXPECT_EQ(Get(bars, u"Count"), Value(4));
  EXPECT_THROW(Call(controls, u"Add"), std::bad_alloc);
  EXPECT_EQ(Get(controls, u"Count"), Value(0));
}

}  // namespace
}  // namespace qva::commandbars
