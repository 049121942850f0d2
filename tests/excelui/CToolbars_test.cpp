#include "excelui/CToolbars.h"

#include "tests/excelui/toolbar_test.h"

namespace qva {
namespace {

using testing::ElementsAre;

class Toolbars : public ToolbarTest {
 protected:
  static constexpr std::u16string_view kMenuBar = u"Worksheet Menu Bar";

  Toolbars() { host.texts[841] = u"&Grįžti į sistemą"; }

  ObjectPtr Item(std::int32_t id) const { return Call(toolbars, u"Item", {id}).ToObject(); }
  std::int32_t Count() const { return Get(toolbars, u"Count").ToInt32(); }
  /// The go-to-application command; Nothing without one.
  ObjectPtr Command() const {
    ObjectPtr command;
    IgnoreErrors([&] { command = GetObject(Bar(kMenuBar), u"Controls", {u"Grįžti į sistemą"}); });
    return command;
  }
  std::int32_t MenuControls() const { return Get(GetObject(Bar(kMenuBar), u"Controls"), u"Count").ToInt32(); }
  /// A settings sheet of its own in each of the workbook's sheets, with other captions.
  ObjectPtr OtherSheet(std::u16string_view name, std::u16string_view caption) {
    const ObjectPtr other = GetObject(workbook, u"Sheets", {name});
    const Value values[] = {0, caption, false};
    const ObjectPtr names = GetObject(other, u"Names");
    for (std::int32_t column = 1; column <= 3; ++column) {
      Put(GetObject(other, u"Cells", {1, column}), u"Value", values[column - 1]);
      const std::u16string refers_to = u"=" + std::u16string(name) + u"!$" +
                                       std::u16string(1, static_cast<char16_t>(u'@' + column)) + u"$1";
      Call(names, u"Add", {kCellNames[column - 1], refers_to});
    }
    return interceptor.Wrap(other, u"Other");
  }
};

TEST_F(Toolbars, StartEmpty) {
  EXPECT_EQ(Count(), 0);
  EXPECT_EQ(Call(toolbars, u"Item", {std::int32_t{1}}), Nothing());
}

TEST_F(Toolbars, NumberTheirToolbarsFrom1) {
  DescribeCells(0);
  EXPECT_EQ(Create(observed_sheet), 1);
  EXPECT_EQ(Create(OtherSheet(u"Sheet3", u"Kita")), 2);
  EXPECT_EQ(Count(), 2);
  EXPECT_EQ(Get(Item(1), u"Caption"), Value(kBar));
  EXPECT_EQ(Get(Item(2), u"Caption"), Value(u"Kita(Book1)"));
  EXPECT_EQ(Get(Item(2), u"IDCollection"), Value(std::uint8_t{2})) << "and not Excel's index of the bar";
}

TEST_F(Toolbars, CreateToolbarTakesTheWorkbookOfTheSheetAndCountsTheButtons) {
  DescribeCells(0);
  trace.Clear();
  Create(observed_sheet);
  const std::vector<std::string> lines = Shortened(trace.lines());
  EXPECT_EQ(lines.front(), "Sheet.Parent");
  EXPECT_THAT(std::vector<std::string>(lines.end() - 2, lines.end()),
              ElementsAre("BAR.Controls", "BAR.Controls.Count -> 7"));
}

TEST_F(Toolbars, GiveZeroForASheetThatLacksANamedCellAndKeepNoBar) {
  Describe(Buttons(1));
  Call(GetObject(GetObject(workbook, u"Names"), u"Item", {u"Button_Tag"}), u"Delete");
  EXPECT_EQ(Create(observed_sheet), 0);
  EXPECT_EQ(Count(), 0);
  EXPECT_EQ(BarCount(), 3);
}

TEST_F(Toolbars, GiveZeroForABarWithoutControlsAndDeleteIt) {
  host.texts.erase(843);
  DescribeCells(0);
  EXPECT_EQ(Create(observed_sheet), 0);
  EXPECT_EQ(BarCount(), 3);
}

TEST_F(Toolbars, CreateToolbarWithoutASheetIsAnError) {
  EXPECT_EQ(RaisedBy([&] { Create(ObjectPtr()); }), kObjectNotSet);
}

TEST_F(Toolbars, ErrorsWhileABarIsMadeReachTheCaller) {
  DescribeCells(0);
  global.reset();
  EXPECT_EQ(RaisedBy([&] { Create(observed_sheet); }), kObjectNotSet);
  EXPECT_EQ(Count(), 0);
}

TEST_F(Toolbars, NeverUseAnIdAgain) {
  DescribeCells(0);
  EXPECT_EQ(Create(observed_sheet), 1);
  Call(toolbars, u"DeleteToolbar", {1});
  EXPECT_FALSE(HasBar());
  EXPECT_EQ(Create(observed_sheet), 2);
  EXPECT_EQ(Call(toolbars, u"Item", {1}), Nothing());
  EXPECT_NE(Call(toolbars, u"Item", {2}), Nothing());
}

TEST_F(Toolbars, IdsOverflowAfter255AndTheToolbarStaysWithoutOne) {
  DescribeCells(0);
  for (int id = 1; id <= 255; ++id) {
    ASSERT_EQ(Create(observed_sheet), id);
    Call(toolbars, u"DeleteToolbar", {id});
  }
  EXPECT_EQ(RaisedBy([&] { Create(observed_sheet); }), kOverflow);
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(Get(Item(0), u"Caption"), Value(kBar));
  Call(toolbars, u"DeleteToolbar", {0});
  EXPECT_EQ(RaisedBy([&] { Create(observed_sheet); }), kOverflow) << "and so it goes on";
  toolbars.reset();
  EXPECT_FALSE(HasBar());
}

TEST_F(Toolbars, ASecondToolbarOfASheetSharesTheBar) {
  DescribeCells(0);
  Create(observed_sheet);
  EXPECT_EQ(Create(observed_sheet), 2);
  EXPECT_EQ(BarCount(), 4);
  Call(toolbars, u"DeleteToolbar", {1});
  EXPECT_FALSE(HasBar());
  EXPECT_EQ(Call(Item(2), u"VisibleButton", {1, true}), Value(std::uint8_t{1}));
}

TEST_F(Toolbars, DeleteToolbarOfAnUnknownIdChangesNothing) {
  DescribeCells(0);
  Create(observed_sheet);
  Call(toolbars, u"DeleteToolbar", {9});
  EXPECT_EQ(Count(), 1);
}

TEST_F(Toolbars, AToolbarThatAMacroKeepsOutlivesItsDeletion) {
  DescribeCells(0);
  Create(observed_sheet);
  toolbar = Item(1);
  Call(toolbars, u"DeleteToolbar", {1});
  EXPECT_EQ(Count(), 0);
  EXPECT_TRUE(HasBar());
  toolbar.reset();
  EXPECT_FALSE(HasBar());
}

TEST_F(Toolbars, RefreshOfNoneIsNoError) {
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"Refresh"); }), 0);
}

