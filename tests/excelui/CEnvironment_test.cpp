#include "excelui/CEnvironment.h"

#include "tests/excelui/excel_state_test.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class Environment : public ExcelStateTest {
 protected:
  static constexpr std::u16string_view kReport = u"SetDefaultAppState";
  static constexpr std::u16string_view kOrdinary = u"SetDefaultExcelState";

  /// The calls of an operation on the Excel as it is.
  std::vector<std::string> CallsOf(std::u16string_view operation) {
    trace.Clear();
    Call(environment, operation);
    return trace.lines();
  }

  ObjectPtr environment = Create(u"CEnvironment");
};

const std::vector<std::string> kReportCalls = {
    "Application.Caption = \"\"",
    "Application.Range(\"A1\")",
    "Application.Range(\"A1\").Activate() -> True",
    "Application.DisplayAlerts = True",
    "Application.CellDragAndDrop = False",
    "Application.EditDirectlyInCell = True",
    "Application.TransitionNavigKeys = False",
    "Application.AskToUpdateLinks = False",
    "Application.CopyObjectsWithCells = True",
    "Application.EnableAnimations = False",
    "Application.DisplayStatusBar = True",
    "Application.DisplayFormulaBar = False",
    "Application.DisplayCommentIndicator = 0",
    "Application.ActiveWindow",
    "Application.ActiveWindow.DisplayFormulas = False",
    "Application.ActiveWindow.DisplayGridlines = False",
    "Application.ActiveWindow.DisplayHeadings = False",
    "Application.ActiveWindow.DisplayOutline = False",
    "Application.ActiveWindow.DisplayZeros = True",
    "Application.ActiveWindow.Zoom = 100",
    "Application.ActiveWindow.WindowState = -4137",
    "Application.ActiveWindow.ScrollColumn = 1",
    "Application.ActiveWindow.ScrollRow = 1",
    "Application.ActiveSheet",
    "Application.ActiveSheet.PageSetup",
    "Application.ActiveSheet.PageSetup.PrintGridlines = False",
    "Application.ActiveSheet.DisplayPageBreaks = False",
    "Application.Calculation = -4105",
    "Application.ReferenceStyle = 1",
    "Application.CommandBars",
    "Application.CommandBars.Count -> 6",
    "Application.CommandBars.Item(1)",
    "Application.CommandBars.Item(1).Name -> \"Worksheet Menu Bar\"",
    "Application.CommandBars.Item(1).Controls",
    "Application.CommandBars.Item(1).Controls.Item(1)",
    "Application.CommandBars.Item(1).Controls.Item(1).Parameter -> \"\"",
    "Application.CommandBars.Item(1).Enabled = False",
    "Application.CommandBars.Item(2)",
    "Application.CommandBars.Item(2).Name -> \"Standard\"",
    "Application.CommandBars.Item(2).Controls",
    "Application.CommandBars.Item(2).Controls.Item(1)",
    "Application.CommandBars.Item(2).Controls.Item(1).Parameter -> \"\"",
    "Application.CommandBars.Item(2).Enabled = False",
    "Application.CommandBars.Item(3)",
    "Application.CommandBars.Item(3).Name -> \"Formatting\"",
    "Application.CommandBars.Item(3).Controls",
    "Application.CommandBars.Item(3).Controls.Item(1)",
    "Application.CommandBars.Item(3).Controls.Item(1).Parameter -> \"\"",
    "Application.CommandBars.Item(3).Enabled = False",
    "Application.CommandBars.Item(4)",
    "Application.CommandBars.Item(4).Name -> \"Ataskaita\"",
    "Application.CommandBars.Item(4).Controls",
    "Application.CommandBars.Item(4).Controls.Item(1)",
    "Application.CommandBars.Item(4).Controls.Item(1).Parameter -> \"Ataskaita\"",
    "Application.CommandBars.Item(5)",
    "Application.CommandBars.Item(5).Name -> \"Kita\"",
    "Application.CommandBars.Item(5).Controls",
    "Application.CommandBars.Item(5).Controls.Item(1)",
    "Application.CommandBars.Item(5).Controls.Item(1).Parameter -> \"kita\"",
    "Application.CommandBars.Item(5).Enabled = False",
    "Application.CommandBars.Item(6)",
    "Application.CommandBars.Item(6).Name -> \"Tuščia\"",
    "Application.CommandBars.Item(6).Controls",
    "Application.CommandBars.Item(6).Controls.Item(1) ! 5 Invalid procedure call or argument",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\")",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\").Enabled = False",
    "Application.OnKey(\"{F1}\", \"\")",
    "Application.OnKey(\"{F3}\", \"\")",
    "Application.OnKey(\"{F4}\", \"\")",
    "Application.OnKey(\"{F5}\", \"\")",
    "Application.OnKey(\"{F6}\", \"\")",
    "Application.OnKey(\"{F7}\", \"\")",
    "Application.OnKey(\"{F8}\", \"\")",
    "Application.OnKey(\"{F9}\", \"\")",
    "Application.OnKey(\"{F10}\", \"\")",
    "Application.OnKey(\"{F11}\", \"\")",
    "Application.OnKey(\"{F12}\", \"\")",
    "Application.ActiveWorkbook",
    "Application.ActiveWorkbook.Names",
    "Application.ActiveWorkbook.Names.Count -> 2",
    "Application.ActiveWorkbook.Names.Item(1)",
    "Application.ActiveWorkbook.Names.Item(1).Visible = False",
    "Application.ActiveWorkbook.Names.Item(2)",
    "Application.ActiveWorkbook.Names.Item(2).Visible = False"};

