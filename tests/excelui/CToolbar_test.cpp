#include "excelui/CToolbar.h"

#include "platform/memory/excel/Refusals.h"
#include "tests/excelui/toolbar_test.h"

namespace qva {
namespace {

using testing::ElementsAre;

class Toolbar : public ToolbarTest {
 protected:
  /// Every operation with a byte result that touches button 1.
  std::vector<int> ResultsOfButtonOperations() {
    AddShape(u"Picture02");
    const ObjectPtr picture = GetObject(sheet, u"Shapes", {u"Picture02"});
    std::vector<int> results;
    results.push_back(Result(u"VisibleButton", {1, true}));
    results.push_back(Result(u"EnabledButton", {1, true}));
    results.push_back(Result(u"ButtonFaceID", {1, 100}));
    results.push_back(Result(u"ButtonFace", {1, picture}));
    results.push_back(Result(u"ButtonToolTipText", {1, u"Kita"}));
    results.push_back(Result(u"SetAction", {1, u"Kitas"}));
    results.push_back(Result(u"SetAction", {1, u""}));
    results.push_back(Result(u"SetHotKey", {1, u"^{k}"}));
    return results;
  }
  /// The trace with the bar's long path as BAR.
  std::vector<std::string> Lines() const { return Shortened(trace.lines()); }
  void Show() const { Put(toolbar, u"VisibleToolbar", true); }
};

TEST_F(Toolbar, KeepsTheCommandEventsThatItIsGiven) {
  toolbar = LibraryTest::Create(u"CToolbar");
  EXPECT_EQ(Get(toolbar, u"CmdEvent"), Nothing());
  const ObjectPtr events = LibraryTest::Create(u"CCommandsEvent");
  PutRef(toolbar, u"CmdEvent", events);
  EXPECT_EQ(Get(toolbar, u"CmdEvent"), Value(events));
  EXPECT_EQ(RaisedBy([&] { PutRef(toolbar, u"CmdEvent", toolbar); }), kTypeMismatch);
}

TEST_F(Toolbar, KeepsTheIdThatItIsGiven) {
  toolbar = LibraryTest::Create(u"CToolbar");
  EXPECT_EQ(Get(toolbar, u"IDCollection"), Value(std::uint8_t{0}));
  Put(toolbar, u"IDCollection", std::int32_t{255});
  EXPECT_EQ(Get(toolbar, u"IDCollection"), Value(std::uint8_t{255}));
  EXPECT_EQ(RaisedBy([&] { Put(toolbar, u"IDCollection", std::int32_t{256}); }), kOverflow);
}

TEST_F(Toolbar, BeforeInitHasNoBar) {
  toolbar = LibraryTest::Create(u"CToolbar");
  EXPECT_THAT(ResultsOfButtonOperations(), ElementsAre(1, 1, 1, 1, 1, 1, 1, 1));
  EXPECT_EQ(Result(u"PositinTop", {}), 1);
  EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{0}));
  EXPECT_EQ(Get(toolbar, u"ToolbarID"), Value(0));
  EXPECT_EQ(Get(toolbar, u"VisibleToolbar"), Value(false));
  Put(toolbar, u"VisibleToolbar", true);
  Call(toolbar, u"Refresh");
  Put(toolbar, u"Caption", u"Kita");
  EXPECT_EQ(RaisedBy([&] { Get(toolbar, u"Caption"); }), kObjectNotSet);
  for (const std::u16string_view member :
       {u"iComment", u"iFreeze", u"iPrintP", u"iPrint", u"iExcel", u"iHelp"}) {
    EXPECT_EQ(RaisedBy([&] { Call(toolbar, member); }), kObjectNotSet) << ToUtf8(member);
  }
  EXPECT_EQ(BarCount(), 3);
}

