// How a toolbar comes of a settings sheet.
#include "tests/excelui/toolbar_test.h"

namespace qva {
namespace {

using testing::Contains;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

class ToolbarBuilding : public ToolbarTest {
 protected:
  /// The calls that have to do with the status bar.
  std::vector<std::string> BarCalls() const {
    std::vector<std::string> lines = trace.lines();
    std::erase_if(lines, [](const std::string& line) { return line.find("StatusBar") == line.npos; });
    return lines;
  }
};

/// What Init asks for where there is no bar yet: a button with a face of Excel's, and one with a picture.
const std::vector<std::string> kInitCalls = {
    R"~(Sheet.Range("nTotalButtons"))~",
    R"~(Sheet.Range("nTotalButtons").Value -> 2)~",
    R"~(Book.Name -> "Book1")~",
    R"~(Sheet.Range("Button_ID"))~",
    R"~(Sheet.Range("Button_ID").Count -> 1)~",
    R"~(Sheet.Range("Button_ID").Resize(3))~",
    R"~(Sheet.Range("Button_ID").Resize(3).Value -> Array("Antraštė", 1, 1))~",
    R"~(Sheet.Range("Button_FaceID"))~",
    R"~(Sheet.Range("Button_FaceID").Count -> 1)~",
    R"~(Sheet.Range("Button_FaceID").Resize(3))~",
    R"~(Sheet.Range("Button_FaceID").Resize(3).Value -> Array("Antraštė", 59, 0))~",
    R"~(Sheet.Range("Button_Captions"))~",
    R"~(Sheet.Range("Button_Captions").Count -> 1)~",
    R"~(Sheet.Range("Button_Captions").Resize(3))~",
    R"~(Sheet.Range("Button_Captions").Resize(3).Value -> Array("Antraštė", "Saugoti", "Piešinys"))~",
    R"~(Sheet.Range("Button_Pictures"))~",
    R"~(Sheet.Range("Button_Pictures").Count -> 1)~",
    R"~(Sheet.Range("Button_Pictures").Resize(3))~",
    R"~(Sheet.Range("Button_Pictures").Resize(3).Value -> Array("Antraštė", Empty, "Picture02"))~",
    R"~(Sheet.Range("Button_Tag"))~",
    R"~(Sheet.Range("Button_Tag").Count -> 1)~",
    R"~(Sheet.Range("Button_Tag").Resize(3))~",
    R"~(Sheet.Range("Button_Tag").Resize(3).Value -> Array("Antraštė", "TagSave", Empty))~",
    R"~(Sheet.Range("Button_TooltipText"))~",
    R"~(Sheet.Range("Button_TooltipText").Count -> 1)~",
    R"~(Sheet.Range("Button_TooltipText").Resize(3))~",
    R"~(Sheet.Range("Button_TooltipText").Resize(3).Value -> Array("Antraštė", "Užuomina", "Užuomina"))~",
    R"~(Sheet.Range("Button_OnKey"))~",
    R"~(Sheet.Range("Button_OnKey").Count -> 1)~",
    R"~(Sheet.Range("Button_OnKey").Resize(3))~",
    R"~(Sheet.Range("Button_OnKey").Resize(3).Value -> Array("Antraštė", "^{s}", Empty))~",
    R"~(Sheet.Range("Button_Visible"))~",
    R"~(Sheet.Range("Button_Visible").Count -> 1)~",
    R"~(Sheet.Range("Button_Visible").Resize(3))~",
    R"~(Sheet.Range("Button_Visible").Resize(3).Value -> Array("Antraštė", True, False))~",
    R"~(Sheet.Range("Button_BeginGroup"))~",
    R"~(Sheet.Range("Button_BeginGroup").Count -> 1)~",
    R"~(Sheet.Range("Button_BeginGroup").Resize(3))~",
    R"~(Sheet.Range("Button_BeginGroup").Resize(3).Value -> Array("Antraštė", False, True))~",
    R"~(Sheet.Range("Button_OnAction"))~",
    R"~(Sheet.Range("Button_OnAction").Count -> 1)~",
    R"~(Sheet.Range("Button_OnAction").Resize(3))~",
    R"~(Sheet.Range("Button_OnAction").Resize(3).Value -> Array("Antraštė", "Veiksmas", Empty))~",
    R"~(Sheet.Range("sToolBarCaption"))~",
    R"~(Sheet.Range("sToolBarCaption").Value -> "Ataskaita")~",
    R"~(Sheet.Range("bMenuBar"))~",
    R"~(Sheet.Range("bMenuBar").Value -> False)~",
    R"~(Application.CommandBars("Ataskaita(Book1)") ! 5 Invalid procedure call or argument)~",
    R"~(Application.CommandBars)~",
    R"~(Application.CommandBars.Add(Name:="Ataskaita(Book1)", MenuBar:=False, Temporary:=True))~",
    R"~(BAR.Visible = False)~",
    R"~(Application.CommandBars("Ataskaita(Book1)"))~",
    R"~(BAR.Position = 4)~",
    R"~(BAR.Controls)~",
    R"~(BAR.Name -> "Ataskaita(Book1)")~",
    R"~(BAR.Controls.Add(1, 1, "Ataskaita(Book1)", 1, True))~",
    R"~(BAR.Controls.Add(1, 1, "Ataskaita(Book1)", 2, True))~",
    R"~(BAR.Controls(1))~",
    R"~(BAR.Controls(1).Style = 1)~",
    R"~(BAR.Controls(1).FaceId = 59)~",
    R"~(BAR.Controls(1).Caption = "Saugoti")~",
    R"~(BAR.Controls(1).ToolTipText = "Užuomina")~",
    R"~(BAR.Controls(1).Tag = "TagSave")~",
    R"~(BAR.Controls(1).Visible = True)~",
    R"~(BAR.Controls(1).BeginGroup = False)~",
    R"~(BAR.Controls(1).OnAction = "Book1!Veiksmas")~",
    R"~(BAR.Controls(2))~",
    R"~(BAR.Controls(2).Style = 1)~",
    R"~(Sheet.Shapes("Picture02"))~",
    R"~(Sheet.Shapes("Picture02").Copy())~",
    R"~(BAR.Controls(2).PasteFace())~",
    R"~(BAR.Controls(2).Caption = "Piešinys")~",
    R"~(BAR.Controls(2).ToolTipText = "Užuomina")~",
    R"~(BAR.Controls(2).Tag = "")~",
    R"~(BAR.Controls(2).Visible = False)~",
    R"~(BAR.Controls(2).BeginGroup = True)~",
    R"~(BAR.Controls(2).OnAction = "")~",
};

TEST_F(ToolbarBuilding, ReadsTheSheetThenMakesTheBarThenTheControlsThenTheirProperties) {
  AddShape(u"Picture02");
  Describe({{.caption = u"Saugoti", .tag = u"TagSave", .key = u"^{s}"},
            {.face_id = 0,
             .caption = u"Piešinys",
             .picture = u"Picture02",
             .visible = false,
             .begin_group = true,
             .action = {}}});
  trace.Clear();
  toolbar = NewToolbar();
  std::vector<std::string> calls = Shortened(trace.lines());
  ASSERT_GT(calls.size(), kInitCalls.size()) << "the default buttons come last";
  EXPECT_TRUE(calls[kInitCalls.size()].find("843") != std::string::npos) << calls[kInitCalls.size()];
  calls.resize(kInitCalls.size());
  EXPECT_THAT(calls, ElementsAreArray(kInitCalls));
}

TEST_F(ToolbarBuilding, MakesAHiddenFloatingBarThatExcelForgetsWhenItEnds) {
  Build(Buttons(1));
  EXPECT_EQ(Get(Bar(), u"Visible"), Value(false));
  EXPECT_EQ(Get(Bar(), u"Enabled"), Value(true));
  EXPECT_EQ(Get(Bar(), u"Position"), Value(std::int32_t{msoBarFloating}));
  EXPECT_EQ(Get(Bar(), u"Type"), Value(0));
  EXPECT_EQ(excel->KeyBindings().size(), 0u) << "no key is bound before the bar is shown";
  for (std::int32_t i = 1; i <= 1 + kDefaults; ++i) EXPECT_EQ(Of(i, u"Parameter"), Value(kBar)) << i;
  excel->Restart();
  EXPECT_FALSE(HasBar());
}

TEST_F(ToolbarBuilding, TheSheetMayAskForAMenuBar) {
  Describe(Buttons(1), true);
  toolbar = NewToolbar();
  EXPECT_EQ(Get(Bar(), u"Type"), Value(1));
}

TEST_F(ToolbarBuilding, WithoutButtonsOnTheSheetTheBarHoldsTheSevenDefaultButtons) {
  DescribeCells(0);  // the columns are not even there
  toolbar = NewToolbar();
  EXPECT_EQ(ControlCount(), kDefaults);
  EXPECT_EQ(Of(1, u"Tag"), Value(u"TagComment"));
}

TEST_F(ToolbarBuilding, AnEmptyNumberOfButtonsIsNone) {
  Describe(Buttons(1));
  Call(Cell(1, 1), u"ClearContents");
  toolbar = NewToolbar();
  EXPECT_EQ(ControlCount(), kDefaults);
}

TEST_F(ToolbarBuilding, EachNamedCellThatIsMissingMeansNoBar) {
  std::vector<std::u16string_view> names(std::begin(kColumnNames), std::end(kColumnNames));
  names.insert(names.end(), std::begin(kCellNames), std::end(kCellNames));
  for (const std::u16string_view name : names) {
    Describe(Buttons(1));
    Call(GetObject(GetObject(workbook, u"Names"), u"Item", {name}), u"Delete");
    toolbar = NewToolbar();
    EXPECT_EQ(BarCount(), 3) << ToUtf8(name);
    EXPECT_EQ(Result(u"TotalButtons", {}), 0) << ToUtf8(name);
    EXPECT_EQ(Result(u"VisibleButton", {1, true}), 1) << ToUtf8(name);
  }
}

TEST_F(ToolbarBuilding, AFailedReadingHasReadTheButtonsBeforeItAndTheirKeysGoBackToExcel) {
  const auto without = [this](std::u16string_view name) {
    return [this, name] { Call(GetObject(GetObject(workbook, u"Names"), u"Item", {name}), u"Delete"); };
  };
  const auto with = [this](std::int32_t row, std::int32_t column, Value value) {
    return [=, this] { Put(Cell(row, column), u"Value", value); };
  };
  const std::string kept = "Kitas", released = "Excel";
  struct Failure {
    std::function<void()> spoil;
    std::string first, second;
  };
  const Failure failures[] = {{without(u"Button_Visible"), released, kept},
                              {without(u"Button_OnKey"), kept, kept},
                              {without(u"Button_OnAction"), released, kept},
                              {without(u"sToolBarCaption"), released, released},
                              {with(5, 1, u"du"), released, kept},
                              {with(5, 7, u"=NA()"), released, kept},
                              {with(5, 8, u"ne"), released, released},
                              {with(4, 6, u"=NA()"), kept, kept},
                              {with(4, 8, u"taip"), released, kept},
                              // The workbook's name, which the first button's macro needs.
                              {[this] { failure.Reset(3); }, released, kept}};
  for (std::size_t i = 0; i < std::size(failures); ++i) {
    SCOPED_TRACE(i);
    Call(excel, u"OnKey", {u"^{b}", u"Kitas"});
    Call(excel, u"OnKey", {u"^{k}", u"Kitas"});
    Describe({{.key = u"^{b}"}, {.key = u"^{k}"}});
    failures[i].spoil();
    toolbar = NewToolbar();
    failure.Reset(0);
    EXPECT_EQ(BarCount(), 3);
    EXPECT_EQ(Key(u"^{b}"), "Kitas");
    EXPECT_EQ(Key(u"^{k}"), "Kitas");
    toolbar.reset();
    EXPECT_EQ(Key(u"^{b}"), failures[i].first);
    EXPECT_EQ(Key(u"^{k}"), failures[i].second);
  }
}

TEST_F(ToolbarBuilding, ACellThatIsNotWhatItShouldBeMeansNoBar) {
  struct Wrong {
    std::int32_t row, column;
    Value value;
  };
  for (const Wrong& wrong : {Wrong{1, 1, 256},
                             {1, 1, -1},
                             {1, 1, u"du"},
                             {1, 3, u"gal"},
                             {4, 1, u"vienas"},
                             {4, 2, 3e9},
                             {4, 3, u"=1/0"},
                             {4, 8, u"taip"},
                             {5, 9, u"ne"},
                             {5, 10, u"=NA()"}}) {
    Describe(Buttons(2));
    Put(Cell(wrong.row, wrong.column), u"Value", wrong.value);
    toolbar = NewToolbar();
    EXPECT_EQ(BarCount(), 3) << wrong.row << ", " << wrong.column;
  }
}

TEST_F(ToolbarBuilding, AHeaderOfSeveralCellsMeansNoBar) {
  Describe(Buttons(1));
  for (const std::u16string_view address : {u"A3:B3", u"A3:A4"}) {
    Name(GetObject(sheet, u"Range", {address}), u"Button_ID");
    toolbar = NewToolbar();
    EXPECT_EQ(BarCount(), 3) << ToUtf8(address);
  }
}

TEST_F(ToolbarBuilding, AColumnOfMoreCellsThanItWasAskedForMeansNoBar) {
  Describe(Buttons(1));
  const Value three_cells = GetObject(sheet, u"Range", {u"A3:A5"});
  const auto answer = [&](std::u16string_view member) {
    return member == u"Resize" ? std::optional(three_cells) : std::nullopt;
  };
  observed_sheet = MakeRef<OtherwiseAnswered>(sheet, answer);
  toolbar = NewToolbar();
  EXPECT_EQ(BarCount(), 3);
}

TEST_F(ToolbarBuilding, WithoutTheWorkbooksNameThereIsNoBarAlsoWhereNoButtonHasAMacro) {
  Describe({{.action = {}}});
  // The number of buttons, in two calls, then the name.
  failure.Reset(3);
  toolbar = NewToolbar();
  EXPECT_TRUE(failure.has_failed());
  failure.Reset(0);
  EXPECT_EQ(BarCount(), 3);
}

TEST_F(ToolbarBuilding, ABarThatCouldNotBeMadeReadyIsForgotten) {
  DescribeCells(0);
  toolbar = LibraryTest::Create(u"CToolbar");
  // Seven calls read the settings; the bar is looked for, and added in two calls; then it is hidden.
  failure.Reset(7 + 1 + 2 + 1);
  EXPECT_EQ(RaisedBy([&] {
              Call(toolbar, u"Init", {observed_workbook, observed_sheet});
            }),
            kAutomationFailed);
  failure.Reset(0);
  EXPECT_THAT(trace.Text(), testing::HasSubstr(".Visible = False ! 440"));
  EXPECT_EQ(BarCount(), 3);
  EXPECT_EQ(Get(toolbar, u"ToolbarID"), Value(0));
  EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{0}));
}