const std::vector<std::string> kOrdinaryCalls = {
    "Application.Caption = \"\"",
    "Application.DisplayAlerts = True",
    "Application.CellDragAndDrop = True",
    "Application.EditDirectlyInCell = True",
    "Application.TransitionNavigKeys = False",
    "Application.AskToUpdateLinks = True",
    "Application.CopyObjectsWithCells = True",
    "Application.EnableAnimations = False",
    "Application.DisplayStatusBar = True",
    "Application.DisplayFormulaBar = True",
    "Application.DisplayCommentIndicator = -1",
    "Application.ActiveWindow",
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
    "Application.CommandBars.Item(\"Standard\")",
    "Application.CommandBars.Item(\"Standard\").Enabled = True",
    "Application.CommandBars.Item(\"Standard\").Visible = True",
    "Application.CommandBars.Item(\"Formatting\")",
    "Application.CommandBars.Item(\"Formatting\").Enabled = True",
    "Application.CommandBars.Item(\"Formatting\").Visible = True",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\")",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\").Enabled = True",
    "Application.CommandBars.Item(\"WorkSheet Menu Bar\").Visible = True",
    "Application.OnKey(\"{F1}\")",
    "Application.OnKey(\"{F3}\")",
    "Application.OnKey(\"{F4}\")",
    "Application.OnKey(\"{F5}\")",
    "Application.OnKey(\"{F6}\")",
    "Application.OnKey(\"{F7}\")",
    "Application.OnKey(\"{F8}\")",
    "Application.OnKey(\"{F9}\")",
    "Application.OnKey(\"{F10}\")",
    "Application.OnKey(\"{F11}\")",
    "Application.OnKey(\"{F12}\")",
    "Application.ActiveWorkbook",
    "Application.ActiveWorkbook.Names",
    "Application.ActiveWorkbook.Names.Count -> 2",
    "Application.ActiveWorkbook.Names.Item(1)",
    "Application.ActiveWorkbook.Names.Item(1).Visible = True",
    "Application.ActiveWorkbook.Names.Item(2)",
    "Application.ActiveWorkbook.Names.Item(2).Visible = True"};

TEST_F(Environment, ReportStateSetsEverythingInTheStatedOrder) {
  EXPECT_THAT(CallsOf(kReport), ElementsAreArray(kReportCalls));
}

TEST_F(Environment, OrdinaryStateSetsEverythingInTheStatedOrder) {
  EXPECT_THAT(CallsOf(kOrdinary), ElementsAreArray(kOrdinaryCalls));
}