TEST_F(Toolbar, BeforeInitTouchesNoBarThatHappensToHaveNoName) {
  const ObjectPtr bar = Call(GetObject(excel, u"CommandBars"), u"Add", {u"Kieno nors"}).ToObject();
  Call(GetObject(bar, u"Controls"), u"Add", {1});
  Put(bar, u"Name", u"");
  const std::int32_t bars = BarCount();
  toolbar = LibraryTest::Create(u"CToolbar");
  AddShape(u"Picture02");
  const ObjectPtr picture = GetObject(sheet, u"Shapes", {u"Picture02"});
  const auto error = [&](std::u16string_view member, Arguments arguments) {
    return RaisedBy([&] { Call(toolbar, member, std::move(arguments)); });
  };
  EXPECT_EQ(error(u"VisibleButton", {1, false}), kObjectNotSet);
  EXPECT_EQ(error(u"EnabledButton", {1, true}), kObjectNotSet);
  EXPECT_EQ(error(u"ButtonFaceID", {1, 100}), kObjectNotSet);
  EXPECT_EQ(error(u"ButtonFace", {1, picture}), kObjectNotSet);
  EXPECT_EQ(error(u"ButtonToolTipText", {1, u"Kita"}), kObjectNotSet);
  EXPECT_EQ(error(u"SetAction", {1, u"Kitas"}), kObjectNotSet);
  EXPECT_EQ(error(u"SetHotKey", {1, u"^{k}"}), kObjectNotSet);
  EXPECT_EQ(error(u"Refresh", {}), kObjectNotSet);
  EXPECT_EQ(RaisedBy([&] { Put(toolbar, u"VisibleToolbar", true); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([&] { Get(toolbar, u"VisibleToolbar"); }), kObjectNotSet);
  EXPECT_EQ(Result(u"PositinTop", {}), 1);
  // Nor does it take the bar along when it goes, also when its settings could not be read.
  Call(toolbar, u"Init", {workbook, sheet});
  EXPECT_EQ(error(u"SetAction", {1, u"Kitas"}), kObjectNotSet);
  toolbar.reset();
  EXPECT_EQ(BarCount(), bars);
  EXPECT_EQ(Get(bar, u"Visible"), Value(false));
  EXPECT_EQ(Get(GetObject(bar, u"Controls", {1}), u"Visible"), Value(true));
}

TEST_F(Toolbar, KnowsWhereItsDefaultButtonsAre) {
  Build(Buttons(3));
  EXPECT_EQ(Call(toolbar, u"iComment"), Value(4));
  EXPECT_EQ(Call(toolbar, u"iFreeze"), Value(5));
  EXPECT_EQ(Call(toolbar, u"iPrint"), Value(6));
  EXPECT_EQ(Call(toolbar, u"iPrintP"), Value(7));
  EXPECT_EQ(Call(toolbar, u"iExcel"), Value(9));
  EXPECT_EQ(Call(toolbar, u"iHelp"), Value(10));
  EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{10}));
  EXPECT_EQ(Get(toolbar, u"ToolbarID"), Value(4));
}

TEST_F(Toolbar, ButtonOperationsGive0WhenTheyAreDone) {
  Build({{.key = u"^{b}"}});
  EXPECT_EQ(Result(u"VisibleButton", {1, true}), 0);
  EXPECT_EQ(Result(u"ButtonFaceID", {1, 100}), 0);
  EXPECT_EQ(Of(1, u"FaceId"), Value(100));
  AddShape(u"Picture02");
  EXPECT_EQ(Result(u"ButtonFace", {1, GetObject(sheet, u"Shapes", {u"Picture02"})}), 0);
  EXPECT_EQ(PastedFace(1), u"Picture02");
  EXPECT_EQ(Result(u"ButtonToolTipText", {1, u"Kita užuomina"}), 0);
  EXPECT_EQ(Of(1, u"ToolTipText"), Value(u"Kita užuomina"));
}

TEST_F(Toolbar, ButtonOperationsGive1OnceTheBarWasDeleted) {
  Build({{.key = u"^{b}"}});
  Show();
  Call(Bar(), u"Delete");
  EXPECT_THAT(ResultsOfButtonOperations(), ElementsAre(1, 1, 1, 1, 1, 1, 1, 1));
  EXPECT_EQ(excel->ClipboardPicture(), u"") << "nothing is done";
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
  EXPECT_EQ(Key(u"^{k}"), "Excel");
  EXPECT_EQ(Result(u"PositinTop", {}), 1) << "the bar is forgotten";
  EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{0}));
  EXPECT_EQ(Get(toolbar, u"ToolbarID"), Value(0));
  EXPECT_EQ(Get(toolbar, u"VisibleToolbar"), Value(false));
}