TEST_F(Toolbars, RefreshFailsUntilAToolbarWasLookedForAndAfterOneThatIsNotThere) {
  DescribeCells(0);
  Create(observed_sheet);
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"Refresh"); }), kInvalidProcedureCall);
  Item(1);
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"Refresh"); }), 0);
  EXPECT_EQ(Call(toolbars, u"Item", {9}), Nothing());
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"Refresh"); }), kInvalidProcedureCall);
}

TEST_F(Toolbars, RefreshAfterALookUpInVainVisitsNoToolbarThatCameLater) {
  DescribeCells(0);
  Create(observed_sheet);
  EXPECT_EQ(Call(toolbars, u"Item", {9}), Nothing());
  Create(OtherSheet(u"Sheet3", u"Kita"));
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"Refresh"); }), kInvalidProcedureCall);
}

TEST_F(Toolbars, RefreshVisitsTheToolbarThatWasLastLookedForAsOftenAsThereAreToolbars) {
  DescribeCells(0);
  Create(observed_sheet);
  Create(OtherSheet(u"Sheet3", u"Kita"));
  Create(OtherSheet(u"Sheet1", u"Trečia"));
  Item(2);
  trace.Clear();
  Call(toolbars, u"Refresh");
  int visits = 0;
  for (const std::string& line : trace.lines()) {
    visits += line == R"~(Application.CommandBars("Kita(Book1)"))~";
    EXPECT_EQ(line.find("Ataskaita"), line.npos) << line;
    EXPECT_EQ(line.find("Trečia"), line.npos) << line;
  }
  EXPECT_EQ(visits, 3) << "reading whether it is shown refreshes it; hidden, it is not refreshed once more";
}

