#include "excelui/CCommandsEvent.h"

#include "tests/excelui/toolbar_test.h"

namespace qva {
namespace {

using testing::ElementsAre;

class CommandsEvent : public ToolbarTest {
 protected:
  static constexpr std::int32_t kComment = 2, kFreeze = 3;

  CommandsEvent() {
    Build(Buttons(1));
    events = GetObject(toolbar, u"CmdEvent");
    Call(sheet, u"Activate");
    Call(Cell(2, 2), u"Activate");
    trace.Clear();
  }

  ObjectPtr Window() const { return GetObject(excel, u"ActiveWindow"); }
  std::vector<std::string> Lines() const { return Shortened(trace.lines()); }
  std::u16string ActiveCell() const { return Get(GetObject(excel, u"ActiveCell"), u"Address").ToText(); }
  Value Freeze(const Value& row = Value(Missing{})) {
    Arguments arguments{interceptor.Wrap(Cell(5, 1), u"Start"), row};
    events->Invoke(Access::Call, u"cmdFreeze", arguments);
    return arguments.positional[1];
  }

  ObjectPtr events;
};

TEST_F(CommandsEvent, HelpShowsTheReportHelpBesideTheLibraryAndTellsItsFile) {
  platform.environment.library_folder = u"D:\\Apskaita";
  Arguments arguments{u"", 0};
  events->Invoke(Access::Call, u"cmdHelp", arguments);
  EXPECT_EQ(arguments.positional[0], Value(u"D:\\Apskaita\\FReport.chm"));
  EXPECT_THAT(trace.lines(), ElementsAre(R"~(Application.Help("D:\Apskaita\FReport.chm", 0))~"));
}

TEST_F(CommandsEvent, HelpWithoutArgumentsIsTheReportHelp) {
  Call(events, u"cmdHelp");
  EXPECT_THAT(excel->HelpThatWasShown(),
              ElementsAre(memory::HelpShown{u"C:\\Program Files\\Varnholt\\FReport.chm", 0}));
}

TEST_F(CommandsEvent, HelpShowsATopicOfAnyFile) {
  Arguments arguments{u"Kita.chm", 12};
  events->Invoke(Access::Call, u"cmdHelp", arguments);
  EXPECT_EQ(arguments.positional[0], Value(u"Kita.chm"));
  EXPECT_THAT(excel->HelpThatWasShown(), ElementsAre(memory::HelpShown{u"Kita.chm", 12}));
}

TEST_F(CommandsEvent, HelpNeedsNoBar) {
  Call(LibraryTest::Create(u"CCommandsEvent"), u"cmdHelp", {u"Kita.chm"});
  EXPECT_THAT(excel->HelpThatWasShown(), ElementsAre(memory::HelpShown{u"Kita.chm", 0}));
}

TEST_F(CommandsEvent, CommentPressesItsButtonAndShowsTheIndicators) {
  Put(excel, u"DisplayCommentIndicator", std::int32_t{xlNoIndicator});
  Call(events, u"cmdComment");
  EXPECT_THAT(Lines(), ElementsAre(R"(BAR.FindControl(Tag:="TagComment"))",
                                   R"(BAR.FindControl(Tag:="TagComment").Index -> 2)", "BAR.Controls(2)",
                                   "BAR.Controls(2).State -> 0", "BAR.Controls(2).State = -1",
                                   "Application.DisplayCommentIndicator = -1"));
  EXPECT_EQ(Of(kComment, u"State"), Value(std::int32_t{msoButtonDown}));
  EXPECT_EQ(Get(excel, u"DisplayCommentIndicator"), Value(std::int32_t{xlCommentIndicatorOnly}));
}

TEST_F(CommandsEvent, CommentTwiceGivesTheFirstStateBack) {
  Put(excel, u"DisplayCommentIndicator", std::int32_t{xlNoIndicator});
  Call(events, u"cmdComment");
  trace.Clear();
  Call(events, u"cmdComment");
  EXPECT_THAT(Lines(), ElementsAre(R"(BAR.FindControl(Tag:="TagComment"))",
                                   R"(BAR.FindControl(Tag:="TagComment").Index -> 2)", "BAR.Controls(2)",
                                   "BAR.Controls(2).State -> -1", "BAR.Controls(2).State = 0",
                                   "Application.DisplayCommentIndicator = 0"));
  EXPECT_EQ(Of(kComment, u"State"), Value(std::int32_t{msoButtonUp}));
  EXPECT_EQ(Get(excel, u"DisplayCommentIndicator"), Value(std::int32_t{xlNoIndicator}));
}

TEST_F(CommandsEvent, AMixedCommentButtonIsReleased) {
  Put(Control(kComment), u"State", std::int32_t{msoButtonMixed});
  Call(events, u"cmdComment");
  EXPECT_EQ(Of(kComment, u"State"), Value(std::int32_t{msoButtonUp}));
  EXPECT_EQ(Get(excel, u"DisplayCommentIndicator"), Value(std::int32_t{xlNoIndicator}));
}

TEST_F(CommandsEvent, AnyOtherStateOfAButtonChangesNothing) {
  excel->data()->command_bars.back()->controls[kComment - 1]->state = 1;
  excel->data()->command_bars.back()->controls[kFreeze - 1]->state = 1;
  Call(events, u"cmdComment");
  EXPECT_EQ(Lines().size(), 4u);
  Freeze();
  EXPECT_EQ(Get(Window(), u"FreezePanes"), Value(false));
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
}

TEST_F(CommandsEvent, WithoutItsButtonACommandFails) {
  Call(Control(kFreeze), u"Delete");
  Call(Control(kComment), u"Delete");
  EXPECT_EQ(RaisedBy([&] { Call(events, u"cmdComment"); }), kInvalidProcedureCall);
  EXPECT_EQ(RaisedBy([&] { Freeze(); }), kInvalidProcedureCall);
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true)) << "the button comes first";
}