TEST_F(Toolbar, WhatDoesNotLookForTheBarFailsOnceItWasDeleted) {
  Build(Buttons(1));
  Call(Bar(), u"Delete");
  for (const std::u16string_view member :
       {u"PositinTop", u"TotalButtons", u"ToolbarID", u"Caption", u"VisibleToolbar"}) {
    EXPECT_EQ(RaisedBy([&] { Call(toolbar, member); }), memory::kObjectGone) << ToUtf8(member);
  }
}

TEST_F(Toolbar, AButtonThatIsNotThereIsAnErrorOfExcel) {
  Build(Buttons(1));
  for (const std::int32_t button : {0, 9}) {
    EXPECT_EQ(RaisedBy([&] { Result(u"VisibleButton", {button, true}); }), kInvalidProcedureCall);
    EXPECT_EQ(RaisedBy([&] { Result(u"ButtonFaceID", {button, 1}); }), kInvalidProcedureCall);
    EXPECT_EQ(RaisedBy([&] { Result(u"SetAction", {button, u"x"}); }), kInvalidProcedureCall);
    EXPECT_EQ(RaisedBy([&] { Result(u"SetHotKey", {button, u"x"}); }), kSubscriptOutOfRange);
  }
}

TEST_F(Toolbar, HidingAButtonSilencesItsKeyUntilItIsShownAgain) {
  Build({{.key = u"^{b}"}});
  Show();
  EXPECT_TRUE(excel->Press(u"^{b}"));
  EXPECT_EQ(Result(u"VisibleButton", {1, false}), 0);
  EXPECT_EQ(Of(1, u"Visible"), Value(false));
  EXPECT_EQ(Key(u"^{b}"), "off");
  EXPECT_FALSE(excel->Press(u"^{b}"));
  EXPECT_EQ(Result(u"VisibleButton", {1, true}), 0);
  EXPECT_TRUE(excel->Press(u"^{b}"));
  EXPECT_THAT(excel->MacrosRun(), ElementsAre(u"Book1!Veiksmas", u"Book1!Veiksmas"));
}

TEST_F(Toolbar, VisibleButtonAsksForTheBarSetsTheButtonAndBindsItsKey) {
  Build({{.key = u"^{b}"}});
  Result(u"VisibleButton", {1, true});
  EXPECT_THAT(Lines(), ElementsAre(R"~(Application.CommandBars("Ataskaita(Book1)"))~", "BAR.Index -> 4",
                                   "BAR.Controls(1)", "BAR.Controls(1).Visible = True", "BAR.Controls(1)",
                                   "BAR.Controls(1).Visible -> True", "BAR.Controls(1).Enabled -> True",
                                   R"(BAR.Controls(1).OnAction -> "Book1!Veiksmas")",
                                   R"~(Application.OnKey("^{b}", "Book1!Veiksmas"))~"));
}

TEST_F(Toolbar, AButtonWithoutAKeyCostsNothingToBind) {
  Build(Buttons(1));
  Result(u"VisibleButton", {1, true});
  EXPECT_EQ(count.calls(), 4);
}

TEST_F(Toolbar, EnabledButtonSetsAMemberThatExcelDoesNotHaveAndFails) {
  Build({{.key = u"^{b}"}});
  for (const bool enabled : {false, true}) {
    trace.Clear();
    EXPECT_EQ(RaisedBy([&] { Result(u"EnabledButton", {1, enabled}); }), kUnsupportedMember);
    EXPECT_TRUE(Lines().back().starts_with(
        "BAR.Controls(1).EnabledButton = " + std::string(enabled ? "True" : "False") + " ! 438"))
        << Lines().back();
    EXPECT_EQ(Of(1, u"Enabled"), Value(true));
  }
  EXPECT_EQ(Key(u"^{b}"), "Excel") << "the key is not bound again";
}

TEST_F(Toolbar, EnabledButtonBindsTheKeyAgainWhereControlsHaveThatMember) {
  const auto answer = [](std::u16string_view member) {
    return member == u"EnabledButton" ? std::optional(Value()) : std::nullopt;
  };
  Call(global, u"InitConnectEX", {MakeRef<OtherwiseAnswered>(excel, answer), ObjectPtr()});
  Build({{.key = u"^{b}"}});
  EXPECT_EQ(Result(u"EnabledButton", {1, true}), 0);
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
}