TEST_F(Toolbars, RefreshBindsTheKeysOfAShownToolbarTwiceEachPass) {
  DescribeCells(0);
  Create(observed_sheet);
  Put(Item(1), u"VisibleToolbar", true);
  trace.Clear();
  Call(toolbars, u"Refresh");
  int bound = 0;
  for (const std::string& line : trace.lines())
    bound += line == R"~(Application.OnKey("{F1}", "Book1!cmdHelp"))~";
  EXPECT_EQ(bound, 2);
}

TEST_F(Toolbars, AfterADeletionRefreshVisitsWhatMovedUp) {
  DescribeCells(0);
  Create(observed_sheet);
  Create(OtherSheet(u"Sheet3", u"Kita"));
  Call(toolbars, u"DeleteToolbar", {1});
  trace.Clear();
  Call(toolbars, u"Refresh");
  EXPECT_NE(trace.Text().find("Kita(Book1)"), std::string::npos);
  Item(2);
  Create(observed_sheet);
  Call(toolbars, u"DeleteToolbar", {3});
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"Refresh"); }), kInvalidProcedureCall)
      << "nothing stands where the last one stood";
}

TEST_F(Toolbars, RefreshOverflowsBeyond254Toolbars) {
  DescribeCells(0);
  for (int id = 1; id <= 255; ++id) {
    Put(Cell(1, 2), u"Value", u"Ataskaita " + NumberText(id));
    ASSERT_EQ(Create(observed_sheet), id);
    if (id < 254) continue;
    Item(1);
    EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"Refresh"); }), id == 254 ? 0 : kOverflow);
  }
}

TEST_F(Toolbars, TheGoToApplicationCaptionIsTheHostsText841) {
  EXPECT_EQ(Get(toolbars, u"cmdGoToAppCaption"), Value(u"&Grįžti į sistemą"));
}

TEST_F(Toolbars, CmdGoToAppShowAddsTheCommandToTheMenuBar) {
  trace.Clear();
  Call(toolbars, u"cmdGoToAppShow");
  std::vector<std::string> lines = trace.lines();
  const std::string menu = R"~(Application.CommandBars("WorkSheet Menu Bar"))~";
  for (std::string& line : lines) {
    if (line.starts_with(menu + ".")) line.replace(0, menu.size(), "MENU");
    const std::string added = "MENU.Controls.Add(1, Temporary:=True).";
    if (line.starts_with(added)) line.replace(0, added.size() - 1, "COMMAND");
  }
  EXPECT_THAT(
      lines, ElementsAre(R"~(MessageResource.Text(841) -> "&Grįžti į sistemą")~", menu,
                         R"~(MENU.Controls("&Grįžti į sistemą") ! 5 Invalid procedure call or argument)~",
                         "MENU.Protection = 0", "MENU.Controls", "MENU.Controls.Add(1, Temporary:=True)",
                         "MENU.Protection = 9", "COMMAND.FaceId = 1017", "COMMAND.BeginGroup = True",
                         R"~(COMMAND.OnAction = "RestoreApp")~", R"~(COMMAND.Caption = "&Grįžti į sistemą")~",
                         R"~(COMMAND.Parameter = "&Grįžti į sistemą")~", "COMMAND.Style = 3",
                         "COMMAND.Visible = True"));
  EXPECT_EQ(MenuControls(), 2);
  EXPECT_EQ(Get(Bar(kMenuBar), u"Protection"), Value(9));
  Call(Command(), u"Execute");
  EXPECT_THAT(excel->MacrosRun(), ElementsAre(u"RestoreApp"));
}

