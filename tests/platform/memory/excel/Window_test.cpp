#include "platform/memory/excel/Window.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class WindowTest : public ExcelTest {
 protected:
  ObjectPtr window = GetObject(application, u"ActiveWindow");
};

TEST_F(WindowTest, ShowsTheWorkbooksNameUntilACaptionIsSet) {
  EXPECT_EQ(Text(window, u"Caption"), u"Book1");
  Put(window, u"Caption", u"Balansas");
  EXPECT_EQ(Text(window, u"Caption"), u"Balansas");
  Put(window, u"Caption", u"");
  EXPECT_EQ(Text(window, u"Caption"), u"");
  Put(window, u"Caption", Value());
  EXPECT_EQ(Text(window, u"Caption"), u"Book1");
}

TEST_F(WindowTest, KeepsItsSwitches) {
  for (const std::u16string_view name :
       {u"DisplayGridlines", u"DisplayHeadings", u"DisplayZeros", u"DisplayOutline", u"DisplayWorkbookTabs",
        u"DisplayHorizontalScrollBar", u"DisplayVerticalScrollBar"}) {
    EXPECT_EQ(Get(window, name), Value(true)) << ToUtf8(name);
    Put(window, name, false);
    EXPECT_EQ(Get(window, name), Value(false)) << ToUtf8(name);
  }
  for (const std::u16string_view name : {u"DisplayFormulas", u"FreezePanes"}) {
    EXPECT_EQ(Get(window, name), Value(false)) << ToUtf8(name);
    Put(window, name, true);
    EXPECT_EQ(Get(window, name), Value(true)) << ToUtf8(name);
  }
}

TEST_F(WindowTest, TakesNumbersWithinExcelsBoundsOnly) {
  struct Bounds {
    std::u16string_view name;
    std::int32_t initial, first, last;
  };
  for (const Bounds& b :
       {Bounds{u"Zoom", 100, 10, 400}, {u"ScrollRow", 1, 1, 65536}, {u"ScrollColumn", 1, 1, 256}}) {
    EXPECT_EQ(Get(window, b.name), Value(b.initial)) << ToUtf8(b.name);
    Put(window, b.name, b.first);
    Put(window, b.name, b.last);
    EXPECT_EQ(RaisedBy([&] { Put(window, b.name, b.first - 1); }), 1004) << ToUtf8(b.name);
    EXPECT_EQ(RaisedBy([&] { Put(window, b.name, b.last + 1); }), 1004) << ToUtf8(b.name);
    EXPECT_EQ(Get(window, b.name), Value(b.last)) << ToUtf8(b.name);
  }
  Put(window, u"WindowState", std::int32_t{xlNormal});
  EXPECT_EQ(Get(window, u"WindowState"), Value(std::int32_t{xlNormal}));
  EXPECT_EQ(RaisedBy([&] { Put(window, u"WindowState", 1); }), 1004);
}

TEST_F(WindowTest, IsFoundAmongTheWorkbooksWindows) {
  const ObjectPtr windows = GetObject(workbook, u"Windows");
  EXPECT_EQ(Get(windows, u"Count"), Value(1));
  EXPECT_TRUE(GetObject(windows, u"Item", {1}) == window);
  EXPECT_TRUE(GetObject(windows, u"Item", {u"BOOK1"}) == window);
  EXPECT_EQ(RaisedBy([&] { Get(windows, u"Item", {2}); }), kSubscriptOutOfRange);
  EXPECT_EQ(RaisedBy([&] { Get(windows, u"Item", {u"Book2"}); }), kSubscriptOutOfRange);
}

TEST_F(WindowTest, IsEachWorkbooksOwn) {
  Put(window, u"Zoom", 50);
  excel->AddWorkbook();
  EXPECT_EQ(Get(GetObject(application, u"ActiveWindow"), u"Zoom"), Value(100));
}

}  // namespace
}  // namespace qva::memory