TEST_F(Toolbar, ButtonFaceCopiesThePictureFirst) {
  Build(Buttons(1));
  EXPECT_EQ(RaisedBy([&] { Result(u"ButtonFace", {1, ObjectPtr()}); }), kObjectNotSet);
  AddShape(u"Picture02");
  EXPECT_EQ(RaisedBy([&] {
              Result(u"ButtonFace", {99, GetObject(sheet, u"Shapes", {1})});
            }),
            kInvalidProcedureCall);
  EXPECT_EQ(excel->ClipboardPicture(), u"Picture02");
}

TEST_F(Toolbar, PositinTopMovesTheBarToTheTop) {
  Build(Buttons(1));
  EXPECT_EQ(Result(u"PositinTop", {}), 0);
  EXPECT_EQ(Get(Bar(), u"Position"), Value(std::int32_t{msoBarTop}));
  EXPECT_EQ(count.calls(), 1);
}

TEST_F(Toolbar, RefreshBindsAllKeysWhileTheBarIsShown) {
  Build(
      {{.key = u"^{b}"}, {.key = u"^{h}", .visible = false}, {.action = {}}, {.key = u"{F4}", .action = {}}});
  Put(Bar(), u"Visible", true);
  Call(toolbar, u"Refresh");
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
  EXPECT_EQ(Key(u"^{h}"), "off") << "of a hidden button";
  EXPECT_EQ(Key(u"{F4}"), "off") << "of a button without a macro";
  EXPECT_EQ(Key(u"{F1}"), "Book1!cmdHelp") << "of a default button";
  EXPECT_EQ(excel->KeyBindings().size(), 4u);
}

TEST_F(Toolbar, RefreshGivesAllKeysBackWhileTheBarIsHidden) {
  Build({{.key = u"^{b}"}, {.key = u"^{s}"}});
  Show();
  Put(Bar(), u"Visible", false);
  trace.Clear();
  Call(toolbar, u"Refresh");
  EXPECT_EQ(excel->KeyBindings().size(), 0u);
  EXPECT_THAT(Lines(), ElementsAre(R"~(Application.CommandBars("Ataskaita(Book1)"))~", "BAR.Index -> 4",
                                   "BAR.Visible -> False", R"~(Application.OnKey("^{b}"))~",
                                   R"~(Application.OnKey("^{s}"))~", R"~(Application.OnKey("^{s}"))~",
                                   R"~(Application.OnKey("^{S}"))~", R"~(Application.OnKey("{F1}"))~"))
      << "the save key as it is and then in both letter cases";
}

TEST_F(Toolbar, TheKeyOfADisabledButtonDoesNothing) {
  Build({{.key = u"^{b}"}});
  Put(Control(1), u"Enabled", false);
  Show();
  EXPECT_EQ(Key(u"^{b}"), "off");
}

TEST_F(Toolbar, TheSaveKeyIsBoundForBothLetterCases) {
  for (const std::u16string_view key : {u"^{s}", u"^{S}"}) {
    Build({{.key = key}});
    Show();
    EXPECT_EQ(Key(u"^{s}"), "Book1!Veiksmas");
    EXPECT_EQ(Key(u"^{S}"), "Book1!Veiksmas");
    Result(u"VisibleButton", {1, false});
    EXPECT_EQ(Key(u"^{s}"), "off");
    EXPECT_EQ(Key(u"^{S}"), "off");
    toolbar.reset();
    EXPECT_EQ(excel->KeyBindings().size(), 0u);
  }
}

TEST_F(Toolbar, NoOtherKeyIsBoundForBothLetterCases) {
  Build({{.key = u"^{b}"}});
  Show();
  EXPECT_EQ(Key(u"^{B}"), "Excel");
}

TEST_F(Toolbar, AKeyThatExcelRefusesKeepsNoneOfTheOthersFromBeingBound) {
  Build({{.key = u"^{s}"}, {.key = u"^{b}"}});
  Put(Bar(), u"Visible", true);
  // The bar, its index, whether it is shown; the control, three properties, then the first key.
  failure.Reset(8);
  Call(toolbar, u"Refresh");
  EXPECT_TRUE(failure.has_failed());
  failure.Reset(0);
  EXPECT_EQ(Key(u"^{s}"), "Excel");
  EXPECT_EQ(Key(u"^{S}"), "Book1!Veiksmas");
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
}

