#include "platform/memory/excel/Range.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

using RangeTest = ExcelTest;

TEST_F(RangeTest, HoldsValuesAsExcelDoes) {
  Set(u"A1", 12);
  EXPECT_EQ(At(u"A1"), Value(12.0));
  Set(u"A1", u"Ąžuolas");
  EXPECT_EQ(At(u"A1"), Value(u"Ąžuolas"));
  Set(u"A1", u"012");
  EXPECT_EQ(At(u"A1"), Value(12.0)) << "a text of digits is a number";
  Set(u"A1", Date{45455});
  EXPECT_EQ(At(u"A1"), Value(Date{45455}));
  Set(u"A1", u"");
  EXPECT_EQ(At(u"A1"), Value());
  EXPECT_EQ(At(u"IV65536"), Value());
}

TEST_F(RangeTest, StandsForItsValue) {
  Set(u"A1", 3);
  EXPECT_EQ(Value(Range(u"A1")).ToInt32(), 3);
  Put(Range(u"B1"), u"", 7);
  EXPECT_EQ(At(u"B1"), Value(7.0));
  Set(u"C1", Range(u"A1"));
  EXPECT_EQ(At(u"C1"), Value(3.0));
  EXPECT_EQ(Get(GetObject(sheet, u"Range", {u"A1:C1"}), u"", {1, 2}).ToInt32(), 7);
  Arguments arguments{1, 2, 9};
  Range(u"A1:C1")->Invoke(Access::Put, u"", arguments);
  EXPECT_EQ(At(u"B1"), Value(9.0));
}

TEST_F(RangeTest, GivesSeveralCellsAsABlockFromOne) {
  Set(u"A1", 1);
  Set(u"B1", u"x");
  Set(u"A2", u"=A1+1");
  const Value block = At(u"A1:B2");
  ASSERT_EQ(block.ToArray().dimensions.size(), 2u);
  for (const Array::Dimension& dimension : block.ToArray().dimensions) {
    EXPECT_EQ(dimension.lower, 1);
    EXPECT_EQ(dimension.count, 2);
  }
  EXPECT_EQ(block.ToArray().elements, (std::vector<Value>{1.0, u"x", 2.0, Value()}));
}

TEST_F(RangeTest, TakesBlocks) {
  Set(u"A1:B2", Array::Block(2, 2, {1, u"x", u"=A1*5", Value()}));
  EXPECT_EQ(At(u"A1:B2").ToArray().elements, (std::vector<Value>{1.0, u"x", 5.0, Value()}));
  Set(u"D1:E2", At(u"A1:B2"));
  EXPECT_EQ(At(u"D2"), Value(5.0));
  Set(u"G1:H2", Range(u"A1:B2"));
  EXPECT_EQ(At(u"G2"), Value(5.0)) << "a range object stands for its values";
  Set(u"J1:K1", Array::Of({Range(u"B1"), application}));
  EXPECT_EQ(At(u"J1:K1").ToArray().elements, (std::vector<Value>{u"x", u"Microsoft Excel"}))
      << "and so does any object in an array";
  EXPECT_EQ(RaisedBy([&] {
              Set(u"J1:K1", Array::Of({GetObject(application, u"Workbooks"), 1}));
            }),
            kWrongArgumentCount)
      << "a collection has no value";
}

TEST_F(RangeTest, TakesOneValueForAllCells) {
  Set(u"A1:B2", 4);
  EXPECT_EQ(At(u"A1:B2").ToArray().elements, (std::vector<Value>{4.0, 4.0, 4.0, 4.0}));
  Set(u"A1:B2", Value());
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$A$1");
  EXPECT_EQ(At(u"B2"), Value());
}

TEST_F(RangeTest, FillsWhatAnArrayDoesNotCover) {
  Set(u"A1:C3", Array::Block(2, 2, {1, 2, 3, 4}));
  const Value missing = ErrorValue{xlErrNA};
  EXPECT_EQ(At(u"A1:C3").ToArray().elements,
            (std::vector<Value>{1.0, 2.0, missing, 3.0, 4.0, missing, missing, missing, missing}));
  Set(u"A1:B2", Array::Of({7, 8}));
  EXPECT_EQ(At(u"A1:B2").ToArray().elements, (std::vector<Value>{7.0, 8.0, 7.0, 8.0}))
      << "one row is repeated";
  Set(u"A1:B2", Array::Block(2, 1, {5, 6}));
  EXPECT_EQ(At(u"A1:B2").ToArray().elements, (std::vector<Value>{5.0, 5.0, 6.0, 6.0})) << "and one column";
  EXPECT_EQ(RaisedBy([&] { Set(u"A1:B2", Array{{{0, 1}, {0, 1}, {0, 1}}, {Value(1)}}); }), 1004);
}

