#include <gtest/gtest.h>

#include "platform/memory/excel/Range.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

using MergedCellsTest = ExcelTest;

TEST_F(MergedCellsTest, KeepWhatStandsFirst) {
  Set(u"C2", u"=1+1");
  Set(u"B3", 7);
  Call(Range(u"B2:C3"), u"Merge");
  EXPECT_EQ(Text(Range(u"B2"), u"Formula"), u"=1+1");
  EXPECT_EQ(At(u"B2:C3").ToArray().elements, (std::vector<Value>{2.0, Value(), Value(), Value()}));
}

TEST_F(MergedCellsTest, GrowByTheMergedCellsThatTheyMeet) {
  Call(Range(u"A1:A2"), u"Merge");
  Put(Range(u"A1:B1"), u"MergeCells", true);
  EXPECT_EQ(AddressOf(GetObject(Range(u"B2"), u"MergeArea")), u"$A$1:$B$2");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$A$1:$B$2") << "a merged cell is in use";
  Put(Range(u"B2:B3"), u"MergeCells", false);
  EXPECT_EQ(Get(Range(u"A1:B2"), u"MergeCells"), Value(false));
}

TEST_F(MergedCellsTest, AreSelectedAndActivatedAsAWhole) {
  Call(Range(u"B2:C3"), u"Merge");
  Call(Range(u"C3:D4"), u"Select");
  EXPECT_EQ(AddressOf(GetObject(application, u"Selection")), u"$B$2:$D$4");
  EXPECT_EQ(AddressOf(GetObject(application, u"ActiveCell")), u"$B$2");
  Call(Range(u"A1"), u"Select");
  Call(Range(u"C3"), u"Activate");
  EXPECT_EQ(AddressOf(GetObject(application, u"Selection")), u"$B$2:$C$3");
  EXPECT_EQ(AddressOf(GetObject(application, u"ActiveCell")), u"$B$2");
}

TEST_F(MergedCellsTest, AreMadeAndPartedWhereFormatsMayChange) {
  Put(Range(u"A1:D1"), u"Locked", false);
  Call(Range(u"A1:B1"), u"Merge");
  Call(sheet, u"Protect");
  EXPECT_EQ(RaisedBy([&] { Call(Range(u"C1:D1"), u"Merge"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Call(Range(u"A1:B1"), u"UnMerge"); }), 1004);
}

TEST_F(MergedCellsTest, OfSeveralAreasAreSeveral) {
  Call(Range(u"A1:B2,D1:E2"), u"Merge", {true});
  EXPECT_EQ(AddressOf(GetObject(Range(u"E2"), u"MergeArea")), u"$D$2:$E$2");
  EXPECT_EQ(Get(Range(u"A1:B2,D1:E2"), u"MergeCells"), Value(true));
  Call(Range(u"A1,D2"), u"UnMerge");
  EXPECT_EQ(Get(Range(u"A1:B2"), u"MergeCells"), Value(Null()));
}

TEST_F(MergedCellsTest, ComeBackFromTheFile) {
  Call(Range(u"A1:B1"), u"Merge");
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  Call(workbook, u"Close");
  const ObjectPtr opened = Call(GetObject(application, u"Workbooks"), u"Open", {u"C:\\a.xls"}).ToObject();
  const ObjectPtr first = GetObject(opened, u"Sheets", {1});
  EXPECT_EQ(Get(GetObject(first, u"Range", {u"A1"}), u"MergeCells"), Value(true));
}

}  // namespace
}  // namespace qva::memory