TEST_F(ToolbarBuilding, CellsStandForTheirTypesAsInAMacro) {
  Build(
      {{.id = u"1", .face_id = 58.5, .caption = 12, .tooltip = true, .visible = 1, .begin_group = u"True"}});
  EXPECT_EQ(Of(1, u"FaceId"), Value(58)) << "half to even";
  EXPECT_EQ(Of(1, u"Caption"), Value(u"12"));
  EXPECT_EQ(Of(1, u"ToolTipText"), Value(u"True"));
  EXPECT_EQ(Of(1, u"Visible"), Value(true));
  EXPECT_EQ(Of(1, u"BeginGroup"), Value(true));
}

TEST_F(ToolbarBuilding, FitsThe248ButtonsThatLeaveRoomForAllDefaultButtons) {
  Build(Buttons(248));
  EXPECT_EQ(ControlCount(), 255);
  EXPECT_EQ(Of(255, u"Tag"), Value(u"TagHelp"));
}

TEST_F(ToolbarBuilding, Fits254ButtonsAndTheFirstDefaultButtonAlone) {
  Build(Buttons(254));
  EXPECT_EQ(ControlCount(), 255);
  EXPECT_EQ(Of(254, u"Tag"), Value(u""));
  EXPECT_EQ(Of(255, u"Tag"), Value(u"TagComment"));
  EXPECT_EQ(Result(u"TotalButtons", {}), 255);
}

