#include "platform/memory/excel/Application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/excel.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

using ApplicationTest = ExcelTest;

TEST_F(ApplicationTest, KeepsItsSwitches) {
  struct Switch {
    std::u16string_view name;
    bool initial;
  };
  for (const Switch& s : {Switch{u"Visible", true},
                          {u"ScreenUpdating", true},
                          {u"DisplayAlerts", true},
                          {u"DisplayFormulaBar", true},
                          {u"DisplayStatusBar", true},
                          {u"EnableEvents", true},
                          {u"CellDragAndDrop", true},
                          {u"EditDirectlyInCell", true},
                          {u"TransitionNavigKeys", false},
                          {u"MoveAfterReturn", true},
                          {u"AskToUpdateLinks", true},
                          {u"CopyObjectsWithCells", true},
                          {u"EnableAnimations", false}}) {
    EXPECT_EQ(Get(application, s.name), Value(s.initial)) << ToUtf8(s.name);
    Put(application, s.name, !s.initial);
    EXPECT_EQ(Get(application, s.name), Value(!s.initial)) << ToUtf8(s.name);
  }
}

TEST_F(ApplicationTest, TakesOnlyTheConstantsOfAProperty) {
  struct Choice {
    std::u16string_view name;
    std::int32_t initial;
    std::int32_t other;
  };
  for (const Choice& c : {Choice{u"Cursor", xlDefault, xlWait},
                          {u"Calculation", xlCalculationAutomatic, xlCalculationManual},
                          {u"ReferenceStyle", xlA1, xlR1C1},
                          {u"DisplayCommentIndicator", xlCommentIndicatorOnly, xlNoIndicator}}) {
    EXPECT_EQ(Get(application, c.name), Value(c.initial)) << ToUtf8(c.name);
    Put(application, c.name, c.other);
    EXPECT_EQ(RaisedBy([&] { Put(application, c.name, 4711); }), 1004) << ToUtf8(c.name);
    EXPECT_EQ(Get(application, c.name), Value(c.other)) << ToUtf8(c.name);
  }
}

TEST_F(ApplicationTest, GetsItsOwnCaptionBack) {
  EXPECT_EQ(Text(application, u"Caption"), u"Microsoft Excel");
  Put(application, u"Caption", u"Ataskaita");
  EXPECT_EQ(Text(application, u"Caption"), u"Ataskaita");
  Put(application, u"Caption", Value());
  EXPECT_EQ(Text(application, u"Caption"), u"Microsoft Excel");
  Put(application, u"Caption", u"Ataskaita");
  Put(application, u"Caption", u"");
  EXPECT_EQ(Text(application, u"Caption"), u"Microsoft Excel");
}

TEST_F(ApplicationTest, HasTheStatusBarUntilATextIsSetAndAfterFalse) {
  EXPECT_EQ(Get(application, u"StatusBar"), Value(false));
  Put(application, u"StatusBar", u"Skaičiuojama");
  EXPECT_EQ(Get(application, u"StatusBar"), Value(u"Skaičiuojama"));
  Put(application, u"StatusBar", u"");
  EXPECT_EQ(Get(application, u"StatusBar"), Value(u""));
  Put(application, u"StatusBar", false);
  EXPECT_EQ(Get(application, u"StatusBar"), Value(false));
}

TEST_F(ApplicationTest, SaysWhatItIs) {
  EXPECT_EQ(Text(application, u"Name"), u"Microsoft Excel");
  EXPECT_EQ(Text(application, u"Version"), u"11.0");
  EXPECT_EQ(Value(application).ToText(), u"Microsoft Excel");
  EXPECT_TRUE(GetObject(application, u"Application") == application);
  EXPECT_EQ(RaisedBy([&] { Get(application, u"NoSuchMember"); }), kUnsupportedMember);
}

TEST_F(ApplicationTest, KnowsWhatIsActive) {
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == workbook);
  EXPECT_TRUE(GetObject(application, u"ActiveSheet") == sheet);
  EXPECT_EQ(Text(GetObject(application, u"ActiveWindow"), u"Caption"), u"Book1");
  EXPECT_EQ(AddressOf(GetObject(application, u"ActiveCell")), u"$A$1");
  const ObjectPtr second = excel->AddWorkbook();
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == second);
  Call(workbook, u"Activate");
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == workbook);
}

