#include "platform/memory/excel/VBProject.h"

#include <gtest/gtest.h>

#include "platform/memory/excel/Refusals.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class VBProjectTest : public ExcelTest {};

TEST_F(VBProjectTest, HasANameThatTheFileKeeps) {
  const ObjectPtr project = GetObject(workbook, u"VBProject");
  EXPECT_EQ(Text(project, u"Name"), u"VBAProject");
  Put(project, u"Name", u"Balansas");
  EXPECT_EQ(Get(workbook, u"Saved"), Value(false));
  Call(workbook, u"SaveAs", {u"C:\\b.xls"});
  Call(workbook, u"Close");
  EXPECT_EQ(RaisedBy([&] { Get(project, u"Name"); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Put(project, u"Name", u"x"); }), kObjectGone);
  const ObjectPtr opened = Call(GetObject(application, u"Workbooks"), u"Open", {u"C:\\b.xls"}).ToObject();
  EXPECT_EQ(Text(GetObject(opened, u"VBProject"), u"Name"), u"Balansas");
}

}  // namespace
}  // namespace qva::memory