TEST_F(Environment, BothStatesMakeTheSameCallsWhateverWasSetBefore) {
  ChangeEverything();
  EXPECT_THAT(CallsOf(kReport), ElementsAreArray(kReportCalls));
  EXPECT_THAT(CallsOf(kReport), ElementsAreArray(kReportCalls));
  EXPECT_THAT(CallsOf(kOrdinary), ElementsAreArray(kOrdinaryCalls));
  EXPECT_THAT(CallsOf(kOrdinary), ElementsAreArray(kOrdinaryCalls));
}

// Excel's bars and names are the user's number: the costs of one more are pinned, too.
TEST_F(Environment, HostCallsStayWithinTheirBudgets) {
  const auto calls_of = [&](std::u16string_view operation) {
    count.Reset();
    Call(environment, operation);
    return count.calls();
  };
  EXPECT_EQ(calls_of(kReport), 84);
  EXPECT_EQ(calls_of(kOrdinary), 51);

  AddBar(u"Nauja", u"");
  EXPECT_EQ(calls_of(kReport), 84 + 6) << "a bar to be disabled";
  AddBar(u"Antra ataskaita", u"Antra ataskaita");
  EXPECT_EQ(calls_of(kReport), 84 + 6 + 5) << "a report toolbar";
  EXPECT_EQ(calls_of(kOrdinary), 51) << "bars beside Excel's own cost nothing";
  Call(GetObject(workbook, u"Names"), u"Add", {u"rDiena", u"=Sheet1!$A$3"});
  EXPECT_EQ(calls_of(kReport), 84 + 6 + 5 + 2);
  EXPECT_EQ(calls_of(kOrdinary), 51 + 2);
}

TEST_F(Environment, ReportStateLeavesAloneWhatItDoesNotName) {
  ChangeEverything();
  Call(environment, kReport);
  EXPECT_EQ(Get(excel, u"MoveAfterReturn"), Value(false));
  const ObjectPtr window = Owner(u"ActiveWindow");
  for (const auto* name :
       {u"DisplayHorizontalScrollBar", u"DisplayVerticalScrollBar", u"DisplayWorkbookTabs"}) {
    EXPECT_EQ(Get(window, name), Value(false)) << ToUtf8(name);
  }
}

TEST_F(Environment, OrdinaryStateLeavesAloneWhatItDoesNotName) {
  ChangeEverything();
  const Settings before = Now();
  Call(environment, kOrdinary);
  Settings after = Now();
  for (const auto* name :
       {"MoveAfterReturn", "DisplayHorizontalScrollBar", "DisplayVerticalScrollBar", "WindowState",
        "ScrollColumn", "ScrollRow", "Calculation", "ReferenceStyle", "active cell", "bar Kita enabled"}) {
    EXPECT_EQ(after.at(name), before.at(name)) << name;
  }
}

TEST_F(Environment, ReportStateActivatesTheFirstCellOfTheActiveSheet) {
  Call(GetObject(excel, u"Range", {u"C7"}), u"Select");
  Call(environment, kReport);
  EXPECT_EQ(Now().at("active cell"), Value(u"$A$1"));
}

TEST_F(Environment, ReportToolbarsAloneSurviveTheReportState) {
  Call(environment, kReport);
  const Settings now = Now();
  EXPECT_EQ(now.at("bar Ataskaita enabled"), Value(true));
  EXPECT_EQ(now.at("bar Ataskaita visible"), Value(true));
  for (const auto* name : {"Worksheet Menu Bar", "Standard", "Formatting", "Kita"}) {
    EXPECT_EQ(now.at("bar " + std::string(name) + " enabled"), Value(false)) << name;
  }
}

TEST_F(Environment, BarWithoutControlsIsSkipped) {
  Call(environment, kReport);
  EXPECT_EQ(Now().at("bar Tuščia enabled"), Value(true));
}