TEST_F(ToolbarBuilding, With255ButtonsCountingOverflowsAndThereIsNoBar) {
  std::vector<TestButton> buttons = Buttons(255);
  buttons.front().key = u"^{b}";
  buttons.back().key = u"^{k}";
  Call(excel, u"OnKey", {u"^{b}", u"Kitas"});
  Call(excel, u"OnKey", {u"^{k}", u"Kitas"});
  Build(buttons);
  EXPECT_FALSE(HasBar());
  EXPECT_EQ(Result(u"TotalButtons", {}), 0);
  toolbar.reset();
  EXPECT_EQ(excel->KeyBindings().size(), 0u) << "it overflows behind the last button";
}

TEST_F(ToolbarBuilding, TheWorkbooksNameStandsInCaptionAndMacros) {
  platform.files.SetFolder(u"C:\\Ataskaitos");
  Call(workbook, u"SaveAs", {u"C:\\Ataskaitos\\Balansas.xls"});
  Describe({{.key = u"^{b}"}});
  toolbar = NewToolbar();
  EXPECT_TRUE(HasBar(u"ataskaita(balansas.xls)"));
  const ObjectPtr button = GetObject(Bar(u"Ataskaita(Balansas.xls)"), u"Controls", {1});
  EXPECT_EQ(Get(button, u"OnAction"), Value(u"Balansas.xls!Veiksmas"));
}

