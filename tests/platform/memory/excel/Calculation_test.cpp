#include "platform/memory/excel/Calculation.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

/// B1 doubles A1, C1 adds one to B1, and both show what 1 gave.
class ManualCalculationTest : public ExcelTest {
 protected:
  ManualCalculationTest() {
    Set(u"A1", 1);
    Set(u"B1", u"=A1*2");
    Set(u"C1", u"=B1+1");
    Put(application, u"Calculation", std::int32_t{xlCalculationManual});
    Set(u"A1", 10);
  }
};

TEST_F(ManualCalculationTest, LeavesResultsAsTheyWereAtTheSwitch) {
  EXPECT_EQ(At(u"A1:C1").ToArray().elements, (std::vector<Value>{10.0, 2.0, 3.0}));
  EXPECT_EQ(Get(application, u"Calculation"), Value(std::int32_t{xlCalculationManual}));
}

TEST_F(ManualCalculationTest, ComputesWhatIsEntered) {
  Set(u"D1", u"=A1+B1");
  EXPECT_EQ(At(u"D1"), Value(12.0)) << "of what the cells show";
  Put(Range(u"E1:F1"), u"FormulaArray", u"=A1:B1*10");
  EXPECT_EQ(At(u"F1"), Value(20.0));
  Set(u"A2:A3", Array::Block(2, 1, {u"=A3", u"=A1"}));
  EXPECT_EQ(At(u"A2"), Value(10.0)) << "in the order that they need";
}

TEST_F(ManualCalculationTest, ComputesARangeOrASheetWhenItIsTold) {
  Call(Range(u"C1"), u"Calculate");
  EXPECT_EQ(At(u"C1"), Value(3.0)) << "of a cell that is out of date itself";
  Call(Range(u"B1:C1"), u"Calculate");
  EXPECT_EQ(At(u"C1"), Value(21.0));
  Set(u"A1", 20);
  const ObjectPtr other = GetObject(GetObject(workbook, u"Sheets", {2}), u"Range", {u"A1"});
  Put(other, u"Value", u"=Sheet1!C1");
  Call(sheet, u"Calculate");
  EXPECT_EQ(At(u"C1"), Value(41.0));
  EXPECT_EQ(Get(other, u"Value"), Value(21.0)) << "of another sheet";
}

TEST_F(ManualCalculationTest, ComputesEverythingWhenItIsTold) {
  Call(application, u"Calculate");
  EXPECT_EQ(At(u"C1"), Value(21.0));
}

TEST_F(ManualCalculationTest, BecomesUpToDateWhenItEnds) {
  Call(Range(u"C1"), u"Calculate");
  for (const std::int32_t mode : {xlCalculationSemiautomatic, xlCalculationAutomatic}) {
    Put(application, u"Calculation", mode);
    EXPECT_EQ(At(u"C1"), Value(21.0));
  }
  EXPECT_EQ(RaisedBy([&] { Put(application, u"Calculation", 5); }), 1004);
}

TEST_F(ManualCalculationTest, MeetsAZeroInACircle) {
  Set(u"D1", u"=D1+1");
  EXPECT_EQ(At(u"D1"), Value(1.0));
}

TEST_F(ManualCalculationTest, EndsBeforeASaveUnlessThatIsTurnedOff) {
  Put(application, u"CalculateBeforeSave", false);
  Call(workbook, u"SaveAs", {u"C:\\a.xls"});
  EXPECT_EQ(At(u"C1"), Value(3.0));
  Put(application, u"CalculateBeforeSave", true);
  Call(workbook, u"Save");
  EXPECT_EQ(At(u"C1"), Value(21.0));
}

}  // namespace
}  // namespace qva::memory
