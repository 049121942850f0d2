// Who keeps what alive in the in-memory Excel.
#include <gtest/gtest.h>

#include "platform/memory/excel/Range.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

using OwnershipTest = ExcelTest;

TEST_F(OwnershipTest, ACellWorksOnWhenWorkbookAndApplicationWereLetGo) {
  const ObjectPtr cell = Range(u"A1");
  sheet.reset();
  workbook.reset();
  application.reset();
  excel.reset();
  Put(cell, u"Value", u"=Sheet2!B1+1");
  EXPECT_EQ(Get(cell, u"Value"), Value(1.0));
  const ObjectPtr found = GetObject(cell, u"Application");
  EXPECT_EQ(Text(GetObject(found, u"ActiveWorkbook"), u"Name"), u"Book1");
  EXPECT_TRUE(GetObject(GetObject(cell, u"Worksheet"), u"Parent") == GetObject(found, u"ActiveWorkbook"));
}

TEST_F(OwnershipTest, ObjectsOfAClosedWorkbookRefuse) {
  const ObjectPtr cell = Range(u"A1");
  const ObjectPtr color = GetObject(cell, u"Interior");
  const ObjectPtr name = Call(GetObject(workbook, u"Names"), u"Add", {u"x", u"=Sheet1!$A$1"}).ToObject();
  const ObjectPtr names = GetObject(workbook, u"Names");
  const ObjectPtr setup = GetObject(sheet, u"PageSetup");
  const ObjectPtr sheets = GetObject(workbook, u"Sheets");
  const ObjectPtr windows = GetObject(workbook, u"Windows");
  const ObjectPtr window = GetObject(application, u"ActiveWindow");
  Call(workbook, u"Close");
  struct Use {
    ObjectPtr object;
    std::u16string_view member;
  };
  for (const Use& use :
       {Use{cell, u"Value"},    {cell, u"Address"},       {cell, u"Name"},        {cell, u"Worksheet"},
        {cell, u"Count"},       {cell, u"ClearContents"}, {color, u"ColorIndex"}, {name, u"RefersToRange"},
        {name, u"Delete"},      {names, u"Count"},        {setup, u"PrintArea"},  {setup, u"PrintGridlines"},
        {sheet, u"Name"},       {sheet, u"Parent"},       {sheet, u"UsedRange"},  {sheet, u"Activate"},
        {workbook, u"Name"},    {workbook, u"Save"},      {workbook, u"Close"},   {workbook, u"Sheets"},
        {sheets, u"Count"},     {sheets, u"Add"},         {windows, u"Count"},    {window, u"Zoom"},
        {window, u"ScrollRow"}, {window, u"DisplayZeros"}}) {
    EXPECT_EQ(RaisedBy([&] { Call(use.object, use.member); }), kObjectGone) << ToUtf8(use.member);
  }
  EXPECT_EQ(RaisedBy([&] { Put(cell, u"Value", 1); }), kObjectGone);
}

TEST_F(OwnershipTest, ObjectsOfAClosedWorkbookRefuseAlsoWhenItsObjectIsGone) {
  const ObjectPtr cell = Range(u"A1");
  const ObjectPtr window = GetObject(application, u"ActiveWindow");
  Call(workbook, u"Close");
  workbook.reset();
  sheet.reset();
  EXPECT_EQ(RaisedBy([&] { Get(cell, u"Value"); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Get(window, u"Caption"); }), kObjectGone);
}

TEST_F(OwnershipTest, APartIsOneObjectWhileItIsAliveAndADifferentOneLater) {
  EXPECT_TRUE(GetObject(workbook, u"Sheets", {2}) == GetObject(workbook, u"Sheets", {2}));
  const ObjectPtr second = GetObject(workbook, u"Sheets", {2});
  EXPECT_TRUE(GetObject(workbook, u"Worksheets", {u"Sheet2"}) == second);
  EXPECT_FALSE(Range(u"A1") == Range(u"A1")) << "ranges are made anew";
}

TEST_F(OwnershipTest, NothingStaysAliveOfWhatWasOnlyPassedThrough) {
  const long before = Object::LiveCount();
  for (int i = 0; i < 10; ++i) {
    Put(GetObject(Range(u"A1:B2"), u"Offset", {i, i}), u"Value", i);
    GetObject(GetObject(GetObject(Range(u"A1"), u"Worksheet"), u"Parent"), u"Application");
    Put(Range(u"A1"), u"Name", u"x");
    GetObject(GetObject(workbook, u"Names", {u"x"}), u"RefersToRange");
    GetObject(GetObject(application, u"CommandBars"), u"Item", {1});
  }
  EXPECT_EQ(Object::LiveCount(), before);
}

TEST_F(OwnershipTest, ClosedWorkbooksAreFreed) {
  std::weak_ptr<WorkbookData> data;
  {
    const ObjectPtr second = excel->AddWorkbook();
    data = excel->data()->active_workbook;
    Put(GetObject(GetObject(second, u"ActiveSheet"), u"Range", {u"A1"}), u"Name", u"x");
    Call(second, u"Close");
  }
  EXPECT_TRUE(data.expired());
}

}  // namespace
}  // namespace qva::memory