TEST_F(ToolbarBuilding, AButtonWithoutAMacroGetsNone) {
  Build({{.action = {}}});
  EXPECT_EQ(Of(1, u"OnAction"), Value(u""));
  Call(Control(1), u"Execute");
  EXPECT_THAT(excel->MacrosRun(), SizeIs(0));
}

TEST_F(ToolbarBuilding, AButtonWithoutAFaceIdTakesThePictureOfItsShape) {
  AddShape(u"Picture02");
  Build({{.face_id = 0, .picture = u"picture02"}, {}});
  EXPECT_EQ(PastedFace(1), u"Picture02");
  EXPECT_EQ(Of(1, u"FaceId"), Value(0));
  EXPECT_EQ(PastedFace(2), u"");
  EXPECT_EQ(Of(2, u"FaceId"), Value(59));
}

TEST_F(ToolbarBuilding, AMissingShapeIsSkippedAndTheButtonGetsWhatIsOnTheClipboard) {
  AddShape(u"Picture02");
  Build({{.face_id = 0, .picture = u"Picture01"},
         {.face_id = 0, .picture = u"Picture02"},
         {.face_id = 0, .picture = u"Picture03"}});
  EXPECT_EQ(PastedFace(1), u"") << "there was nothing on the clipboard";
  EXPECT_EQ(PastedFace(2), u"Picture02");
  EXPECT_EQ(PastedFace(3), u"Picture02") << "the picture before";
  EXPECT_EQ(Of(1, u"Caption"), Value(u"Mygtukas")) << "and the rest goes on";
}