TEST_F(Toolbar, AKeyThatExcelDoesNotTakeBackStopsTheRefreshOfAHiddenBar) {
  Build({{.key = u"^{b}"}, {.key = u"^{k}"}});
  Show();
  Put(Bar(), u"Visible", false);
  // The bar, its index, whether it is shown; then the first key.
  failure.Reset(4);
  EXPECT_EQ(RaisedBy([&] { Call(toolbar, u"Refresh"); }), kAutomationFailed);
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
  EXPECT_EQ(Key(u"^{k}"), "Book1!Veiksmas") << "and those behind it are not reached";
  failure.Reset(5);
  EXPECT_EQ(RaisedBy([&] { Get(toolbar, u"VisibleToolbar"); }), kAutomationFailed);
  Put(Bar(), u"Visible", true);
  // Before it is refreshed the bar is looked for and hidden, in five calls.
  failure.Reset(5 + 4);
  EXPECT_EQ(RaisedBy([&] { Put(toolbar, u"VisibleToolbar", false); }), kAutomationFailed);
  EXPECT_EQ(Get(Bar(), u"Visible"), Value(false));
  failure.Reset(0);
  Call(toolbar, u"Refresh");
  EXPECT_EQ(excel->KeyBindings().size(), 0u);
}

TEST_F(Toolbar, AButtonThatCannotBeLookedAtKeepsItsKeyUnbound) {
  Build({{.key = u"^{b}"}});
  // The bar and its index; the control, whether it is visible, whether it is enabled; its macro.
  const std::pair<long, int> results[] = {{3, 1}, {4, 1}, {5, 1}, {6, 0}};
  for (const auto& [call, result] : results) {
    trace.Clear();
    failure.Reset(call);
    EXPECT_EQ(Result(u"SetHotKey", {1, u"^{k}"}), result) << call;
    EXPECT_TRUE(failure.has_failed());
    failure.Reset(0);
    EXPECT_EQ(trace.Text().find("OnKey"), std::string::npos) << call;
    EXPECT_EQ(Key(u"^{k}"), "Excel") << call;
  }
}

TEST_F(Toolbar, ABarWhoseIndexExcelRefusesIsHeldButCountsAsGone) {
  Build(Buttons(1));
  failure.Reset(2);
  EXPECT_EQ(Result(u"ButtonFaceID", {1, 100}), 1);
  EXPECT_TRUE(failure.has_failed());
  failure.Reset(1);
  EXPECT_EQ(Result(u"ButtonFaceID", {1, 100}), 1);
  failure.Reset(0);
  EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{0})) << "forgotten when Excel does not give it";
  EXPECT_EQ(Result(u"ButtonFaceID", {1, 100}), 0);
  failure.Reset(2);
  EXPECT_EQ(Result(u"ButtonFaceID", {1, 101}), 1);
  failure.Reset(0);
  EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{8}));
  EXPECT_EQ(Of(1, u"FaceId"), Value(100));
}

TEST_F(Toolbar, ShowingTheBarBindsItsKeysAndHidingItGivesThemBack) {
  Build({{.key = u"^{b}"}});
  Show();
  EXPECT_EQ(Get(Bar(), u"Visible"), Value(true));
  EXPECT_EQ(Get(toolbar, u"VisibleToolbar"), Value(true));
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
  trace.Clear();
  Put(toolbar, u"VisibleToolbar", false);
  EXPECT_EQ(Get(Bar(), u"Visible"), Value(false));
  EXPECT_EQ(Get(Bar(), u"Enabled"), Value(false)) << "a hidden bar is out of the user's reach";
  EXPECT_EQ(Key(u"^{b}"), "Excel");
  EXPECT_THAT(Lines(), ElementsAre(R"~(Application.CommandBars("Ataskaita(Book1)"))~", "BAR.Index -> 4",
                                   "BAR.Visible -> True", "BAR.Enabled = False", "BAR.Visible = False",
                                   R"~(Application.CommandBars("Ataskaita(Book1)"))~", "BAR.Index -> 4",
                                   "BAR.Visible -> False", R"~(Application.OnKey("^{b}"))~",
                                   R"~(Application.OnKey("{F1}"))~"));
  EXPECT_EQ(Get(toolbar, u"VisibleToolbar"), Value(false));
  Show();
  EXPECT_EQ(Get(Bar(), u"Visible"), Value(true));
}

