#include "platform/memory/excel/Workbook.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class WorkbookTest : public ExcelTest {
 protected:
  ObjectPtr workbooks = GetObject(application, u"Workbooks");
};

TEST_F(WorkbookTest, IsNumberedAndHasThreeSheets) {
  const ObjectPtr second = Call(workbooks, u"Add").ToObject();
  EXPECT_EQ(Text(workbook, u"Name"), u"Book1");
  EXPECT_EQ(Text(second, u"Name"), u"Book2");
  EXPECT_EQ(Get(GetObject(second, u"Sheets"), u"Count"), Value(3));
  EXPECT_EQ(Text(GetObject(second, u"ActiveSheet"), u"Name"), u"Sheet1");
}

TEST_F(WorkbookTest, IsFoundByPositionAndByNameInAnyLetterCase) {
  EXPECT_EQ(Get(workbooks, u"Count"), Value(1));
  EXPECT_TRUE(GetObject(workbooks, u"Item", {1}) == workbook);
  EXPECT_TRUE(GetObject(workbooks, u"", {u"BOOK1"}) == workbook);
  EXPECT_TRUE(GetObject(application, u"Workbooks", {u"book1"}) == workbook);
  for (const Value& index : {Value(0), Value(2), Value(u"Book"), Value(u"")}) {
    EXPECT_EQ(RaisedBy([&] { Get(workbooks, u"Item", {index}); }), kSubscriptOutOfRange);
  }
}

TEST_F(WorkbookTest, KnowsItsParts) {
  EXPECT_TRUE(GetObject(workbook, u"Parent") == application);
  EXPECT_TRUE(GetObject(workbook, u"Application") == application);
  EXPECT_TRUE(GetObject(workbook, u"ActiveSheet") == sheet);
  EXPECT_TRUE(GetObject(workbook, u"Worksheets", {u"sheet1"}) == sheet);
  EXPECT_EQ(Get(GetObject(workbook, u"Names"), u"Count"), Value(0));
  EXPECT_TRUE(GetObject(workbook, u"Windows", {1}) == GetObject(application, u"ActiveWindow"));
  EXPECT_EQ(Value(workbook).ToText(), u"Book1");
}

TEST_F(WorkbookTest, IsSavedUntilSomethingChanges) {
  EXPECT_EQ(Get(workbook, u"Saved"), Value(true));
  Set(u"A1", 1);
  EXPECT_EQ(Get(workbook, u"Saved"), Value(false));
  Put(workbook, u"Saved", true);
  EXPECT_EQ(Get(workbook, u"Saved"), Value(true));
}

TEST_F(WorkbookTest, TakesItsNameFromTheFile) {
  Set(u"A1", 1);
  EXPECT_EQ(Text(workbook, u"Path"), u"");
  EXPECT_EQ(Text(workbook, u"FullName"), u"Book1");
  platform.files.SetFolder(u"C:\\Arch\\2024");
  Call(workbook, u"SaveAs", Arguments().Named(u"Filename", u"C:\\Arch\\2024\\Balansas_2024.xls"));
  EXPECT_EQ(Text(workbook, u"Name"), u"Balansas_2024.xls");
  EXPECT_EQ(Text(workbook, u"Path"), u"C:\\Arch\\2024");
  EXPECT_EQ(Text(workbook, u"FullName"), u"C:\\Arch\\2024\\Balansas_2024.xls");
  EXPECT_EQ(Get(workbook, u"Saved"), Value(true));
  EXPECT_TRUE(excel->HasFile(u"c:\\arch\\2024\\BALANSAS_2024.XLS"));
  EXPECT_EQ(Text(GetObject(application, u"ActiveWindow"), u"Caption"), u"Balansas_2024.xls");
}