TEST_F(Toolbars, CmdGoToAppShowAgainChangesTheOneCommand) {
  Call(toolbars, u"cmdGoToAppShow");
  Put(Command(), u"Visible", false);
  trace.Clear();
  Call(toolbars, u"cmdGoToAppShow", {u"Book1!Grizti"});
  EXPECT_EQ(trace.Text().find("Protection"), std::string::npos);
  EXPECT_EQ(trace.lines().size(), 3u + 7u);
  EXPECT_EQ(MenuControls(), 2);
  EXPECT_EQ(Get(Command(), u"OnAction"), Value(u"Book1!Grizti"));
  EXPECT_EQ(Get(Command(), u"Visible"), Value(true));
}

TEST_F(Toolbars, CmdGoToAppShowThatFailsLeavesNoCommandBehindAndTheMenuBarProtected) {
  int raised = 0;
  for (long n = 1;; ++n) {
    SCOPED_TRACE(n);
    trace.Clear();
    failure.Reset(n);
    const std::int32_t error = RaisedBy([&] { Call(toolbars, u"cmdGoToAppShow"); });
    const bool has_failed = failure.has_failed();
    failure.Reset(0);
    if (!has_failed) break;
    EXPECT_TRUE(error == 0 || error == kAutomationFailed) << error;
    raised += error != 0;
    EXPECT_EQ(MenuControls(), error == 0 ? 2 : 1);
    // In front of the fifth call nothing has changed yet.
    EXPECT_EQ(Get(Bar(kMenuBar), u"Protection"), Value(error == 0 || n > 4 ? 9 : 0));

    Call(toolbars, u"cmdGoToAppShow");
    EXPECT_EQ(MenuControls(), 2);
    ASSERT_TRUE(Command());
    EXPECT_EQ(Get(Command(), u"FaceId"), Value(1017));
    EXPECT_EQ(Get(Command(), u"BeginGroup"), Value(true));
    EXPECT_EQ(Get(Command(), u"OnAction"), Value(u"RestoreApp"));
    EXPECT_EQ(Get(Command(), u"Parameter"), Value(u"&Grįžti į sistemą"));
    EXPECT_EQ(Get(Command(), u"Style"), Value(std::int32_t{msoButtonIconAndCaption}));
    EXPECT_EQ(Get(Bar(kMenuBar), u"Protection"), Value(9));
    Call(toolbars, u"cmdGoToAppDelete");
    ASSERT_EQ(MenuControls(), 1);
    ASSERT_LT(n, 100);
  }
  EXPECT_EQ(raised, 1 + 4 + 7) << "the text, what adds the control, and its properties";
}

TEST_F(Toolbars, CmdGoToAppShowTakesANewCommandBackWithTheMenuBarOpenInTheMeantime) {
  failure.Reset(14);
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"cmdGoToAppShow"); }), kAutomationFailed);
  const std::vector<std::string>& lines = trace.lines();
  ASSERT_EQ(lines.size(), 14u + 3u);
  EXPECT_TRUE(lines[13].ends_with(".Visible = True ! 440 The call failed")) << lines[13];
  EXPECT_TRUE(lines[14].ends_with(".Protection = 0")) << lines[14];
  EXPECT_TRUE(lines[15].ends_with(".Delete()")) << lines[15];
  EXPECT_TRUE(lines[16].ends_with(".Protection = 9")) << lines[16];
}