TEST_F(Environment, OrdinaryStateShowsThreeBarsAndLeavesTheOthersDisabled) {
  Put(Bar(u"Standard"), u"Visible", false);
  Call(environment, kReport);
  Call(environment, kOrdinary);
  const Settings now = Now();
  for (const auto* name : {"Worksheet Menu Bar", "Standard", "Formatting"}) {
    EXPECT_EQ(now.at("bar " + std::string(name) + " enabled"), Value(true)) << name;
    EXPECT_EQ(now.at("bar " + std::string(name) + " visible"), Value(true)) << name;
  }
  EXPECT_EQ(now.at("bar Kita enabled"), Value(false));
}

TEST_F(Environment, KeysDoNothingInTheReportStateButF2) {
  Call(excel, u"OnKey", {u"{F2}", u"Keisti"});
  Call(excel, u"OnKey", {u"{F5}", u"Eiti"});
  Call(environment, kReport);
  std::map<std::u16string, std::u16string> expected = {{u"{F2}", u"Keisti"}};
  for (const int number : {1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}) {
    expected[u"{F" + NumberText(number) + u"}"] = u"";
  }
  EXPECT_EQ(excel->KeyBindings(), expected);
}

TEST_F(Environment, OrdinaryStateGivesEveryKeyBackButF2) {
  Call(environment, kReport);
  Call(excel, u"OnKey", {u"{F2}", u""});
  Call(excel, u"OnKey", {u"^{s}", u"Saugoti"});
  Call(environment, kOrdinary);
  EXPECT_EQ(excel->KeyBindings(),
            (std::map<std::u16string, std::u16string>{{u"{F2}", u""}, {u"^{s}", u"Saugoti"}}));
}

TEST_F(Environment, NamesOfTheActiveWorkbookAreHiddenAndShown) {
  const ObjectPtr first_names = GetObject(workbook, u"Names");
  const ObjectPtr second = excel->AddWorkbook();
  const ObjectPtr name = Call(GetObject(second, u"Names"), u"Add", {u"rKitas", u"=Sheet1!$A$1"}).ToObject();
  Call(environment, kReport);
  EXPECT_EQ(Get(name, u"Visible"), Value(false));
  for (int i = 1; i <= 2; ++i) EXPECT_EQ(Get(GetObject(first_names, u"Item", {i}), u"Visible"), Value(true));
  Call(environment, kOrdinary);
  EXPECT_EQ(Get(name, u"Visible"), Value(true));
}

TEST_F(Environment, ScrollBarArgumentIsNotUsed) {
  const ObjectPtr window = Owner(u"ActiveWindow");
  for (const Value& argument : {Value(true), Value(false), Value(Missing{})}) {
    for (const bool shown : {true, false}) {
      Put(window, u"DisplayHorizontalScrollBar", shown);
      trace.Clear();
      Call(environment, kReport, {argument});
      EXPECT_THAT(trace.lines(), ElementsAreArray(kReportCalls));
      EXPECT_EQ(Get(window, u"DisplayHorizontalScrollBar"), Value(shown));
    }
  }
  EXPECT_EQ(RaisedBy([&] { Call(environment, kReport, {u"galbūt"}); }), kTypeMismatch);
}

TEST_F(Environment, WithoutAWorkbookTheRestIsSet) {
  Call(workbook, u"Close", {false});
  for (const auto& [operation, calls] :
       {std::pair(kReport, kReportCalls), std::pair(kOrdinary, kOrdinaryCalls)}) {
    std::vector<std::string> expected;
    for (const std::string& line : calls) {
      const bool needs_workbook = line.find(".Active") != line.npos || line.find("\"A1\"") != line.npos;
      if (!needs_workbook && IsChange(line)) expected.push_back(line);
    }
    trace.Clear();
    EXPECT_EQ(RaisedBy([&] { Call(environment, operation); }), 0);
    EXPECT_THAT(Changes(), ElementsAreArray(expected));
  }
  workbook.reset();
}

TEST_F(Environment, WithoutAConnectionNothingHappens) {
  global.reset();
  trace.Clear();
  EXPECT_EQ(RaisedBy([&] { Call(environment, kReport); }), 0);
  EXPECT_EQ(RaisedBy([&] { Call(environment, kOrdinary); }), 0);
  EXPECT_THAT(trace.lines(), IsEmpty());
}