TEST_F(WorkbookTest, GetsFolderAndExtensionWhereTheNameHasNone) {
  Call(workbook, u"SaveAs", {u"Balansas"});
  EXPECT_EQ(Text(workbook, u"FullName"), u"C:\\My Documents\\Balansas.xls");
  EXPECT_EQ(RaisedBy([&] { Call(workbook, u"SaveAs", {u""}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Call(workbook, u"SaveAs", {u"C:\\"}); }), 1004);
}

TEST_F(WorkbookTest, RefusesTheNameOfAnotherOpenWorkbook) {
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  const ObjectPtr second = excel->AddWorkbook();
  platform.files.SetFolder(u"D:\\");
  EXPECT_EQ(RaisedBy([&] { Call(second, u"SaveAs", {u"D:\\A.XLS"}); }), 1004);
  EXPECT_EQ(Text(second, u"Name"), u"Book2");
  EXPECT_FALSE(excel->HasFile(u"D:\\a.xls"));
}

TEST_F(WorkbookTest, AsksWhileAlertsAreOnBeforeItReplacesAFile) {
  excel->AddFile(u"C:\\a.xls");
  EXPECT_EQ(RaisedBy([&] { Call(workbook, u"SaveAs", {u"c:\\A"}); }), 1004) << "the button at hand is No";
  EXPECT_EQ(Text(workbook, u"Name"), u"Book1");
  EXPECT_THAT(excel->Questions(),
              testing::ElementsAre(u"A file named 'c:\\A.xls' already exists in this location. "
                                   u"Do you want to replace it?"));
  excel->LetUserAgree(true);
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  EXPECT_EQ(Text(workbook, u"Name"), u"a.xls");
  EXPECT_EQ(excel->Questions().size(), 2u);

  excel->LetUserAgree(false);
  Put(application, u"DisplayAlerts", false);
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  Put(application, u"DisplayAlerts", true);
  Call(workbook, u"Save");
  Call(workbook, u"SaveAs", {u"C:\\b.xls"});
  EXPECT_EQ(excel->Questions().size(), 2u) << "not while alerts are off, for its own file, or for a new one";
}

TEST_F(WorkbookTest, RefusesAFolderThatIsMissing) {
  EXPECT_EQ(RaisedBy([&] { Call(workbook, u"SaveAs", {u"C:\\Arch\\a.xls"}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Call(workbook, u"SaveAs", {u"D:\\a.xls"}); }), 1004);
  EXPECT_EQ(Text(workbook, u"Name"), u"Book1");
  EXPECT_FALSE(excel->HasFile(u"C:\\Arch\\a.xls"));
  platform.files.SetFolder(u"C:\\Arch");
  Call(workbook, u"SaveAs", {u"C:\\Arch\\a.xls"});
  excel->AddFile(u"E:\\Kitur\\b.xls");
  Call(workbook, u"SaveAs", {u"e:\\kitur\\a.xls"});
  EXPECT_EQ(Text(workbook, u"Path"), u"e:\\kitur") << "which has a file";
}

TEST_F(WorkbookTest, IsSavedWithoutANameInTheDefaultFolder) {
  Call(workbook, u"Save");
  EXPECT_EQ(Text(workbook, u"FullName"), u"C:\\My Documents\\Book1.xls");
}

TEST_F(WorkbookTest, ComesBackFromItsFileAsItWasSaved) {
  Set(u"A1", 5);
  Set(u"A2", u"=A1*2");
  Put(Range(u"A1"), u"Locked", false);
  Put(Range(u"A1"), u"Name", u"Metai");
  Call(GetObject(sheet, u"Names"), u"Add", {u"Savas", 7});
  Call(GetObject(workbook, u"Sheets", {2}), u"Activate");
  Put(GetObject(application, u"ActiveWindow"), u"Caption", u"Antraštė");
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  Set(u"A1", 6);
  Call(workbook, u"Close");

  const ObjectPtr opened = Call(workbooks, u"Open", {u"c:\\A.XLS"}).ToObject();
  const ObjectPtr first = GetObject(opened, u"Sheets", {1});
  EXPECT_EQ(Get(GetObject(first, u"Range", {u"A2"}), u"Value"), Value(10.0));
  EXPECT_EQ(Get(GetObject(first, u"Range", {u"A1"}), u"Locked"), Value(false));
  EXPECT_EQ(Get(GetObject(first, u"Range", {u"Metai"}), u"Value"), Value(5.0));
  EXPECT_EQ(Text(GetObject(opened, u"Names", {u"Sheet1!Savas"}), u"RefersTo"), u"=7");
  EXPECT_EQ(Text(GetObject(opened, u"ActiveSheet"), u"Name"), u"Sheet2");
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == opened);
  EXPECT_EQ(Text(GetObject(application, u"ActiveWindow"), u"Caption"), u"a.xls");
  EXPECT_EQ(Get(opened, u"Saved"), Value(true));
}

TEST_F(WorkbookTest, ChangesAfterOpeningStayOutOfTheFileUntilSaved) {
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  Set(u"A1", 1);
  Call(workbook, u"Save");
  Set(u"A1", 2);
  Call(workbook, u"Close");
  const ObjectPtr opened = Call(workbooks, u"Open", {u"C:\\a.xls"}).ToObject();
  const ObjectPtr cell = GetObject(GetObject(opened, u"Sheets", {1}), u"Range", {u"A1"});
  EXPECT_EQ(Get(cell, u"Value"), Value(1.0));
  Put(cell, u"Value", 3);
  Call(opened, u"Close", {true});
  const ObjectPtr again = Call(workbooks, u"Open", {u"C:\\a.xls"}).ToObject();
  EXPECT_EQ(Get(GetObject(GetObject(again, u"Sheets", {1}), u"Range", {u"A1"}), u"Value"), Value(3.0));
}

TEST_F(WorkbookTest, OpensFilesThatATestPutThereAndNoOthers) {
  excel->AddFile(u"C:\\Reports\\Forma.xls");
  const ObjectPtr opened = Call(workbooks, u"Open", {u"c:\\reports\\FORMA.xls"}).ToObject();
  EXPECT_EQ(Text(opened, u"FullName"), u"C:\\Reports\\Forma.xls");
  EXPECT_EQ(Get(GetObject(opened, u"Sheets"), u"Count"), Value(1));
  EXPECT_EQ(RaisedBy([&] { Call(workbooks, u"Open", {u"C:\\Forma.xls"}); }), 1004);
  EXPECT_EQ(Get(workbooks, u"Count"), Value(2));
}

TEST_F(WorkbookTest, IsOnlyActivatedWhenItIsOpenAlready) {
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  excel->AddWorkbook();
  EXPECT_TRUE(Call(workbooks, u"Open", {u"C:\\A.xls"}).ToObject() == workbook);
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == workbook);
  excel->AddFile(u"D:\\a.xls");
  EXPECT_EQ(RaisedBy([&] { Call(workbooks, u"Open", {u"D:\\a.xls"}); }), 1004) << "same name, other folder";
}

TEST_F(WorkbookTest, LeavesAnotherOneActiveWhenItCloses) {
  const ObjectPtr second = excel->AddWorkbook();
  const ObjectPtr third = excel->AddWorkbook();
  Call(third, u"Close");
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == second);
  Call(workbook, u"Close");
  EXPECT_TRUE(GetObject(application, u"ActiveWorkbook") == second);
  EXPECT_EQ(Get(workbooks, u"Count"), Value(1));
}

}  // namespace
}  // namespace qva::memory