TEST_F(Toolbar, ABarThatIsShownAlreadyIsNotSetAgainButItsKeysAre) {
  Build({{.key = u"^{b}"}});
  Show();
  Call(excel, u"OnKey", {u"^{b}", u"Kitas"});
  trace.Clear();
  Show();
  for (const std::string& line : trace.lines()) EXPECT_EQ(line.find("Visible = "), line.npos) << line;
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
}

TEST_F(Toolbar, ReadingVisibleToolbarBindsAllKeysAgain) {
  Build({{.key = u"^{b}"}});
  Show();
  Call(excel, u"OnKey", {u"^{b}", u"Kitas"});
  EXPECT_EQ(Get(toolbar, u"VisibleToolbar"), Value(true));
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
  Put(Bar(), u"Visible", false);
  EXPECT_EQ(Get(toolbar, u"VisibleToolbar"), Value(false));
  EXPECT_EQ(Key(u"^{b}"), "Excel");
}

TEST_F(Toolbar, CaptionIsTheNameOfTheBar) {
  Build(Buttons(1));
  EXPECT_EQ(Get(toolbar, u"Caption"), Value(kBar));
  Put(toolbar, u"Caption", u"Kita");
  EXPECT_EQ(Get(toolbar, u"Caption"), Value(u"Kita"));
  EXPECT_TRUE(HasBar(u"Kita"));
}

TEST_F(Toolbar, ACaptionThatExcelRefusesIsIgnored) {
  Build(Buttons(1));
  Put(toolbar, u"Caption", u"Standard");
  EXPECT_EQ(Get(toolbar, u"Caption"), Value(kBar));
}

TEST_F(Toolbar, GoesOnLookingForItsFirstCaptionAndLosesABarThatItRenamed) {
  Build(Buttons(1));
  Put(toolbar, u"Caption", u"Kita");
  EXPECT_EQ(Result(u"ButtonFaceID", {1, 100}), 1);
  EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{0}));
  toolbar.reset();
  EXPECT_TRUE(HasBar(u"Kita")) << "it is no longer its bar";
}

TEST_F(Toolbar, SetActionPutsTheWorkbookInFrontInTheCallersVariable) {
  Build({{.key = u"^{b}"}});
  Show();
  Arguments arguments{1, u"Kitas"};
  EXPECT_EQ(toolbar->Invoke(Access::Call, u"SetAction", arguments), Value(std::uint8_t{0}));
  EXPECT_EQ(arguments.positional[1], Value(u"Book1!Kitas"));
  EXPECT_EQ(Of(1, u"OnAction"), Value(u"Book1!Kitas"));
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas") << "the key is bound when it is refreshed";
  Call(toolbar, u"Refresh");
  EXPECT_EQ(Key(u"^{b}"), "Book1!Kitas");
}

TEST_F(Toolbar, SetActionWithoutAMacroChangesNothing) {
  Build(Buttons(1));
  Arguments arguments{1, u""};
  EXPECT_EQ(toolbar->Invoke(Access::Call, u"SetAction", arguments), Value(std::uint8_t{0}));
  EXPECT_EQ(arguments.positional[1], Value(u""));
  EXPECT_EQ(Of(1, u"OnAction"), Value(u"Book1!Veiksmas"));
}

TEST_F(Toolbar, SetActionThatFailsHasRewrittenTheVariable) {
  Build(Buttons(1));
  Arguments arguments{99, u"Kitas"};
  EXPECT_THROW(toolbar->Invoke(Access::Call, u"SetAction", arguments), AutomationError);
  EXPECT_EQ(arguments.positional[1], Value(u"Book1!Kitas"));
}

TEST_F(Toolbar, SetActionOfAControlThatIsNotOfTheListGivesItTheMacroAndFails) {
  Build(Buttons(1));
  Call(GetObject(Bar(), u"Controls"), u"Add");
  constexpr std::int32_t kAdded = 1 + kDefaults + 1;
  EXPECT_EQ(RaisedBy([&] { Result(u"SetAction", {kAdded, u"Kitas"}); }), kSubscriptOutOfRange);
  EXPECT_EQ(Of(kAdded, u"OnAction"), Value(u"Book1!Kitas"));
}