TEST_F(Environment, WhicheverCallFailsAllOtherChangesAreMadeAndNothingIsRaised) {
  for (const auto& [operation, calls] :
       {std::pair(kReport, kReportCalls), std::pair(kOrdinary, kOrdinaryCalls)}) {
    std::vector<std::string> all;
    for (const std::string& line : calls) {
      if (IsChange(line)) all.push_back(line);
    }
    for (std::size_t n = 0; n < calls.size(); ++n) {
      SCOPED_TRACE(calls[n]);
      std::vector<std::string> lost = LostBy(calls, n);
      if (calls[n] == "Application.CommandBars" || calls[n].starts_with("Application.CommandBars.Count")) {
        // The bars with a name of their own are asked for again.
        std::erase_if(lost, [&](const std::string& line) {
          return line.find("\"WorkSheet Menu Bar\"") != line.npos || operation == kOrdinary;
        });
        if (operation == kOrdinary) {
          lost = {"Application.CommandBars.Item(\"Standard\").Enabled = True",
                  "Application.CommandBars.Item(\"Standard\").Visible = True"};
        }
      }
      trace.Clear();
      failure.Reset(static_cast<long>(n) + 1);
      EXPECT_EQ(RaisedBy([&] { Call(environment, operation); }), 0);
      EXPECT_TRUE(failure.has_failed());
      failure.Reset(0);
      EXPECT_THAT(Changes(), ElementsAreArray(Without(all, lost)));
    }
  }
}

TEST_F(Environment, AnyOneSettingThatExcelRefusesLeavesAllOthersSet) {
  for (const TestSetting& setting : TestSettings()) {
    SCOPED_TRACE(ToUtf8(setting.name));
    refusal.member.clear();
    ChangeEverything();
    Call(environment, kReport);
    const Settings report = Now();
    ChangeEverything();
    const Settings changed = Now();
    refusal.member = setting.name;
    EXPECT_EQ(RaisedBy([&] { Call(environment, kReport); }), 0);
    Settings expected = report;
    const std::string name = ToUtf8(setting.name);
    expected[name] = changed.at(name);
    EXPECT_EQ(Now(), expected);
  }
}

TEST_F(Environment, EveryMemberMayBeRefusedForGood) {
  for (const std::u16string_view operation : {kReport, kOrdinary}) {
    for (const auto* member : {u"Range", u"Activate", u"ActiveWindow", u"ActiveSheet", u"PageSetup",
                               u"CommandBars", u"Count", u"Item", u"Name", u"Controls", u"Parameter",
                               u"Enabled", u"Visible", u"OnKey", u"ActiveWorkbook", u"Names"}) {
      refusal.member = member;
      EXPECT_EQ(RaisedBy([&] { Call(environment, operation); }), 0) << ToUtf8(member);
    }
  }
  EXPECT_GT(refusal.refused, 0);
}

TEST_F(Environment, ConnectionThatIsResetInBetweenDoesNotStopTheState) {
  for (const auto& [operation, calls] :
       {std::pair(kReport, kReportCalls), std::pair(kOrdinary, kOrdinaryCalls)}) {
    ResetBetween reset;
    Interceptor resetting({&trace, &reset});
    ObjectPtr other = Create(u"gExcelObject");
    Call(other, u"InitConnectEX", {resetting.Wrap(excel, u"Application"), ObjectPtr()});
    reset.global = std::move(other);  // the last reference: its application goes, too
    trace.Clear();
    Call(environment, operation);
    EXPECT_FALSE(TheGlobals().application);
    EXPECT_THAT(trace.lines(), ElementsAreArray(calls));
  }
}

TEST_F(Environment, HoldsNothingAfterwards) {
  const long live = Object::LiveCount();
  Call(environment, kReport);
  Call(environment, kOrdinary);
  EXPECT_EQ(Object::LiveCount(), live);
}

}  // namespace
}  // namespace qva
