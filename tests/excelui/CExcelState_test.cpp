#include "excelui/CExcelState.h"

#include "tests/excelui/excel_state_test.h"

namespace qva {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

const std::vector<std::string> kSaveCalls = {
    "Application.DisplayAlerts -> True",
    "Application.CellDragAndDrop -> True",
    "Application.EditDirectlyInCell -> True",
    "Application.TransitionNavigKeys -> False",
    "Application.MoveAfterReturn -> True",
    "Application.AskToUpdateLinks -> True",
    "Application.CopyObjectsWithCells -> True",
    "Application.EnableAnimations -> False",
    "Application.DisplayStatusBar -> True",
    "Application.DisplayFormulaBar -> True",
    "Application.DisplayCommentIndicator -> -1",
    "Application.ActiveWindow",
    "Application.ActiveWindow.DisplayHorizontalScrollBar -> True",
    "Application.ActiveWindow.DisplayVerticalScrollBar -> True",
    "Application.ActiveWindow.DisplayWorkbookTabs -> True",
    "Application.ActiveWindow.DisplayFormulas -> False",
    "Application.ActiveWindow.DisplayGridlines -> True",
    "Application.ActiveWindow.DisplayHeadings -> True",
    "Application.ActiveWindow.DisplayOutline -> True",
    "Application.ActiveWindow.DisplayZeros -> True",
    "Application.ActiveWindow.Zoom -> 100",
    "Application.ActiveSheet",
    "Application.ActiveSheet.PageSetup",
    "Application.ActiveSheet.PageSetup.PrintGridlines -> False",
    "Application.ActiveSheet.DisplayPageBreaks -> False",
    "Application.Calculation -> -4105",
    "Application.ReferenceStyle -> 1",
    "Application.CommandBars",
    "Application.CommandBars.Count -> 6",
    "Application.CommandBars.Item(1)",
    "Application.CommandBars.Item(1).Name -> \"Worksheet Menu Bar\"",
    "Application.CommandBars.Item(1).Visible -> True",
    "Application.CommandBars.Item(1).Enabled -> True",
    "Application.CommandBars.Item(2)",
    "Application.CommandBars.Item(2).Name -> \"Standard\"",
    "Application.CommandBars.Item(2).Visible -> True",
    "Application.CommandBars.Item(2).Enabled -> True",
    "Application.CommandBars.Item(3)",
    "Application.CommandBars.Item(3).Name -> \"Formatting\"",
    "Application.CommandBars.Item(3).Visible -> True",
    "Application.CommandBars.Item(3).Enabled -> True",
    "Application.CommandBars.Item(4)",
    "Application.CommandBars.Item(4).Name -> \"Ataskaita\"",
    "Application.CommandBars.Item(4).Visible -> True",
    "Application.CommandBars.Item(4).Enabled -> True",
    "Application.CommandBars.Item(5)",
    "Application.CommandBars.Item(5).Name -> \"Kita\"",
    "Application.CommandBars.Item(5).Visible -> True",
    "Application.CommandBars.Item(5).Enabled -> True",
    "Application.CommandBars.Item(6)",
    "Application.CommandBars.Item(6).Name -> \"Tuščia\"",
    "Application.CommandBars.Item(6).Visible -> False",
    "Application.CommandBars.Item(6).Enabled -> True",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\")",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\").Enabled -> True"};

const std::vector<std::string> kRestoreCalls = {
    "Application.Caption = \"\"",
    "Application.DisplayAlerts = True",
    "Application.CellDragAndDrop = True",
    "Application.EditDirectlyInCell = True",
    "Application.TransitionNavigKeys = False",
    "Application.MoveAfterReturn = True",
    "Application.AskToUpdateLinks = True",
    "Application.CopyObjectsWithCells = True",
    "Application.EnableAnimations = False",
    "Application.DisplayStatusBar = True",
    "Application.DisplayFormulaBar = True",
    "Application.DisplayCommentIndicator = -1",
    "Application.ActiveWindow",
    "Application.ActiveWindow.DisplayHorizontalScrollBar = True",
    "Application.ActiveWindow.DisplayVerticalScrollBar = True",
    "Application.ActiveWindow.DisplayWorkbookTabs = True",
    "Application.ActiveWindow.DisplayFormulas = False",
    "Application.ActiveWindow.DisplayGridlines = True",
    "Application.ActiveWindow.DisplayHeadings = True",
    "Application.ActiveWindow.DisplayOutline = True",
    "Application.ActiveWindow.DisplayZeros = True",
    "Application.ActiveWindow.Zoom = 100",
    "Application.ActiveSheet",
    "Application.ActiveSheet.PageSetup",
    "Application.ActiveSheet.PageSetup.PrintGridlines = False",
    "Application.ActiveSheet.DisplayPageBreaks = False",
    "Application.CommandBars",
    "Application.CommandBars.Item(\"Worksheet Menu Bar\")",
    "Application.CommandBars.Item(\"Worksheet Menu Bar\").Enabled = True",
    "Application.CommandBars.Item(\"Worksheet Menu Bar\").Visible = True",
    "Application.CommandBars.Item(\"Standard\")",
    "Application.CommandBars.Item(\"Standard\").Enabled = True",
    "Application.CommandBars.Item(\"Standard\").Visible = True",
    "Application.CommandBars.Item(\"Formatting\")",
    "Application.CommandBars.Item(\"Formatting\").Enabled = True",
    "Application.CommandBars.Item(\"Formatting\").Visible = True",
    "Application.CommandBars.Item(\"Ataskaita\")",
    "Application.CommandBars.Item(\"Ataskaita\").Enabled = True",
    "Application.CommandBars.Item(\"Ataskaita\").Visible = True",
    "Application.CommandBars.Item(\"Kita\")",
    "Application.CommandBars.Item(\"Kita\").Enabled = True",
    "Application.CommandBars.Item(\"Kita\").Visible = True",
    "Application.CommandBars.Item(\"Tuščia\")",
    "Application.CommandBars.Item(\"Tuščia\").Enabled = True",
    "Application.CommandBars.Item(\"Tuščia\").Visible = False",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\")",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\").Enabled = True"};

TEST_F(ExcelState, SaveReadsEverythingInTheStatedOrderAndChangesNothing) {
  const Settings before = Now();
  state->SaveExcelState();
  EXPECT_THAT(trace.lines(), ElementsAreArray(kSaveCalls));
  EXPECT_EQ(Now(), before);
}

TEST_F(ExcelState, RestoreWritesEverythingInTheStatedOrder) {
  state->SaveExcelState();
  trace.Clear();
  state->RestoreExcelState();
  EXPECT_THAT(trace.lines(), ElementsAreArray(kRestoreCalls));
}

TEST_F(ExcelState, InitEnvironmentSavesAndResetEnvironmentRestoresOnEveryCall) {
  for (int i = 0; i < 2; ++i) {
    trace.Clear();
    Call(global, u"InitEnvironment");
    EXPECT_THAT(trace.lines(), ElementsAreArray(kSaveCalls));
  }
  for (int i = 0; i < 2; ++i) {
    trace.Clear();
    Call(global, u"ResetEnvironment");
    EXPECT_THAT(trace.lines(), ElementsAreArray(kRestoreCalls));
  }
}

// Excel's bars are the user's number: the costs of one more are pinned, too.
TEST_F(ExcelState, HostCallsStayWithinTheirBudgets) {
  count.Reset();
  state->SaveExcelState();
  EXPECT_EQ(count.calls(), 55);
  count.Reset();
  state->RestoreExcelState();
  EXPECT_EQ(count.calls(), 47);
  AddBar(u"Nauja", u"");
  count.Reset();
  state->SaveExcelState();
  EXPECT_EQ(count.calls(), 55 + 4);
  count.Reset();
  state->RestoreExcelState();
  EXPECT_EQ(count.calls(), 47 + 3);
}

TEST_F(ExcelState, RestoreGivesBackEverythingButTheTwoStatedThings) {
  const Settings first = Now();
  state->SaveExcelState();
  ChangeEverything();
  const Settings changed = Now();
  for (const auto& [name, value] : first) {
    if (!name.starts_with("bar") && !name.starts_with("name") && name != "active cell") {
      EXPECT_NE(changed.at(name), value) << name;
    }
  }
  state->RestoreExcelState();
  EXPECT_EQ(Now(), PutBack(first, changed));
}

TEST_F(ExcelState, CalculationAndReferenceStyleAreSavedButNotPutBack) {
  state->SaveExcelState();
  Put(excel, u"Calculation", xlCalculationManual);
  Put(excel, u"ReferenceStyle", xlR1C1);
  state->RestoreExcelState();
  EXPECT_EQ(Get(excel, u"Calculation"), Value(xlCalculationManual));
  EXPECT_EQ(Get(excel, u"ReferenceStyle"), Value(xlR1C1));
}

TEST_F(ExcelState, CaptionIsNotSavedAndBecomesExcelsOwn) {
  Put(excel, u"Caption", u"Mano Excel");
  state->SaveExcelState();
  EXPECT_EQ(Get(excel, u"Caption"), Value(u"Mano Excel"));
  state->RestoreExcelState();
  EXPECT_EQ(Get(excel, u"Caption"), Value(u"Microsoft Excel"));
}

TEST_F(ExcelState, TwoSavesAndTwoRestoresGiveBackTheNewerThenTheOlderSettings) {
  const Settings older = Now();
  state->SaveExcelState();
  ChangeEverything();
  const Settings newer = Now();
  state->SaveExcelState();
  Call(Create(u"CEnvironment"), u"SetDefaultAppState");
  const Settings report = Now();
  state->RestoreExcelState();
  const Settings after_first = Now();
  EXPECT_EQ(after_first, PutBack(newer, report));
  state->RestoreExcelState();
  EXPECT_EQ(Now(), PutBack(older, after_first));
  EXPECT_EQ(state->depth(), 0);
}

TEST_F(ExcelState, ReportsWithinReportsGiveTheUsersExcelBack) {
  const Settings users = Now();
  for (int i = 0; i < 3; ++i) {
    Call(global, u"InitEnvironment");
    Call(GetObject(global, u"oEnvironment"), u"SetDefaultAppState");
    if (i == 1) Call(GetObject(global, u"oEnvironment"), u"SetDefaultExcelState");
  }
  for (int i = 0; i < 3; ++i) Call(global, u"ResetEnvironment");
  const Settings now = Now();
  EXPECT_EQ(now, PutBack(users, now));
  EXPECT_EQ(now.at("bar Standard visible"), Value(true));
}

TEST_F(ExcelState, BarsThatTheUserHadHiddenStayHidden) {
  Put(Bar(u"Standard"), u"Visible", false);
  Put(Bar(u"Formatting"), u"Enabled", false);
  const Settings users = Now();
  state->SaveExcelState();
  Call(Create(u"CEnvironment"), u"SetDefaultAppState");
  Call(Create(u"CEnvironment"), u"SetDefaultExcelState");
  state->RestoreExcelState();
  const Settings now = Now();
  EXPECT_EQ(now, PutBack(users, now));
}

TEST_F(ExcelState, BarThatIsGoneMeanwhileIsSkipped) {
  state->SaveExcelState();
  ChangeEverything();
  Call(Bar(u"Ataskaita"), u"Delete");
  AddBar(u"Nauja", u"");
  Put(Bar(u"Nauja"), u"Enabled", false);
  trace.Clear();
  EXPECT_EQ(RaisedBy([&] { state->RestoreExcelState(); }), 0);
  const std::string gone = "Application.CommandBars.Item(\"Ataskaita\")";
  std::vector<std::string> expected;
  for (const std::string& line : kRestoreCalls) {
    if (IsChange(line) && !line.starts_with(gone)) expected.push_back(line);
  }
  EXPECT_THAT(Changes(), ElementsAreArray(expected));
  EXPECT_EQ(Get(Bar(u"Nauja"), u"Enabled"), Value(false)) << "a bar that came meanwhile is left alone";
}

TEST_F(ExcelState, WindowAndSheetSettingsGoToWhateverIsActiveThen) {
  Put(Owner(u"ActiveWindow"), u"Zoom", 60);
  Put(Owner(u"ActiveSheet"), u"DisplayPageBreaks", true);
  state->SaveExcelState();
  excel->AddWorkbook();
  state->RestoreExcelState();
  EXPECT_EQ(Get(Owner(u"ActiveWindow"), u"Zoom"), Value(60));
  EXPECT_EQ(Get(Owner(u"ActiveSheet"), u"DisplayPageBreaks"), Value(true));
}

TEST_F(ExcelState, WithoutAWorkbookTheRestIsSavedAndPutBack) {
  Call(workbook, u"Close", {false});
  Put(excel, u"DisplayFormulaBar", false);
  Put(Bar(u"Standard"), u"Visible", false);
  EXPECT_EQ(RaisedBy([&] { state->SaveExcelState(); }), 0);
  Put(excel, u"DisplayFormulaBar", true);
  Put(Bar(u"Standard"), u"Visible", true);
  EXPECT_EQ(RaisedBy([&] { state->RestoreExcelState(); }), 0);
  EXPECT_EQ(Get(excel, u"DisplayFormulaBar"), Value(false));
  EXPECT_EQ(Get(Bar(u"Standard"), u"Visible"), Value(false));
  workbook.reset();
}

TEST_F(ExcelState, WhatCouldNotBeReadIsNotWrittenBack) {
  Call(workbook, u"Close", {false});
  state->SaveExcelState();
  workbook = excel->AddWorkbook();
  Put(Owner(u"ActiveWindow"), u"Zoom", 60);
  Put(Owner(u"ActiveWindow"), u"DisplayFormulas", true);
  trace.Clear();
  state->RestoreExcelState();
  EXPECT_EQ(Get(Owner(u"ActiveWindow"), u"Zoom"), Value(60));
  EXPECT_EQ(Get(Owner(u"ActiveWindow"), u"DisplayFormulas"), Value(true));
  EXPECT_EQ(std::count(trace.lines().begin(), trace.lines().end(), "Application.ActiveWindow"), 0);
}

TEST_F(ExcelState, SkipsWhicheverCallFailsWhileItSaves) {
  std::vector<std::string> all;
  for (const std::string& line : kRestoreCalls) {
    if (IsChange(line)) all.push_back(line);
  }
  for (std::size_t n = 0; n < kSaveCalls.size(); ++n) {
    const std::string& line = kSaveCalls[n];
    SCOPED_TRACE(line);
    failure.Reset(static_cast<long>(n) + 1);
    EXPECT_EQ(RaisedBy([&] { state->SaveExcelState(); }), 0);
    EXPECT_TRUE(failure.has_failed());
    failure.Reset(0);
    trace.Clear();
    state->RestoreExcelState();

    // What could not be read: the setting itself, or all that stands behind the object.
    std::set<std::string> lost;
    const auto lose = [&](const std::string& prefix) {
      for (const std::string& change : all) {
        if (change.starts_with(prefix)) lost.insert(change);
      }
    };
    const std::string bars = "Application.CommandBars";
    const std::string menu_bar = bars + ".Item(\"WorkSheet Menu Bar\")";
    static const std::vector<std::string> names = {"Worksheet Menu Bar", "Standard", "Formatting",
                                                   "Ataskaita",          "Kita",     "Tuščia"};
    if (line == "Application.ActiveWindow") {
      lose("Application.ActiveWindow.DisplayHorizontalScrollBar = ");
    } else if (line == "Application.ActiveSheet" || line == "Application.ActiveSheet.PageSetup") {
      lose("Application.ActiveSheet.PageSetup.PrintGridlines = ");
    } else if (line == bars || line.starts_with(bars + ".Count")) {
      for (const std::string& name : names) lose(bars + ".Item(\"" + name + "\").");
    } else if (line.starts_with(menu_bar)) {
      lose(menu_bar + ".");
    } else if (line.starts_with(bars + ".Item(")) {
      const auto number = static_cast<std::size_t>(line[bars.size() + 6] - '1');
      const std::string bar = bars + ".Item(\"" + names.at(number) + "\").";
      const bool is_property = line.find(".Visible") != line.npos || line.find(".Enabled") != line.npos;
      lose(is_property ? bar + line.substr(line.find(").") + 2, 7) : bar);
    } else {
      lose(line.substr(0, line.find(" -> ")) + " = ");
    }
    const bool never_put_back =
        line.find("Calculation") != line.npos || line.find("ReferenceStyle") != line.npos;
    EXPECT_EQ(lost.empty(), never_put_back);
    std::vector<std::string> expected;
    for (const std::string& change : all) {
      if (!lost.contains(change)) expected.push_back(change);
    }
    EXPECT_THAT(Changes(), ElementsAreArray(expected));
    EXPECT_EQ(state->depth(), 0);
  }
}

TEST_F(ExcelState, SkipsWhicheverCallFailsWhileItRestores) {
  std::vector<std::string> all;
  for (const std::string& line : kRestoreCalls) {
    if (IsChange(line)) all.push_back(line);
  }
  for (std::size_t n = 0; n < kRestoreCalls.size(); ++n) {
    SCOPED_TRACE(kRestoreCalls[n]);
    std::vector<std::string> lost = LostBy(kRestoreCalls, n);
    if (kRestoreCalls[n] == "Application.CommandBars") {
      // The next bar asks for them again.
      lost = {"Application.CommandBars.Item(\"Worksheet Menu Bar\").Enabled = True",
              "Application.CommandBars.Item(\"Worksheet Menu Bar\").Visible = True"};
    }
    state->SaveExcelState();
    trace.Clear();
    failure.Reset(static_cast<long>(n) + 1);
    EXPECT_EQ(RaisedBy([&] { state->RestoreExcelState(); }), 0);
    EXPECT_TRUE(failure.has_failed());
    failure.Reset(0);
    EXPECT_THAT(Changes(), ElementsAreArray(Without(all, lost)));
    EXPECT_EQ(state->depth(), 0);
  }
}

TEST_F(ExcelState, AnyOneSettingThatExcelRefusesLeavesAllOthersRestored) {
  const Settings first = Now();
  for (const TestSetting& setting : TestSettings()) {
    SCOPED_TRACE(ToUtf8(setting.name));
    for (const TestSetting& each : TestSettings()) Write(each, each.values[0]);
    Put(Bar(u"Standard"), u"Visible", true);
    Put(Bar(u"Kita"), u"Enabled", true);
    ASSERT_EQ(Now(), first);
    refusal.member = setting.name;
    EXPECT_EQ(RaisedBy([&] { state->SaveExcelState(); }), 0);
    ChangeEverything();
    const Settings changed = Now();
    EXPECT_EQ(RaisedBy([&] { state->RestoreExcelState(); }), 0);
    refusal.member.clear();
    Settings expected = PutBack(first, changed);
    expected[ToUtf8(setting.name)] = changed.at(ToUtf8(setting.name));
    EXPECT_EQ(Now(), expected);
  }
}

TEST_F(ExcelState, EveryMemberMayBeRefusedForGood) {
  for (const auto* member : {u"ActiveWindow", u"ActiveSheet", u"PageSetup", u"CommandBars", u"Count", u"Item",
                             u"Name", u"Enabled", u"Visible"}) {
    SCOPED_TRACE(ToUtf8(member));
    refusal.member = member;
    refusal.refused = 0;
    EXPECT_EQ(RaisedBy([&] { state->SaveExcelState(); }), 0);
    EXPECT_EQ(RaisedBy([&] { state->RestoreExcelState(); }), 0);
    EXPECT_GT(refusal.refused, 0);
  }
  EXPECT_EQ(state->depth(), 0);
}

TEST_F(ExcelState, RestoreWithoutSnapshotsDoesNothing) {
  state->RestoreExcelState();
  EXPECT_THAT(trace.lines(), IsEmpty());
  EXPECT_EQ(state->depth(), 0);
  state->SaveExcelState();
  EXPECT_EQ(state->depth(), 1);
}

TEST_F(ExcelState, StackHoldsAsManySnapshotsAsASixteenBitDepthCounts) {
  global.reset();  // no Excel: snapshots of nothing
  for (int i = 0; i < 32767; ++i) state->SaveExcelState();
  EXPECT_EQ(state->depth(), 32767);
  Call(global = Create(u"gExcelObject"), u"InitConnectEX", {observed, ObjectPtr()});
  EXPECT_EQ(RaisedBy([&] { state->SaveExcelState(); }), 0) << "no error leaves the class";
  EXPECT_EQ(state->depth(), 32767);
  const Settings saved = Now();
  ChangeEverything();
  state->RestoreExcelState();
  const Settings now = Now();
  EXPECT_EQ(now, PutBack(saved, now)) << "the latest snapshot was taken anew";
  EXPECT_EQ(state->depth(), 32766);
}

TEST_F(ExcelState, HasANameButNoMembersForMacros) {
  EXPECT_EQ(state->TypeName(), u"CExcelState");
  for (const auto* member : {u"SaveExcelState", u"RestoreExcelState", u""}) {
    EXPECT_EQ(RaisedBy([&] { Call(state, member); }), kUnsupportedMember);
  }
}

/// Restores once more while a restore is under way, as a macro that an event runs may do.
class RestoreBetween : public CallObserver {
 public:
  void Starting(const HostCall& call) override {
    if (state && call.member == u"DisplayFormulas") Ref(std::move(state))->RestoreExcelState();
  }
  Ref<CExcelState> state;
};

TEST_F(ExcelState, RestoreWithinARestoreIsSafe) {
  RestoreBetween between;
  Interceptor restoring({&between});
  Call(global, u"InitConnectEX", {restoring.Wrap(excel, u"Application"), ObjectPtr()});
  const Settings first = Now();
  for (int i = 0; i < 2; ++i) state->SaveExcelState();
  ChangeEverything();
  between.state = state;
  state->RestoreExcelState();
  EXPECT_EQ(state->depth(), 0);
  const Settings now = Now();
  EXPECT_EQ(now, PutBack(first, now));

  state->SaveExcelState();
  between.state = state;
  state->RestoreExcelState();
  EXPECT_EQ(state->depth(), 0) << "one snapshot is not dropped twice";
}

TEST_F(ExcelState, ConnectionThatIsResetInBetweenStopsNeitherSnapshotNorRestore) {
  ResetBetween reset;
  Interceptor resetting({&trace, &reset});
  Call(global, u"InitConnectEX", {resetting.Wrap(excel, u"Application"), ObjectPtr()});
  reset.global = global;
  trace.Clear();
  Call(global, u"InitEnvironment");
  EXPECT_THAT(trace.lines(), ElementsAreArray(kSaveCalls));
  EXPECT_FALSE(TheGlobals().oEnvironment) << "the connection was reset";

  // The counters outlive a reset: the next environment is a first one again.
  EXPECT_EQ(RaisedBy([&] { Call(global, u"ResetEnvironment"); }), kObjectNotSet);
  Call(global, u"InitEnvironment");
  reset.global = global;
  trace.Clear();
  Call(global, u"ResetEnvironment");
  EXPECT_THAT(trace.lines(), ElementsAreArray(kRestoreCalls));
  EXPECT_FALSE(TheGlobals().oEnvironment);
}

}  // namespace
}  // namespace qva