TEST_F(Toolbar, SetHotKeyBindsTheKeyAndSaysSo) {
  Build({{.key = u"^{b}"}, {.visible = false}});
  Show();
  EXPECT_EQ(Result(u"SetHotKey", {1, u"^{k}"}), 0);
  EXPECT_EQ(Key(u"^{k}"), "Book1!Veiksmas");
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas") << "the key before stays bound";
  EXPECT_EQ(Result(u"SetHotKey", {2, u"^{m}"}), 1) << "of a hidden button";
  EXPECT_EQ(Key(u"^{m}"), "off");
  EXPECT_EQ(Result(u"SetHotKey", {1, u""}), 1) << "no key";
  toolbar.reset();
  EXPECT_EQ(Key(u"^{k}"), "Book1!Veiksmas") << "a key that was replaced is nobody's";
  EXPECT_EQ(Key(u"^{m}"), "Excel");
}

TEST_F(Toolbar, SetHotKeyBindsAlsoWhileTheBarIsHidden) {
  Build(Buttons(1));
  EXPECT_EQ(Result(u"SetHotKey", {1, u"^{s}"}), 0);
  EXPECT_EQ(Key(u"^{S}"), "Book1!Veiksmas");
}

TEST_F(Toolbar, TotalButtonsCountsWhatIsOnTheBarUpTo255) {
  Build(Buttons(254));
  Call(GetObject(Bar(), u"Controls"), u"Add");
  EXPECT_EQ(RaisedBy([&] { Get(toolbar, u"TotalButtons"); }), kOverflow);
}

TEST_F(Toolbar, StaysWithTheExcelOfItsInitWhoeverConnectsLater) {
  Build({{.key = u"^{b}"}});
  ConnectAnother();
  Show();
  EXPECT_EQ(Get(Bar(), u"Visible"), Value(true));
  EXPECT_EQ(Key(u"^{b}"), "Book1!Veiksmas");
}

TEST_F(Toolbar, GoesWithItsBarAndItsKeys) {
  Build({{.key = u"^{b}"}, {.key = u"^{s}"}});
  Show();
  trace.Clear();
  toolbar.reset();
  EXPECT_THAT(Lines(), ElementsAre("BAR.Enabled = True", "BAR.Delete()", R"~(Application.OnKey("^{b}"))~",
                                   R"~(Application.OnKey("^{s}"))~", R"~(Application.OnKey("^{s}"))~",
                                   R"~(Application.OnKey("^{S}"))~", R"~(Application.OnKey("{F1}"))~"));
  EXPECT_FALSE(HasBar());
  EXPECT_EQ(excel->KeyBindings().size(), 0u);
}

TEST_F(Toolbar, GoesQuietlyWhenItsBarIsGoneAlready) {
  Build({{.key = u"^{b}"}});
  Show();
  Call(Bar(), u"Delete");
  toolbar.reset();
  EXPECT_EQ(excel->KeyBindings().size(), 0u);
}

TEST_F(Toolbar, CommandEventsThatAMacroKeepsDoNotKeepTheToolbar) {
  Build(Buttons(1));
  const ObjectPtr events = GetObject(toolbar, u"CmdEvent");
  toolbar.reset();
  EXPECT_FALSE(HasBar());
  EXPECT_EQ(RaisedBy([&] { Call(events, u"cmdComment"); }), memory::kObjectGone);
}

/// Deletes the bar and lets the toolbar look for it while Excel works on one of its controls, as a macro that
/// Excel's events run may do.
class DeleteBetween : public CallObserver {
 public:
  void Starting(const HostCall& call) override {
    if (call.member != u"ToolTipText" || !toolbar) return;
    const ObjectPtr forgetting = std::exchange(toolbar, nullptr);
    qva::Call(bar, u"Delete");
    qva::Call(forgetting, u"Refresh");
  }
  ObjectPtr toolbar;
  ObjectPtr bar;
};

TEST_F(Toolbar, LosingTheBarWithinAnOperationIsAnErrorAndNoHarm) {
  DeleteBetween between;
  Interceptor deleting({&between});
  Call(global, u"InitConnectEX", {deleting.Wrap(excel, u"Application"), ObjectPtr()});
  Build(Buttons(1));
  between.bar = Bar();
  between.toolbar = toolbar;
  EXPECT_EQ(RaisedBy([&] { Result(u"ButtonToolTipText", {1, u"Kita"}); }), memory::kObjectGone);
  EXPECT_EQ(Result(u"ButtonToolTipText", {1, u"Kita"}), 1);
}

}  // namespace
}  // namespace qva