TEST_F(RangeTest, TellsFormulasAndConstantsAsText) {
  Set(u"A1", u"=B1+1");
  Set(u"A2", 1.5);
  EXPECT_EQ(Get(Range(u"A1"), u"Formula"), Value(u"=B1+1"));
  EXPECT_EQ(Get(Range(u"A2"), u"Formula"), Value(u"1.5"));
  EXPECT_EQ(Get(Range(u"A3"), u"Formula"), Value(u""));
  EXPECT_EQ(Get(Range(u"A1:A3"), u"Formula").ToArray().elements, (std::vector<Value>{u"=B1+1", u"1.5", u""}));
  Put(Range(u"A2"), u"Formula", u"=A1");
  EXPECT_EQ(At(u"A2"), Value(1.0));
}

TEST_F(RangeTest, ShowsWhatTheCellShows) {
  Set(u"A1:B1", 1.5);
  EXPECT_EQ(Get(Range(u"A1"), u"Text"), Value(u"1,5"));
  EXPECT_EQ(Get(Range(u"A1:B1"), u"Text"), Value(u"1,5"));
  EXPECT_EQ(Get(Range(u"A1:C1"), u"Text"), Value(Null()));
  Set(u"A1", u"=1/0");
  EXPECT_EQ(Get(Range(u"A1"), u"Text"), Value(u"#DIV/0!"));
}

TEST_F(RangeTest, KeepsTextsOfDigitsInTextFormat) {
  Put(Range(u"A1"), u"NumberFormat", u"@");
  Set(u"A1:B1", u"0012");
  EXPECT_EQ(At(u"A1"), Value(u"0012"));
  EXPECT_EQ(At(u"B1"), Value(12.0));
  EXPECT_EQ(Get(Range(u"B1"), u"NumberFormat"), Value(u"General"));
  EXPECT_EQ(Get(Range(u"A1:B1"), u"NumberFormat"), Value(Null()));
}

TEST_F(RangeTest, KnowsWhereItIs) {
  const ObjectPtr range = Range(u"C2:E7");
  EXPECT_EQ(Get(range, u"Row"), Value(2));
  EXPECT_EQ(Get(range, u"Column"), Value(3));
  EXPECT_EQ(Get(range, u"Count"), Value(18));
  EXPECT_EQ(Get(GetObject(range, u"Rows"), u"Count"), Value(6));
  EXPECT_EQ(Get(GetObject(range, u"Columns"), u"Count"), Value(3));
  EXPECT_EQ(Get(GetObject(sheet, u"Cells"), u"Count"), Value(16777216));
  EXPECT_EQ(Get(range, u"Address"), Value(u"$C$2:$E$7"));
  EXPECT_EQ(Get(range, u"Address", {false, false}), Value(u"C2:E7"));
  EXPECT_EQ(Get(range, u"Address", Arguments().Named(u"ColumnAbsolute", false)), Value(u"C$2:E$7"));
  EXPECT_TRUE(GetObject(range, u"Worksheet") == sheet);
  EXPECT_TRUE(GetObject(range, u"Parent") == sheet);
  EXPECT_TRUE(GetObject(range, u"Application") == application);
}