TEST_F(ToolbarBuilding, BuiltInControlsGetTheSheetsCaptionAndFace) {
  Build({{.id = 109, .face_id = 59, .caption = u"Peržiūra", .action = {}}});
  EXPECT_EQ(Of(1, u"Id"), Value(109));
  EXPECT_EQ(Of(1, u"Caption"), Value(u"Peržiūra"));
  EXPECT_EQ(Of(1, u"FaceId"), Value(59));
}

TEST_F(ToolbarBuilding, AControlThatExcelDoesNotHaveIsSkippedWithAllThatWouldStandBehindIt) {
  Build({{.caption = u"Pirmas"}, {.id = 77777, .caption = u"Antras"}, {.caption = u"Trečias"}});
  // The third one has no place in front of which it could stand, and neither have the default buttons.
  EXPECT_EQ(ControlCount(), 1);
  EXPECT_EQ(Of(1, u"Caption"), Value(u"Pirmas"));
}

TEST_F(ToolbarBuilding, WithoutTheHostsTextsTheBarHasNoDefaultButtons) {
  host.texts.erase(845);
  Build(Buttons(2));
  EXPECT_EQ(ControlCount(), 2);
  EXPECT_EQ(RaisedBy([&] { Call(toolbar, u"iHelp"); }), kObjectNotSet);
}

TEST_F(ToolbarBuilding, UsesABarThatIsThereAsItIsAndAddsDefaultButtonsToIt) {
  Build({{.caption = u"Pirmas"}});
  const ObjectPtr first = toolbar;
  Put(Cell(4, 3), u"Value", u"Kitaip");
  toolbar = NewToolbar();
  EXPECT_EQ(BarCount(), 4);
  EXPECT_EQ(ControlCount(), 1 + 2 * kDefaults);
  EXPECT_EQ(Of(1, u"Caption"), Value(u"Pirmas")) << "its buttons are not made again";
  EXPECT_EQ(Of(2, u"Tag"), Value(u"TagComment"));
  EXPECT_EQ(Of(9, u"Tag"), Value(u"TagComment"));
  EXPECT_EQ(Get(toolbar, u"IDCollection"), Value(std::uint8_t{4})) << "Excel's index of the bar, so far";
  EXPECT_EQ(Get(first, u"IDCollection"), Value(std::uint8_t{0}));
  EXPECT_EQ(RaisedBy([&] { Call(GetObject(toolbar, u"CmdEvent"), u"cmdComment"); }), kObjectNotSet)
      << "the commands of the second one know no bar";
  EXPECT_EQ(RaisedBy([&] { Call(GetObject(first, u"CmdEvent"), u"cmdComment"); }), 0);
}