TEST_F(ApplicationTest, HasNothingActiveWithoutAWorkbook) {
  Call(workbook, u"Close", {false});
  for (const std::u16string_view member :
       {u"ActiveWorkbook", u"ActiveSheet", u"ActiveWindow", u"ActiveCell", u"Selection", u"ThisWorkbook"}) {
    EXPECT_TRUE(Get(application, member).IsNothing()) << ToUtf8(member);
  }
  EXPECT_EQ(RaisedBy([&] { Get(application, u"Range", {u"A1"}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Get(application, u"Sheets"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Get(application, u"Names"); }), 1004);
}

TEST_F(ApplicationTest, FindsCellsOfTheActiveSheetAndByNameAnywhereInTheWorkbook) {
  EXPECT_EQ(AddressOf(GetObject(application, u"Range", {u"b2:c3"})), u"$B$2:$C$3");
  EXPECT_EQ(AddressOf(GetObject(application, u"Range", {u"A1", u"C3"})), u"$A$1:$C$3");
  Call(GetObject(workbook, u"Names"), u"Add", {u"Toli", u"=Sheet2!$D$4"});
  const ObjectPtr far = GetObject(application, u"Range", {u"toli"});
  EXPECT_EQ(AddressOf(far), u"$D$4");
  EXPECT_EQ(Text(GetObject(far, u"Worksheet"), u"Name"), u"Sheet2");
  EXPECT_EQ(RaisedBy([&] { Get(application, u"Range", {u"nosuch"}); }), 1004);
}

TEST_F(ApplicationTest, ReachesSheetsAndNamesOfTheActiveWorkbook) {
  EXPECT_TRUE(GetObject(application, u"Sheets", {u"SHEET1"}) == sheet);
  EXPECT_TRUE(GetObject(application, u"Worksheets", {1}) == sheet);
  Put(Range(u"A1"), u"Name", u"Pradžia");
  EXPECT_EQ(Text(GetObject(application, u"Names", {1}), u"Name"), u"Pradžia");
}

TEST_F(ApplicationTest, RunsTheMacrosOfTheFirstWorkbookUnlessToldOtherwise) {
  const ObjectPtr second = excel->AddWorkbook();
  EXPECT_TRUE(GetObject(application, u"ThisWorkbook") == workbook);
  excel->SetThisWorkbook(second);
  EXPECT_TRUE(GetObject(application, u"ThisWorkbook") == second);
  excel->SetThisWorkbook(nullptr);
  EXPECT_TRUE(GetObject(application, u"ThisWorkbook") == workbook);
}

TEST_F(ApplicationTest, RemembersKeyBindings) {
  EXPECT_EQ(excel->KeyBinding(u"{F1}"), std::nullopt);
  Call(application, u"OnKey", {u"{F1}", u"Book1!cmdHelp"});
  Call(application, u"OnKey", {u"{F3}", u""});
  Call(application, u"OnKey", {u"^{s}", u"a"});
  Call(application, u"OnKey", {u"^{S}", u"b"});
  EXPECT_EQ(excel->KeyBinding(u"{F1}"), u"Book1!cmdHelp");
  EXPECT_EQ(excel->KeyBinding(u"{F3}"), u"") << "the key does nothing";
  EXPECT_EQ(excel->KeyBindings().size(), 4u) << "letter case tells keys apart";
  Call(application, u"OnKey", {u"{F1}"});
  EXPECT_EQ(excel->KeyBinding(u"{F1}"), std::nullopt) << "Excel's own meaning is back";
}

TEST_F(ApplicationTest, RunsTheMacroOfAKeyThatIsPressed) {
  int runs = 0;
  excel->DefineMacro(u"Book1!cmdHelp", [&] { ++runs; });
  EXPECT_FALSE(excel->Press(u"{F1}")) << "Excel's own help";
  Call(application, u"OnKey", {u"{F1}", u"Book1!cmdHelp"});
  Call(application, u"OnKey", {u"{F3}", u""});
  EXPECT_TRUE(excel->Press(u"{F1}"));
  Call(application, u"SendKeys", {u"{F1}"});
  EXPECT_FALSE(excel->Press(u"{F3}"));
  EXPECT_EQ(runs, 2);
  EXPECT_THAT(excel->MacrosRun(), testing::ElementsAre(u"Book1!cmdHelp", u"Book1!cmdHelp"));
}

TEST_F(ApplicationTest, RemembersTheHelpThatItShowed) {
  Call(application, u"Help", {u"a.chm", 7});
  Call(application, u"Help");
  EXPECT_THAT(excel->HelpThatWasShown(), testing::ElementsAre(HelpShown{u"a.chm", 7}, HelpShown{u"", 0}));
}

TEST_F(ApplicationTest, RemembersQuitAndKeepsItsWorkbooks) {
  EXPECT_FALSE(excel->HasQuit());
  Call(application, u"Quit");
  EXPECT_TRUE(excel->HasQuit());
  EXPECT_EQ(Get(GetObject(application, u"Workbooks"), u"Count"), Value(1));
}

TEST_F(ApplicationTest, ServesTheFacades) {
  const qva::excel::Application facade(application);
  EXPECT_TRUE(facade.Visible());
  facade.SetScreenUpdating(false);
  EXPECT_EQ(Get(application, u"ScreenUpdating"), Value(false));
  facade.ActiveWindow().SetCaption(u"Balansas");
  EXPECT_EQ(Text(GetObject(application, u"ActiveWindow"), u"Caption"), u"Balansas");
}

}  // namespace
}  // namespace qva::memory