TEST_F(RangeTest, CountsItsCellsRowsAndColumns) {
  const ObjectPtr range = Range(u"C2:E7");
  EXPECT_EQ(AddressOf(GetObject(range, u"Cells", {1, 1})), u"$C$2");
  EXPECT_EQ(AddressOf(GetObject(range, u"Item", {2, 3})), u"$E$3");
  EXPECT_EQ(AddressOf(GetObject(range, u"Cells", {4})), u"$C$3") << "along the rows";
  EXPECT_EQ(AddressOf(GetObject(range, u"Item", {100, 100})), u"$CX$101") << "also beyond the range";
  EXPECT_EQ(AddressOf(GetObject(range, u"Item", {0, 0})), u"$B$1");
  EXPECT_EQ(AddressOf(GetObject(range, u"Item", {1, u"B"})), u"$D$2");
  EXPECT_EQ(AddressOf(GetObject(range, u"Rows", {2})), u"$C$3:$E$3");
  EXPECT_EQ(AddressOf(GetObject(range, u"Columns", {2})), u"$D$2:$D$7");
  EXPECT_EQ(AddressOf(GetObject(GetObject(range, u"Rows"), u"Item", {6})), u"$C$7:$E$7");
  EXPECT_EQ(AddressOf(GetObject(range, u"Cells")), u"$C$2:$E$7");
  EXPECT_EQ(RaisedBy([&] { GetObject(range, u"Item", {-1, 1}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { GetObject(range, u"Item", {1, u"ZZZ"}); }), 1004);
}

TEST_F(RangeTest, MovesWithinTheSheetOnly) {
  const ObjectPtr range = Range(u"B2:C3");
  EXPECT_EQ(AddressOf(GetObject(range, u"Offset", {1})), u"$B$3:$C$4");
  EXPECT_EQ(AddressOf(GetObject(range, u"Offset", Arguments().Named(u"ColumnOffset", -1))), u"$A$2:$B$3");
  EXPECT_EQ(AddressOf(GetObject(range, u"Offset")), u"$B$2:$C$3");
  EXPECT_EQ(RaisedBy([&] { GetObject(range, u"Offset", {-2}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { GetObject(range, u"Offset", {0, 254}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { GetObject(range, u"Offset", {65534}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { GetObject(range, u"Offset", {2147483647}); }), 1004);
}

TEST_F(RangeTest, TakesAnotherSizeFromItsFirstCell) {
  EXPECT_EQ(AddressOf(GetObject(Range(u"B2:C3"), u"Resize", {4, 1})), u"$B$2:$B$5");
  EXPECT_EQ(AddressOf(GetObject(Range(u"B2:C3"), u"Resize", {1})), u"$B$2:$C$2");
  EXPECT_EQ(AddressOf(GetObject(Range(u"B2:C3"), u"Resize", {Missing(), 7})), u"$B$2:$H$3");
  EXPECT_EQ(AddressOf(GetObject(Range(u"A1"), u"Resize", {65536, 256})), u"$1:$65536");
  for (const Arguments& arguments :
       {Arguments{0, 1}, Arguments{1, -1}, Arguments{65536, 1}, Arguments{1, 256}}) {
    EXPECT_EQ(RaisedBy([&] { GetObject(Range(u"B2"), u"Resize", arguments); }), 1004);
  }
}

TEST_F(RangeTest, GoesToTheEndOfARunOrOverAGap) {
  Set(u"A1:A3", 1);
  Set(u"A6:A7", 1);
  Set(u"C3", 1);
  const auto end = [&](std::u16string_view from, std::int32_t direction) {
    return AddressOf(GetObject(Range(from), u"End", {direction}));
  };
  EXPECT_EQ(end(u"A1", xlDown), u"$A$3") << "inside a run: its end";
  EXPECT_EQ(end(u"A3", xlDown), u"$A$6") << "at a run's end: the next run";
  EXPECT_EQ(end(u"A4", xlDown), u"$A$6") << "in a gap: the next run";
  EXPECT_EQ(end(u"A7", xlDown), u"$A$65536") << "behind all: the edge";
  EXPECT_EQ(end(u"A65536", xlDown), u"$A$65536");
  EXPECT_EQ(end(u"A65536", xlUp), u"$A$7");
  EXPECT_EQ(end(u"A7", xlUp), u"$A$6");
  EXPECT_EQ(end(u"A1", xlUp), u"$A$1");
  EXPECT_EQ(end(u"A3", xlToRight), u"$C$3");
  EXPECT_EQ(end(u"C3", xlToRight), u"$IV$3");
  EXPECT_EQ(end(u"IV3", xlToLeft), u"$C$3");
  EXPECT_EQ(end(u"B1:C9", xlToLeft), u"$A$1") << "from the first cell";
  EXPECT_EQ(RaisedBy([&] { end(u"A1", 1); }), 1004);
}

TEST_F(RangeTest, HasColours) {
  const ObjectPtr interior = GetObject(Range(u"A1:B2"), u"Interior");
  EXPECT_EQ(Get(interior, u"ColorIndex"), Value(std::int32_t{xlColorIndexNone}));
  Put(interior, u"ColorIndex", 15);
  EXPECT_EQ(Get(GetObject(Range(u"B2"), u"Interior"), u"ColorIndex"), Value(15));
  EXPECT_EQ(Get(GetObject(Range(u"B2:C3"), u"Interior"), u"ColorIndex"), Value(Null()));
  EXPECT_EQ(Get(GetObject(Range(u"B2"), u"Font"), u"ColorIndex"), Value(std::int32_t{xlColorIndexAutomatic}));
  Put(GetObject(Range(u"B2"), u"Font"), u"ColorIndex", 3);
  EXPECT_EQ(Get(GetObject(Range(u"B2"), u"Font"), u"ColorIndex"), Value(3));
  Put(interior, u"ColorIndex", 0);
  EXPECT_EQ(Get(interior, u"ColorIndex"), Value(std::int32_t{xlColorIndexNone}));
  EXPECT_EQ(RaisedBy([&] { Put(interior, u"ColorIndex", 57); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Put(interior, u"ColorIndex", -1); }), 1004);
}

TEST_F(RangeTest, LocksWholeColumnsAndSheets) {
  EXPECT_EQ(Get(Range(u"A1"), u"Locked"), Value(true));
  Put(GetObject(sheet, u"Cells"), u"Locked", false);
  Put(Range(u"B:B"), u"Locked", true);
  EXPECT_EQ(Get(Range(u"A1"), u"Locked"), Value(false));
  EXPECT_EQ(Get(Range(u"B7"), u"Locked"), Value(true));
  EXPECT_EQ(Get(Range(u"A:B"), u"Locked"), Value(Null()));
}

TEST_F(RangeTest, ClearsContentsAndKeepsFormats) {
  Set(u"A1:B2", 1);
  Put(GetObject(Range(u"A1"), u"Interior"), u"ColorIndex", 15);
  Call(Range(u"A1:A2"), u"ClearContents");
  EXPECT_EQ(At(u"A1:B2").ToArray().elements, (std::vector<Value>{Value(), 1.0, Value(), 1.0}));
  EXPECT_EQ(Get(GetObject(Range(u"A1"), u"Interior"), u"ColorIndex"), Value(15));
  Call(GetObject(sheet, u"Cells"), u"ClearContents");
  EXPECT_EQ(At(u"B2"), Value());
}

TEST_F(RangeTest, IsSelectedAndActivatedOnTheActiveSheetOnly) {
  Call(Range(u"B2:D4"), u"Select");
  EXPECT_EQ(AddressOf(GetObject(application, u"Selection")), u"$B$2:$D$4");
  EXPECT_EQ(AddressOf(GetObject(application, u"ActiveCell")), u"$B$2");
  Call(Range(u"C3"), u"Activate");
  EXPECT_EQ(AddressOf(GetObject(application, u"Selection")), u"$B$2:$D$4") << "within the selection";
  EXPECT_EQ(AddressOf(GetObject(application, u"ActiveCell")), u"$C$3");
  Call(Range(u"F9"), u"Activate");
  EXPECT_EQ(AddressOf(GetObject(application, u"Selection")), u"$F$9");
  const ObjectPtr elsewhere = GetObject(GetObject(workbook, u"Sheets", {2}), u"Range", {u"A1"});
  EXPECT_EQ(RaisedBy([&] { Call(elsewhere, u"Select"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Call(elsewhere, u"Activate"); }), 1004);
}

TEST_F(RangeTest, HoldsArrayFormulasThatChangeAsAWholeOnly) {
  Set(u"A1:B2", Array::Block(2, 2, {1, 2, 3, 4}));
  Put(Range(u"D1:E3"), u"FormulaArray", u"=A1:B2*10");
  Put(Range(u"G1"), u"FormulaArray", u"=SUM(A1:B2)");
  Put(Range(u"H1:H2"), u"FormulaArray", u"=A1:B1");
  EXPECT_EQ(At(u"D1"), Value(10.0));
  EXPECT_EQ(At(u"E2"), Value(40.0));
  EXPECT_EQ(At(u"D3"), Value(ErrorValue{xlErrNA})) << "beyond what the formula gives";
  EXPECT_EQ(At(u"G1"), Value(10.0));
  EXPECT_EQ(At(u"H2"), Value(1.0)) << "the only row serves all";
  EXPECT_EQ(Text(Range(u"E3"), u"Formula"), u"=A1:B2*10");
  EXPECT_EQ(Get(Range(u"D1:E3"), u"HasArray"), Value(true));
  EXPECT_EQ(Get(Range(u"C1:E3"), u"HasArray"), Value(Null{}));
  EXPECT_EQ(Get(Range(u"A1:B2"), u"HasArray"), Value(false));
  EXPECT_EQ(AddressOf(GetObject(Range(u"E2"), u"CurrentArray")), u"$D$1:$E$3");
  EXPECT_EQ(RaisedBy([&] { Get(Range(u"A1"), u"CurrentArray"); }), 1004);

  for (const char16_t* part : {u"D1", u"E3:F4", u"A1:D1"}) {
    EXPECT_EQ(RaisedBy([&] { Set(part, 1); }), 1004) << ToUtf8(part);
    EXPECT_EQ(RaisedBy([&] { Set(part, u""); }), 1004) << ToUtf8(part);
    EXPECT_EQ(RaisedBy([&] { Call(Range(part), u"ClearContents"); }), 1004) << ToUtf8(part);
    EXPECT_EQ(RaisedBy([&] { Put(Range(part), u"FormulaArray", u"=1"); }), 1004) << ToUtf8(part);
  }
  EXPECT_EQ(At(u"E2"), Value(40.0));
  EXPECT_EQ(RaisedBy([&] { Put(Range(u"J1"), u"FormulaArray", u"=1+"); }), 1004);
  const std::u16string long_formula = u"=1" + std::u16string(254, u' ');
  EXPECT_EQ(RaisedBy([&] { Put(Range(u"J1"), u"FormulaArray", long_formula); }), 1004);
  Put(Range(u"J1"), u"FormulaArray", long_formula.substr(0, 255));
  Put(Range(u"D1:E3"), u"FormulaLocal", u"");
  EXPECT_EQ(At(u"E2"), Value());
  Set(u"H1:H2", 5);
  EXPECT_EQ(Get(Range(u"H1"), u"HasArray"), Value(false));
}

TEST_F(RangeTest, ShowsAmountsAsCurrencyAndGivesAllDigitsByValue2) {
  Set(u"A1", 1.23456789);
  Put(Range(u"A1"), u"NumberFormat", u"#,##0.00 €");
  EXPECT_EQ(At(u"A1"), Value(Currency{12346}));
  EXPECT_EQ(Get(Range(u"A1"), u"Value2"), Value(1.23456789));
  Set(u"A2", Date{45455.5});
  EXPECT_EQ(At(u"A2"), Value(Date{45455.5}));
  EXPECT_EQ(Get(Range(u"A2"), u"Value2"), Value(45455.5));
  EXPECT_EQ(Get(Range(u"A2"), u"Text"), Value(Value(Date{45455.5}).ToText()));
  Set(u"A3", Currency{12345});
  EXPECT_EQ(At(u"A3"), Value(Currency{12345}));
  EXPECT_EQ(Get(Range(u"A3"), u"Value2"), Value(1.2345));
  Put(Range(u"A4"), u"Value2", 7);
  EXPECT_EQ(At(u"A4"), Value(7.0));
}

TEST_F(RangeTest, GetsANameAndKnowsIt) {
  Put(Range(u"B2:C3"), u"Name", u"Zona");
  EXPECT_EQ(Text(GetObject(Range(u"B2:C3"), u"Name"), u"Name"), u"Zona");
  EXPECT_EQ(Text(GetObject(workbook, u"Names", {u"zona"}), u"RefersTo"), u"=Sheet1!$B$2:$C$3");
  EXPECT_EQ(RaisedBy([&] { Get(Range(u"B2"), u"Name"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Put(Range(u"B2"), u"Name", u"A1"); }), 1004);
}

TEST_F(RangeTest, RefusesBlocksThatDoNotFitIntoMemory) {
  EXPECT_EQ(RaisedBy([&] { Get(GetObject(sheet, u"Cells"), u"Value"); }), kOutOfMemory);
  EXPECT_EQ(RaisedBy([&] { Put(GetObject(sheet, u"Cells"), u"Value", 1); }), kOutOfMemory);
}

TEST_F(RangeTest, HoldsAHundredThousandCells) {
  std::vector<Value> values;
  for (int i = 0; i < 100'000; ++i) values.emplace_back(i);
  Set(u"A1:J10000", Array::Block(10'000, 10, values));
  EXPECT_EQ(AddressOf(GetObject(sheet, u"UsedRange")), u"$A$1:$J$10000");
  EXPECT_EQ(At(u"J10000"), Value(99'999.0));
  EXPECT_EQ(Evaluate(u"=SUM(A1:J10000)"), Value(99'999.0 * 100'000 / 2));
}

}  // namespace
}  // namespace qva::memory
