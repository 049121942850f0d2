#include "platform/memory/excel/Worksheet.h"

#include <gtest/gtest.h>

#include "platform/excel.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class WorksheetTest : public ExcelTest {
 protected:
  ObjectPtr sheets = GetObject(workbook, u"Sheets");
};

TEST_F(WorksheetTest, IsFoundByPositionAndByNameInAnyLetterCase) {
  EXPECT_TRUE(GetObject(sheets, u"Item", {1}) == sheet);
  EXPECT_TRUE(GetObject(sheets, u"Item", {u"SHEET1"}) == sheet);
  for (const Value& index : {Value(0), Value(4), Value(-1), Value(u"Nėra")}) {
    EXPECT_EQ(RaisedBy([&] { Get(sheets, u"Item", {index}); }), kSubscriptOutOfRange);
  }
}

TEST_F(WorksheetTest, KnowsItsPlace) {
  EXPECT_EQ(Text(sheet, u"Name"), u"Sheet1");
  EXPECT_EQ(Get(sheet, u"Index"), Value(1));
  EXPECT_EQ(Get(GetObject(sheets, u"Item", {3}), u"Index"), Value(3));
  EXPECT_TRUE(GetObject(sheet, u"Parent") == workbook);
  EXPECT_TRUE(GetObject(sheet, u"Application") == application);
}

TEST_F(WorksheetTest, IsAddedWhereItIsWantedAndBecomesActive) {
  const ObjectPtr in_front = Call(sheets, u"Add").ToObject();
  EXPECT_EQ(Get(in_front, u"Index"), Value(1));
  EXPECT_EQ(Text(in_front, u"Name"), u"Sheet4");
  EXPECT_TRUE(GetObject(workbook, u"ActiveSheet") == in_front);
  const ObjectPtr behind = Call(sheets, u"Add", Arguments().Named(u"After", sheet)).ToObject();
  EXPECT_EQ(Get(behind, u"Index"), Value(3));
  const ObjectPtr before = Call(sheets, u"Add", {sheet}).ToObject();
  EXPECT_EQ(Get(before, u"Index"), Value(2));
  EXPECT_EQ(Get(sheets, u"Count"), Value(6));
  EXPECT_EQ(RaisedBy([&] { Call(sheets, u"Add", {workbook}); }), kTypeMismatch);
}

TEST_F(WorksheetTest, TakesANewNameWithTheFormulasThatMentionIt) {
  Set(u"A1", 5);
  Put(Range(u"A1"), u"Name", u"Metai");
  const ObjectPtr second = GetObject(sheets, u"Item", {2});
  const ObjectPtr cell = GetObject(second, u"Range", {u"A1"});
  Put(cell, u"Value", u"=Sheet1!A1+Metai");
  Put(sheet, u"Name", u"Ketvirčio duomenys");
  EXPECT_EQ(Text(sheet, u"Name"), u"Ketvirčio duomenys");
  EXPECT_EQ(Get(cell, u"Value"), Value(10.0));
  EXPECT_EQ(Get(cell, u"Formula"), Value(u"='Ketvirčio duomenys'!A1+Metai"));
  EXPECT_EQ(Text(GetObject(workbook, u"Names", {1}), u"RefersTo"), u"='Ketvirčio duomenys'!$A$1");
}

TEST_F(WorksheetTest, RefusesNamesThatExcelRefuses) {
  for (const char16_t* name : {u"", u"a/b", u"a\\b", u"a?b", u"a*b", u"a[b", u"a]b", u"a:b", u"SHEET2",
                               u"12345678901234567890123456789012"}) {
    EXPECT_EQ(RaisedBy([&] { Put(sheet, u"Name", name); }), 1004) << ToUtf8(name);
  }
  Put(sheet, u"Name", u"SHEET1");
  EXPECT_EQ(Text(sheet, u"Name"), u"SHEET1") << "its own name in another letter case";
}

TEST_F(WorksheetTest, IsHiddenAndShown) {
  EXPECT_EQ(Get(sheet, u"Visible"), Value(std::int32_t{xlSheetVisible}));
  Put(sheet, u"Visible", false);
  EXPECT_EQ(Get(sheet, u"Visible"), Value(std::int32_t{xlSheetHidden}));
  EXPECT_EQ(Text(GetObject(workbook, u"ActiveSheet"), u"Name"), u"Sheet2");
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"Activate"); }), 1004);
  Put(sheet, u"Visible", std::int32_t{xlSheetVeryHidden});
  EXPECT_EQ(Get(sheet, u"Visible"), Value(std::int32_t{xlSheetVeryHidden}));
  EXPECT_EQ(RaisedBy([&] { Put(sheet, u"Visible", 5); }), 1004);
  Put(sheet, u"Visible", true);
  EXPECT_EQ(Get(sheet, u"Visible"), Value(std::int32_t{xlSheetVisible}));
}