TEST_F(Toolbars, CmdGoToAppShowKeepsACommandThatWasThereWhenItFails) {
  Call(toolbars, u"cmdGoToAppShow");
  for (long n = 4; n <= 10; ++n) {
    failure.Reset(n);
    EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"cmdGoToAppShow", {u"Grizti"}); }), kAutomationFailed) << n;
    failure.Reset(0);
    EXPECT_TRUE(Command()) << n;
    EXPECT_EQ(MenuControls(), 2) << n;
  }
}

/// Lets every call from a chosen one on fail, each with an error of its own: 1000 and its number.
class FailEachFrom : public CallObserver {
 public:
  explicit FailEachFrom(long first) : first_(first) {}
  void Starting(const HostCall&) override {
    if (++calls_ >= first_) throw AutomationError(static_cast<std::int32_t>(1000 + calls_), u"", u"");
  }

 private:
  long first_;
  long calls_ = 0;
};

TEST_F(Toolbars, CmdGoToAppShowReportsTheFirstFailureWhenTakingBackFailsToo) {
  // Of Excel alone: the menu bar, the look-up, its protection, its controls, the new one, its protection.
  for (const long n : {4, 5, 6, 7, 13}) {
    FailEachFrom failing(n);
    Interceptor failing_calls({&failing});
    Call(global, u"InitConnectEX", {failing_calls.Wrap(excel, u"Application"), ObjectPtr()});
    EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"cmdGoToAppShow"); }), 1000 + n);
    Call(global, u"ResetConnectEX", {0});
  }
}

TEST_F(Toolbars, CmdGoToAppShowReportsAMenuBarThatExcelDoesNotGive) {
  failure.Reset(2);
  const auto error = ErrorOf([&] { Call(toolbars, u"cmdGoToAppShow"); });
  EXPECT_FALSE(error) << "the look-up is ignored, the bar is asked for again";
  failure.Reset(0);
  global.reset();
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"cmdGoToAppShow"); }), kObjectNotSet);
}

TEST_F(Toolbars, CmdGoToAppDeleteRemovesTheCommandAndLeavesTheMenuBarUnprotected) {
  Call(toolbars, u"cmdGoToAppShow");
  trace.Clear();
  Call(toolbars, u"cmdGoToAppDelete");
  ASSERT_EQ(trace.lines().size(), 5u);
  EXPECT_TRUE(trace.lines()[3].ends_with(".Protection = 0")) << trace.lines()[3];
  EXPECT_TRUE(trace.lines()[4].ends_with(".Delete()")) << trace.lines()[4];
  EXPECT_FALSE(Command());
  EXPECT_EQ(Get(Bar(kMenuBar), u"Protection"), Value(0));
}

TEST_F(Toolbars, CmdGoToAppDeleteWithoutTheCommandTouchesNothing) {
  Put(Bar(kMenuBar), u"Protection", std::int32_t{9});
  trace.Clear();
  Call(toolbars, u"cmdGoToAppDelete");
  EXPECT_EQ(trace.lines().size(), 3u);
  EXPECT_EQ(Get(Bar(kMenuBar), u"Protection"), Value(9));
  global.reset();
  EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"cmdGoToAppDelete"); }), 0) << "not even without Excel";
}

TEST_F(Toolbars, CmdGoToAppDeleteReportsWhatExcelRefuses) {
  Call(toolbars, u"cmdGoToAppShow");
  for (const long call : {4, 5}) {
    failure.Reset(call);
    EXPECT_EQ(RaisedBy([&] { Call(toolbars, u"cmdGoToAppDelete"); }), kAutomationFailed) << call;
    failure.Reset(0);
    EXPECT_TRUE(Command());
  }
}

