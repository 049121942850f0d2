// Printing and previewing sheets of the in-memory Excel.
#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PrintingTest : public ExcelTest {};

TEST_F(PrintingTest, IsRememberedWithSheetPrintAreaAndPages) {
  Call(sheet, u"PrintOut");
  Put(GetObject(sheet, u"PageSetup"), u"PrintArea", u"A1:B2");
  Call(sheet, u"PrintOut", Arguments().Named(u"From", 2).Named(u"To", 3).Named(u"Copies", 4));
  Call(sheet, u"PrintPreview");
  EXPECT_THAT(
      excel->PrintJobs(),
      ElementsAre(PrintJob{.sheet = u"Sheet1"},
                  PrintJob{.sheet = u"Sheet1", .print_area = u"$A$1:$B$2", .from = 2, .to = 3, .copies = 4},
                  PrintJob{.sheet = u"Sheet1", .print_area = u"$A$1:$B$2", .is_preview = true}));
}

TEST_F(PrintingTest, OfAHiddenSheetIsRefused) {
  Put(sheet, u"Visible", xlSheetHidden);
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"PrintOut"); }), kApplicationDefined);
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"PrintPreview"); }), kApplicationDefined);
  EXPECT_THAT(excel->PrintJobs(), IsEmpty());
}

TEST_F(PrintingTest, OfPagesThatCannotBeIsRefused) {
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"PrintOut", {0}); }), kApplicationDefined);
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"PrintOut", {3, 2}); }), kApplicationDefined);
  EXPECT_EQ(RaisedBy([&] { Call(sheet, u"PrintOut", {1, 1, 0}); }), kApplicationDefined);
  EXPECT_THAT(excel->PrintJobs(), IsEmpty());
}

}  // namespace
}  // namespace qva::memory
