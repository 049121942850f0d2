#include "platform/memory/excel/Shapes.h"

#include <gtest/gtest.h>

#include "platform/memory/excel/Refusals.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class ShapesTest : public ExcelTest {
 protected:
  ObjectPtr Add() const { return Call(shapes, u"AddShape", {1, 0, 0, 16, 16}).ToObject(); }

  static constexpr std::int32_t kInvalidArgument = -2147024809;  // hexadecimal 80070057
  ObjectPtr shapes = GetObject(sheet, u"Shapes");
};

TEST_F(ShapesTest, AreFoundByPositionAndByNameInAnyLetterCase) {
  EXPECT_EQ(Get(shapes, u"Count"), Value(0));
  const ObjectPtr shape = Add();
  EXPECT_EQ(Text(shape, u"Name"), u"Rectangle 1");
  Put(shape, u"Name", u"Picture02");
  EXPECT_TRUE(GetObject(sheet, u"Shapes", {u"PICTURE02"}) == shape);
  EXPECT_TRUE(GetObject(shapes, u"Item", {1}) == shape);
  for (const Value& index : {Value(0), Value(2), Value(u"Picture03")}) {
    EXPECT_EQ(RaisedBy([&] { Get(shapes, u"Item", {index}); }), kInvalidArgument);
  }
}

TEST_F(ShapesTest, AreCopiedToTheClipboard) {
  EXPECT_EQ(excel->ClipboardPicture(), u"");
  Call(Add(), u"Copy");
  EXPECT_EQ(excel->ClipboardPicture(), u"Rectangle 1");
}

TEST_F(ShapesTest, AreGoneWithTheirWorkbook) {
  const ObjectPtr shape = Add();
  Call(workbook, u"Close");
  EXPECT_EQ(RaisedBy([&] { Call(shape, u"Copy"); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Get(shapes, u"Count"); }), kObjectGone);
}

TEST_F(ShapesTest, AreInTheFileToo) {
  Add();
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  Call(workbook, u"Close");
  const ObjectPtr opened = Call(GetObject(application, u"Workbooks"), u"Open", {u"C:\\a.xls"}).ToObject();
  const ObjectPtr copies = GetObject(GetObject(opened, u"ActiveSheet"), u"Shapes");
  EXPECT_EQ(Get(copies, u"Count"), Value(1));
  Call(GetObject(copies, u"Item", {1}), u"Copy");
  EXPECT_EQ(excel->ClipboardPicture(), u"Rectangle 1");
}

}  // namespace
}  // namespace qva::memory