TEST_F(Toolbars, WithoutTheHostsTextTheCommandIsAnError) {
  host.texts.erase(841);
  for (const std::u16string_view member : {u"cmdGoToAppShow", u"cmdGoToAppDelete", u"cmdGoToAppCaption"}) {
    EXPECT_EQ(RaisedBy([&] { Call(toolbars, member); }), kSubscriptOutOfRange) << ToUtf8(member);
  }
}

TEST_F(Toolbars, ReleaseTheirToolbarsFirstAndTheCommandThen) {
  DescribeCells(0);
  Create(observed_sheet);
  Put(Item(1), u"VisibleToolbar", true);
  Create(OtherSheet(u"Sheet3", u"Kita"));
  Call(toolbars, u"cmdGoToAppShow");
  trace.Clear();
  toolbars.reset();
  std::vector<std::string> lines = trace.lines();
  for (std::string& line : lines) {
    for (const auto& [path, name] :
         {std::pair{"Ataskaita(Book1)", "FIRST"}, std::pair{"Kita(Book1)", "SECOND"},
          std::pair{"WorkSheet Menu Bar", "MENU"}}) {
      const std::size_t end = line.rfind('.');
      if (line.find(path) < end && line.starts_with("Application.CommandBars"))
        line = name + line.substr(end);
    }
  }
  EXPECT_THAT(lines,
              ElementsAre("FIRST.Enabled = True", "FIRST.Delete()", R"~(Application.OnKey("{F1}"))~",
                          "SECOND.Enabled = True", "SECOND.Delete()", R"~(Application.OnKey("{F1}"))~",
                          R"~(MessageResource.Text(841) -> "&Grįžti į sistemą")~",
                          R"~(Application.CommandBars("WorkSheet Menu Bar"))~",
                          R"~(MENU.Controls("&Grįžti į sistemą"))~", "MENU.Protection = 0", "MENU.Delete()"));
  EXPECT_EQ(BarCount(), 3);
  EXPECT_EQ(MenuControls(), 1);
  EXPECT_EQ(excel->KeyBindings().size(), 0u);
}

TEST_F(Toolbars, ReleaseWithoutExcelOrTheHostsTextRaisesNothing) {
  host.texts.erase(841);
  toolbars.reset();
  toolbars = LibraryTest::Create(u"CToolbars");
  host.texts[841] = u"Grįžti";
  EXPECT_EQ(RaisedBy([&] {
              global.reset();
              toolbars.reset();
            }),
            0);
}

TEST_F(Toolbars, OfTheGlobalObjectGoWithItsLastReset) {
  DescribeCells(0);
  Call(global, u"InitToolBars");
  Call(global, u"InitToolBars");
  Call(GetObject(global, u"oToolBars"), u"CreateToolbar", {observed_sheet});
  Call(GetObject(global, u"oToolBars"), u"cmdGoToAppShow");
  Call(global, u"ResetToolBars");
  EXPECT_TRUE(HasBar());
  Call(global, u"ResetToolBars");
  EXPECT_FALSE(HasBar());
  EXPECT_FALSE(Command());
}

TEST_F(Toolbars, TheHelpKeyOfAShownToolbarShowsTheReportHelp) {
  DescribeCells(0);
  Call(global, u"InitToolBars");
  ObjectPtr all = GetObject(global, u"oToolBars");
  Call(all, u"CreateToolbar", {observed_sheet});
  Put(Call(all, u"Item", {1}).ToObject(), u"VisibleToolbar", true);
  excel->DefineMacro(u"Book1!cmdHelp", [this] { Call(global, u"cmdHelp"); });
  EXPECT_TRUE(excel->Press(u"{F1}"));
  EXPECT_THAT(excel->HelpThatWasShown(),
              ElementsAre(memory::HelpShown{u"C:\\Program Files\\Varnholt\\FReport.chm", 0}));
  all.reset();
  Call(global, u"ResetToolBars");
  EXPECT_FALSE(excel->Press(u"{F1}")) << "Excel's own help again";
}

}  // namespace
}  // namespace qva