TEST_F(ToolbarBuilding, ASecondInitAddsNoDefaultButtonsAgain) {
  Build(Buttons(1));
  Call(toolbar, u"Init", {observed_workbook, observed_sheet});
  EXPECT_EQ(ControlCount(), 1 + kDefaults);
}

TEST_F(ToolbarBuilding, EveryInitTakesTheIdOfTheCollectionAway) {
  Build(Buttons(1));
  Put(toolbar, u"IDCollection", 200);
  Call(toolbar, u"Init", {observed_workbook, observed_sheet});
  EXPECT_EQ(Get(toolbar, u"IDCollection").ToInt32(), Get(toolbar, u"ToolbarID").ToInt32())
      << "Excel's index of the bar that is there";
  Put(toolbar, u"IDCollection", 200);
  Call(toolbar, u"Init", {observed_workbook, ObjectPtr()});
  EXPECT_EQ(Get(toolbar, u"IDCollection"), Value(std::uint8_t{0})) << "a sheet that cannot be read";
}

TEST_F(ToolbarBuilding, ErrorsWhileDefaultButtonsComeToABarThatIsThereReachTheCaller) {
  Build(Buttons(1));
  const ObjectPtr first = toolbar;
  Put(Bar(), u"Protection", std::int32_t{msoBarNoCustomize});
  EXPECT_EQ(RaisedBy([&] { NewToolbar(); }), -2147467259);
}

TEST_F(ToolbarBuilding, WithoutExcelTheCallerGetsAnError) {
  Describe(Buttons(1));
  global.reset();
  EXPECT_EQ(RaisedBy([&] { NewToolbar(); }), kObjectNotSet);
}

TEST_F(ToolbarBuilding, WithoutASheetThereIsNoBar) {
  toolbar = LibraryTest::Create(u"CToolbar");
  Call(toolbar, u"Init", {observed_workbook, ObjectPtr()});
  EXPECT_EQ(BarCount(), 3);
  EXPECT_NE(Get(toolbar, u"CmdEvent"), Nothing());
}

TEST_F(ToolbarBuilding, IsAReportToolbarForTheReportState) {
  Build(Buttons(1));
  Put(toolbar, u"VisibleToolbar", true);
  Call(global, u"InitEnvironment");
  Call(GetObject(global, u"oEnvironment"), u"SetDefaultAppState");
  EXPECT_EQ(Get(Bar(), u"Visible"), Value(true));
  EXPECT_EQ(Get(Bar(u"Standard"), u"Visible"), Value(false));
  Call(global, u"ResetEnvironment");
}

TEST_F(ToolbarBuilding, TellsInTheStatusBarWhereItTakesLong) {
  call_time.PerCall(std::chrono::milliseconds(2));
  Build(Buttons(20));
  EXPECT_THAT(BarCalls(), IsEmpty()) << "a second has not passed";
  toolbar.reset();
  call_time.PerCall(std::chrono::milliseconds(50));
  toolbar = NewToolbar();
  EXPECT_THAT(BarCalls(), Contains("Application.StatusBar = \"Kuriama įrankių juosta\""));
  EXPECT_THAT(BarCalls(), Contains("Application.StatusBar = \"Kuriama įrankių juosta: 11 iš 20\""));
  EXPECT_EQ(Get(excel, u"StatusBar"), Value(false));
}

TEST_F(ToolbarBuilding, CostsTheSameForEachButton) {
  const auto cost = [&](int buttons) {
    Describe(Buttons(buttons));
    count.Reset();
    const ObjectPtr built = NewToolbar();
    return count.calls();
  };
  const long none = cost(0), one = cost(1), two = cost(2), twenty = cost(20), most = cost(248);
  EXPECT_EQ(two - one, 10) << "a control, its place on the bar and eight properties";
  EXPECT_EQ(twenty - one, 19 * 10);
  EXPECT_EQ(most - one, 247 * 10);
  EXPECT_EQ(none, 81) << "single cells, the bar and its default buttons";
  EXPECT_EQ(one - none, 10 + 40 + 2) << "the ten columns, the bar's controls and its name, once";
}

}  // namespace
}  // namespace qva