TEST_F(WorksheetTest, StaysVisibleAsTheLastOne) {
  Put(GetObject(sheets, u"Item", {2}), u"Visible", false);
  Put(GetObject(sheets, u"Item", {3}), u"Visible", false);
  EXPECT_EQ(RaisedBy([&] { Put(sheet, u"Visible", false); }), 1004);
  EXPECT_EQ(Get(sheet, u"Visible"), Value(std::int32_t{xlSheetVisible}));
}

TEST_F(WorksheetTest, BecomesActiveWithItsWorkbook) {
  const ObjectPtr second = GetObject(sheets, u"Item", {2});
  excel->AddWorkbook();
  Call(second, u"Activate");
  EXPECT_TRUE(GetObject(application, u"ActiveSheet") == second);
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == workbook);
}

TEST_F(WorksheetTest, FindsItsCells) {
  EXPECT_EQ(AddressOf(Range(u"B2:C3")), u"$B$2:$C$3");
  EXPECT_EQ(AddressOf(Range(u"Sheet1!B2")), u"$B$2");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Range", {u"A1", u"C3"})), u"$A$1:$C$3");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Range", {Range(u"B5"), Range(u"C2:D3")})), u"$B$2:$D$5");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Cells")), u"$1:$65536");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Cells", {2, 3})), u"$C$2");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Cells", {2, u"IV"})), u"$IV$2");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Cells", {257})), u"$A$2") << "counted along the rows";
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Rows", {3})), u"$3:$3");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Columns", {u"C"})), u"$C:$C");
}

TEST_F(WorksheetTest, RefusesWhatMeansNoCellsOfIts) {
  Call(GetObject(workbook, u"Names"), u"Add", {u"Toli", u"=Sheet2!$A$1"});
  Call(GetObject(workbook, u"Names"), u"Add", {u"Skaičius", 5});
  for (const char16_t* text :
       {u"Nėra", u"A0", u"IW1", u"Sheet2!A1", u"Toli", u"Skaičius", u"", u"A1+B1", u"A1,Nėra"}) {
    EXPECT_EQ(RaisedBy([&] { Range(text); }), 1004) << ToUtf8(text);
  }
  EXPECT_EQ(RaisedBy([&] { GetObject(sheet, u"Cells", {0, 1}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { GetObject(sheet, u"Cells", {65537, 1}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { GetObject(sheet, u"Cells", {1, 257}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { GetObject(sheet, u"Range", {sheet}); }), 1004);
}

TEST_F(WorksheetTest, KnowsWhichCellsAreUsed) {
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$A$1");
  Set(u"C5", 1);
  Set(u"E2", 2);
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$C$2:$E$5");
  Set(u"C5", u"");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$E$2");
}

TEST_F(WorksheetTest, UsesCellsThatHaveAFormatOfTheirOwn) {
  Put(GetObject(Range(u"B1"), u"Font"), u"ColorIndex", 5);
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$B$1");
  Set(u"C4", 1);
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$B$1:$C$4");
  Put(GetObject(Range(u"E2:F3"), u"Interior"), u"ColorIndex", 3);
  Set(u"C4", Value());
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$B$1:$F$3");
  Put(GetObject(Range(u"E2:F3"), u"Interior"), u"ColorIndex", std::int32_t{xlColorIndexNone});
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$B$1:$F$3") << "also when it is lost again";
  Put(GetObject(sheet, u"Columns", {10}), u"Locked", false);
  Put(GetObject(sheet, u"Rows", {10}), u"NumberFormat", u"@");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$B$1:$F$3") << "whole columns and rows do not count";
}

TEST_F(WorksheetTest, HasRoomForOneMoreColumnBesideWhatIsUsed) {
  // Names are given to coloured cells, one after the other, each beside the range that is used so far.
  const excel::Worksheet cells(sheet);
  for (const char16_t* expected : {u"$B$1", u"$C$1", u"$D$1"}) {
    const excel::Range used = cells.UsedRange();
    const excel::Range next = used.Offset(0, used.Columns().Count()).Cells(1);
    EXPECT_EQ(next.Address(), expected);
    next.Font().SetColorIndex(5);
  }
}

TEST_F(WorksheetTest, KeepsLockedCellsFromChangesWhileItIsProtected) {
  Put(Range(u"B1"), u"Locked", false);
  Set(u"A1", 1);
  Call(sheet, u"Protect", {u"Slaptas"});
  EXPECT_EQ(Get(sheet, u"ProtectContents"), Value(true));
  EXPECT_EQ(RaisedBy([&] { Set(u"A1", 2); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Set(u"A1:B1", 2); }), 1004) << "one locked cell is enough";
  EXPECT_EQ(RaisedBy([&] { Put(Range(u"A1"), u"Formula", u"=1"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Call(Range(u"A1"), u"ClearContents"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Put(Range(u"A1"), u"Locked", false); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Put(GetObject(Range(u"A1"), u"Interior"), u"ColorIndex", 15); }), 1004);
  EXPECT_EQ(At(u"A1"), Value(1.0));
  Set(u"B1", 3);
  EXPECT_EQ(At(u"B1"), Value(3.0));
  EXPECT_EQ(RaisedBy([&] { Put(Range(u"B1"), u"NumberFormat", u"@"); }), 1004) << "formats are kept anywhere";
}

TEST_F(WorksheetTest, IsUnprotectedOnlyWithItsPassword) {
  Call(sheet, u"Protect", {u"Slaptas"});
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"Unprotect", {u"slaptas"}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"Unprotect"); }), 1004);
  Call(sheet, u"Unprotect", {u"Slaptas"});
  Set(u"A1", 2);
  EXPECT_EQ(At(u"A1"), Value(2.0));
  Call(sheet, u"Unprotect", {u"whatever"});  // nothing to unprotect
}

TEST_F(WorksheetTest, LetsMacrosChangeItUnderUserInterfaceOnly) {
  Call(sheet, u"Protect", Arguments{u"x"}.Named(u"UserInterfaceOnly", true));
  Set(u"A1", 2);
  EXPECT_EQ(At(u"A1"), Value(2.0));
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"Unprotect", {u"y"}); }), 1004);
  Call(sheet, u"Protect", Arguments().Named(u"Contents", false));
  EXPECT_EQ(Get(sheet, u"ProtectContents"), Value(false));
}