TEST_F(CommandsEvent, BeforeInitCommandsHaveNoBar) {
  const ObjectPtr fresh = LibraryTest::Create(u"CCommandsEvent");
  EXPECT_EQ(RaisedBy([&] { Call(fresh, u"cmdComment"); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([&] { Call(fresh, u"cmdFreeze", {ObjectPtr()}); }), kObjectNotSet);
  Call(fresh, u"Init", {Bar(), ObjectPtr()});
  EXPECT_EQ(RaisedBy([&] { Call(fresh, u"cmdComment"); }), kObjectNotSet);
}

TEST_F(CommandsEvent, FreezeFreezesAtTheCellAndComesBackToTheActiveOne) {
  Freeze(std::int16_t{3});
  EXPECT_THAT(
      Lines(),
      ElementsAre(R"(BAR.FindControl(Tag:="TagFreeze"))", R"(BAR.FindControl(Tag:="TagFreeze").Index -> 3)",
                  "BAR.Controls(3)", "Application.ScreenUpdating = False", "Application.EnableEvents = False",
                  "BAR.Controls(3).State -> 0", "BAR.Controls(3).State = -1", "Application.ActiveCell",
                  "Start.Activate() -> True", "Application.ActiveWindow",
                  "Application.ActiveWindow.ScrollRow = 3", "Application.ActiveWindow.FreezePanes = True",
                  "Application.ActiveCell.Activate() -> True", "Application.ScreenUpdating = True",
                  "Application.EnableEvents = True"));
  EXPECT_EQ(Of(kFreeze, u"State"), Value(std::int32_t{msoButtonDown}));
  EXPECT_EQ(Get(Window(), u"FreezePanes"), Value(true));
  EXPECT_EQ(Get(Window(), u"ScrollRow"), Value(3));
  EXPECT_EQ(ActiveCell(), u"$B$2");
}

TEST_F(CommandsEvent, FreezeWithoutARowFreezesAtTheRowOnTopAndTellsIt) {
  Put(Window(), u"ScrollRow", 7);
  EXPECT_EQ(Freeze(std::int16_t{0}), Value(std::int16_t{7}));
  EXPECT_EQ(Get(Window(), u"ScrollRow"), Value(7));
  EXPECT_EQ(Get(Window(), u"FreezePanes"), Value(true));
}

TEST_F(CommandsEvent, FreezeWithoutARowAsksForTheRowOnTopBeforeTheState) {
  Put(Window(), u"ScrollRow", 7);
  trace.Clear();
  Freeze(std::int16_t{0});
  EXPECT_THAT(
      Lines(),
      ElementsAre(R"(BAR.FindControl(Tag:="TagFreeze"))", R"(BAR.FindControl(Tag:="TagFreeze").Index -> 3)",
                  "BAR.Controls(3)", "Application.ScreenUpdating = False", "Application.EnableEvents = False",
                  "Application.ActiveWindow", "Application.ActiveWindow.ScrollRow -> 7",
                  "BAR.Controls(3).State -> 0", "BAR.Controls(3).State = -1", "Application.ActiveCell",
                  "Start.Activate() -> True", "Application.ActiveWindow.ScrollRow = 7",
                  "Application.ActiveWindow.FreezePanes = True", "Application.ActiveCell.Activate() -> True",
                  "Application.ScreenUpdating = True", "Application.EnableEvents = True"));
}

TEST_F(CommandsEvent, ThawingTurnsTheButtonThenThawsThenScrolls) {
  Freeze(std::int16_t{3});
  trace.Clear();
  Freeze(std::int16_t{3});
  EXPECT_THAT(
      Lines(),
      ElementsAre(R"(BAR.FindControl(Tag:="TagFreeze"))", R"(BAR.FindControl(Tag:="TagFreeze").Index -> 3)",
                  "BAR.Controls(3)", "Application.ScreenUpdating = False", "Application.EnableEvents = False",
                  "BAR.Controls(3).State -> -1", "BAR.Controls(3).State = 0", "Application.ActiveWindow",
                  "Application.ActiveWindow.FreezePanes = False", "Application.ActiveWindow.ScrollRow = 1",
                  "Application.ScreenUpdating = True", "Application.EnableEvents = True"));
}

TEST_F(CommandsEvent, FreezeTakesNoRowAtAll) {
  Put(Window(), u"ScrollRow", 7);
  Freeze();
  EXPECT_EQ(Get(Window(), u"FreezePanes"), Value(true));
}

TEST_F(CommandsEvent, FreezeAgainThawsAndScrollsToTheTop) {
  for (const std::int32_t state : {msoButtonDown, msoButtonMixed}) {
    Put(Control(kFreeze), u"State", state);
    Put(Window(), u"FreezePanes", true);
    Put(Window(), u"ScrollRow", 9);
    EXPECT_EQ(Freeze(std::int16_t{0}), Value(std::int16_t{9})) << "also when it thaws";
    EXPECT_EQ(Of(kFreeze, u"State"), Value(std::int32_t{msoButtonUp}));
    EXPECT_EQ(Get(Window(), u"FreezePanes"), Value(false));
    EXPECT_EQ(Get(Window(), u"ScrollRow"), Value(1));
  }
}

TEST_F(CommandsEvent, FreezeBeyondRow32767Overflows) {
  Put(Window(), u"ScrollRow", 40000);
  EXPECT_EQ(RaisedBy([&] { Freeze(); }), kOverflow);
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(false));
  EXPECT_EQ(Get(excel, u"EnableEvents"), Value(false));
  EXPECT_EQ(Of(kFreeze, u"State"), Value(std::int32_t{msoButtonUp}));
}

TEST_F(CommandsEvent, AFailingFreezeLeavesScreenUpdatingAndEventsOff) {
  const ObjectPtr elsewhere = GetObject(GetObject(workbook, u"Sheets", {1}), u"Range", {u"A1"});
  EXPECT_EQ(RaisedBy([&] { Call(events, u"cmdFreeze", {elsewhere}); }), kApplicationDefined);
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(false));
  EXPECT_EQ(Get(excel, u"EnableEvents"), Value(false));
  EXPECT_EQ(Of(kFreeze, u"State"), Value(std::int32_t{msoButtonDown})) << "and the button as it is";
}

TEST_F(CommandsEvent, StayWithTheExcelOfTheirInitWhoeverConnectsLater) {
  const ObjectPtr fresh = LibraryTest::Create(u"CCommandsEvent");
  Call(fresh, u"Init", {Bar(), ObjectPtr()});
  ConnectAnother();
  Call(fresh, u"cmdHelp", {u"Kita.chm"});
  EXPECT_THAT(excel->HelpThatWasShown(), ElementsAre(memory::HelpShown{u"Kita.chm", 0}));
}

TEST_F(CommandsEvent, AreRunByTheirButtons) {
  excel->DefineMacro(u"Book1!cmdComment", [this] { Call(events, u"cmdComment"); });
  Put(toolbar, u"VisibleToolbar", true);
  Call(Control(kComment), u"Execute");
  EXPECT_EQ(Of(kComment, u"State"), Value(std::int32_t{msoButtonDown}));
}

}  // namespace
}  // namespace qva
