#include "platform/commandbars/CommandBarControls.h"

#include <gtest/gtest.h>

#include "platform/excel_refusals.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::commandbars {
namespace {

constexpr std::int32_t kControlRefused = -2147467259;  // hexadecimal 80004005

class CommandBarControlsTest : public memory::ExcelTest {
 protected:
  ObjectPtr Add(Arguments arguments = {}) const {
    return Call(controls, u"Add", std::move(arguments)).ToObject();
  }

  ObjectPtr bar = Call(GetObject(application, u"CommandBars"), u"Add", {u"Ataskaita"}).ToObject();
  ObjectPtr controls = GetObject(bar, u"Controls");
};

TEST_F(CommandBarControlsTest, AreEmptyButtonsUnlessSomethingElseIsSaid) {
  const ObjectPtr button = Add();
  EXPECT_EQ(Get(button, u"Type"), Value(std::int32_t{msoControlButton}));
  EXPECT_EQ(Get(button, u"Id"), Value(1));
  EXPECT_EQ(Get(button, u"BuiltIn"), Value(false));
  EXPECT_EQ(Get(button, u"FaceId"), Value(0));
  EXPECT_EQ(Text(button, u"Caption"), u"");
  EXPECT_EQ(Get(button, u"Visible"), Value(true));
  EXPECT_EQ(Get(button, u"Enabled"), Value(true));
}

TEST_F(CommandBarControlsTest, StandInFrontOfThePositionThatIsGiven) {
  const ObjectPtr last = Add({1, 1, u"c", 1});
  const ObjectPtr first = Add({1, 1, u"a", 1});
  const ObjectPtr end = Add({1, 1, u"d", 3});
  EXPECT_EQ(Get(first, u"Index"), Value(1));
  EXPECT_EQ(Get(last, u"Index"), Value(2));
  EXPECT_EQ(Get(end, u"Index"), Value(3));
  for (const std::int32_t before : {0, 5}) {
    EXPECT_EQ(RaisedBy([&] { Add({1, 1, u"x", before}); }), kInvalidProcedureCall) << before;
  }
  Call(first, u"Delete");
  EXPECT_EQ(Get(last, u"Index"), Value(1));
  EXPECT_EQ(RaisedBy([&] { Get(first, u"Index"); }), excel::kObjectGone);
}

TEST_F(CommandBarControlsTest, OfExcelItselfBringTheirCaptionAndFace) {
  const ObjectPtr print = Add({1, 2521});
  EXPECT_EQ(Text(print, u"Caption"), u"&Print");
  EXPECT_EQ(Get(print, u"FaceId"), Value(2521));
  EXPECT_EQ(Get(print, u"BuiltIn"), Value(true));
  EXPECT_EQ(Text(Add({4, 1733}), u"Caption"), u"&Zoom:");
}

TEST_F(CommandBarControlsTest, AreRefusedWhenExcelHasNoneOfThatIdAndType) {
  for (const auto& [type, id] : {std::pair{1, 77777}, {1, 0}, {1, 1733}, {4, 2521}, {99, 1}}) {
    EXPECT_EQ(RaisedBy([&, type = type, id = id] {
                Add({type, id});
              }),
              kInvalidProcedureCall)
        << type << ", " << id;
  }
  EXPECT_EQ(Get(controls, u"Count"), Value(0));
}

TEST_F(CommandBarControlsTest, AreFoundByCaptionInAnyLetterCaseAndWithoutAmpersands) {
  const ObjectPtr print = Add({1, 2521});
  EXPECT_TRUE(GetObject(controls, u"Item", {u"print"}) == print);
  EXPECT_TRUE(GetObject(bar, u"Controls", {u"P&rint"}) == print);
  EXPECT_EQ(RaisedBy([&] { Get(controls, u"Item", {u"Preview"}); }), kInvalidProcedureCall);
}

TEST_F(CommandBarControlsTest, ShowTheirCaptionAsTooltipUntilTheyHaveOne) {
  const ObjectPtr button = Add();
  Put(button, u"Caption", u"Saugoti");
  EXPECT_EQ(Text(button, u"ToolTipText"), u"Saugoti");
  Put(button, u"ToolTipText", u"Saugo");
  EXPECT_EQ(Text(button, u"ToolTipText"), u"Saugo");
}

TEST_F(CommandBarControlsTest, ThatAreBoxesHaveNoFaceStyleAndState) {
  const ObjectPtr box = Add({4});
  for (const std::u16string_view member : {u"FaceId", u"Style", u"State"}) {
    EXPECT_EQ(RaisedBy([&] { Get(box, member); }), kUnsupportedMember) << ToUtf8(member);
    EXPECT_EQ(RaisedBy([&] { Put(box, member, 0); }), kUnsupportedMember) << ToUtf8(member);
  }
  EXPECT_EQ(RaisedBy([&] { Call(box, u"PasteFace"); }), kUnsupportedMember);
  Put(box, u"Width", 52);
  EXPECT_EQ(Get(box, u"Width"), Value(52));
}

TEST_F(CommandBarControlsTest, HaveNoMemberEnabledButton) {
  const ObjectPtr button = Add();
  EXPECT_EQ(RaisedBy([&] { Put(button, u"EnabledButton", true); }), kUnsupportedMember);
}

TEST_F(CommandBarControlsTest, TakeTheStatesAndStylesThatExcelKnows) {
  const ObjectPtr button = Add();
  for (const std::int32_t state : {msoButtonDown, msoButtonMixed, msoButtonUp}) {
    Put(button, u"State", state);
    EXPECT_EQ(Get(button, u"State"), Value(state));
  }
  EXPECT_EQ(RaisedBy([&] { Put(button, u"State", 1); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([&] {
              Put(Add({1, 2521}), u"State", 0);
            }),
            kControlRefused)
      << "Excel decides about its own";
  Put(button, u"Style", std::int32_t{msoButtonIconAndCaption});
  EXPECT_EQ(RaisedBy([&] { Put(button, u"Style", 4); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([&] { Put(button, u"FaceId", -1); }), kInvalidProcedureCall);
}

TEST_F(CommandBarControlsTest, TakeTheirFaceFromTheClipboard) {
  const ObjectPtr button = Add({1, 2521});
  EXPECT_EQ(RaisedBy([&] { Call(button, u"PasteFace"); }), kControlRefused);
  const ObjectPtr shape = Call(GetObject(sheet, u"Shapes"), u"AddShape", {1, 0, 0, 16, 16}).ToObject();
  Put(shape, u"Name", u"Picture02");
  Call(shape, u"Copy");
  Call(button, u"PasteFace");
  const auto& data = *excel->data()->command_bars.back()->controls.front();
  EXPECT_EQ(data.pasted_face, u"Picture02");
  EXPECT_EQ(Get(button, u"FaceId"), Value(0));
  Put(button, u"FaceId", 59);
  EXPECT_EQ(data.pasted_face, u"");
}

TEST_F(CommandBarControlsTest, RunTheirMacroUnlessTheyAreHiddenOrDisabled) {
  const ObjectPtr button = Add();
  Call(button, u"Execute");
  Put(button, u"OnAction", u"Book1!Saugoti");
  int saved = 0;
  excel->DefineMacro(u"book1!saugoti", [&] { ++saved; });
  Call(button, u"Execute");
  Put(button, u"Visible", false);
  Call(button, u"Execute");
  Put(button, u"Visible", true);
  Put(button, u"Enabled", false);
  Call(button, u"Execute");
  EXPECT_EQ(saved, 1);
  EXPECT_THAT(excel->MacrosRun(), testing::ElementsAre(u"Book1!Saugoti"));
}

}  // namespace
}  // namespace qva::commandbars