TEST_F(WorksheetTest, HasAPrintAreaThatIsItsOwnName) {
  const ObjectPtr setup = GetObject(sheet, u"PageSetup");
  EXPECT_EQ(Get(setup, u"PrintArea"), Value(u""));
  Put(setup, u"PrintArea", u"A1:B5");
  EXPECT_EQ(Get(setup, u"PrintArea"), Value(u"$A$1:$B$5"));
  EXPECT_EQ(Text(GetObject(sheet, u"Names", {u"Print_Area"}), u"RefersTo"), u"=Sheet1!$A$1:$B$5");
  EXPECT_EQ(Text(GetObject(workbook, u"Names", {1}), u"Name"), u"Sheet1!Print_Area");
  EXPECT_EQ(RaisedBy([&] { Put(setup, u"PrintArea", u"Sheet2!A1"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Put(setup, u"PrintArea", u"nonsense!"); }), 1004);
  Put(setup, u"PrintArea", u"");
  EXPECT_EQ(Get(setup, u"PrintArea"), Value(u""));
  EXPECT_EQ(Get(GetObject(sheet, u"Names"), u"Count"), Value(0));
  Put(setup, u"PrintArea", u"");  // nothing to delete
}

TEST_F(WorksheetTest, RemembersWhetherGridlinesArePrinted) {
  const ObjectPtr setup = GetObject(sheet, u"PageSetup");
  EXPECT_EQ(Get(setup, u"PrintGridlines"), Value(false));
  Put(setup, u"PrintGridlines", true);
  EXPECT_EQ(Get(GetObject(sheet, u"PageSetup"), u"PrintGridlines"), Value(true));
}

TEST_F(WorksheetTest, ShowsPageBreaksWhenToldTo) {
  EXPECT_EQ(Get(sheet, u"DisplayPageBreaks"), Value(false));
  Put(sheet, u"DisplayPageBreaks", true);
  EXPECT_EQ(Get(sheet, u"DisplayPageBreaks"), Value(true));
  EXPECT_EQ(Get(GetObject(GetObject(workbook, u"Sheets"), u"Item", {2}), u"DisplayPageBreaks"), Value(false));
}

}  // namespace
}  // namespace qva::memory
