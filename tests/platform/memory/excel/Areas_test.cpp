#include "platform/memory/excel/Areas.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

using AreasTest = ExcelTest;

TEST_F(AreasTest, AreTheRectanglesOfARange) {
  const ObjectPtr one = GetObject(Range(u"B2:C5"), u"Areas");
  EXPECT_EQ(Get(one, u"Count"), Value(1));
  EXPECT_EQ(AddressOf(GetObject(one, u"Item", {1})), u"$B$2:$C$5");
  const ObjectPtr two = GetObject(Range(u"B2:C5,E1"), u"Areas");
  EXPECT_EQ(Get(two, u"Count"), Value(2));
  EXPECT_EQ(AddressOf(GetObject(two, u"", {2})), u"$E$1");
  for (const std::int32_t position : {0, 3}) {
    EXPECT_EQ(RaisedBy([&] { Get(two, u"Item", {position}); }), kSubscriptOutOfRange);
  }
}

TEST_F(AreasTest, AreWrittenReadAndCountedTogether) {
  const ObjectPtr range = Range(u"A1:B1,B1,D3");
  EXPECT_EQ(Get(range, u"Address", {false, false}), Value(u"A1:B1,B1,D3"));
  EXPECT_EQ(Get(range, u"Count"), Value(4)) << "what is in two of them counts twice";
  Put(range, u"Value", Array::Block(1, 2, {7, 8}));
  EXPECT_EQ(At(u"A1:B1").ToArray().elements, (std::vector<Value>{7.0, 7.0}));
  EXPECT_EQ(At(u"D3"), Value(7.0)) << "each gets the array from its first element on";
  EXPECT_EQ(Get(range, u"Value").ToArray().elements, (std::vector<Value>{7.0, 7.0})) << "that of the first";
  EXPECT_EQ(Get(range, u"Text"), Value(u"7"));
  Set(u"D3", 9);
  EXPECT_EQ(Get(range, u"Text"), Value(Null()));
  EXPECT_EQ(AddressOf(GetObject(range, u"Cells")), u"$A$1:$B$1,$B$1,$D$3");
  EXPECT_EQ(AddressOf(GetObject(range, u"Cells", {2, 1})), u"$A$2");
  EXPECT_EQ(AddressOf(GetObject(sheet, u"Range", {range, Range(u"C9")})), u"$A$1:$D$9");
}

TEST_F(AreasTest, AreRefusedWhereOneOfThemIs) {
  Put(Range(u"C1:C2"), u"FormulaArray", u"=1");
  for (const char16_t* cells : {u"A1,C1", u"C2,A1"}) {
    EXPECT_EQ(RaisedBy([&] { Set(cells, 1); }), 1004);
    EXPECT_EQ(RaisedBy([&] { Call(Range(cells), u"ClearContents"); }), 1004);
  }
  EXPECT_EQ(Get(Range(u"A1,C1"), u"HasArray"), Value(Null()));
  Put(Range(u"E1,E3"), u"Locked", false);
  Call(sheet, u"Protect");
  Set(u"E1,E3", 1);
  EXPECT_EQ(RaisedBy([&] { Set(u"E1,E2", 2); }), 1004);
  EXPECT_EQ(At(u"E1"), Value(1.0));
  EXPECT_EQ(RaisedBy([&] { GetObject(Range(u"A1,A2"), u"Offset", {-1}); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Range(u"A1,Sheet2!A1"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Range(u"A1,"); }), 1004);
}

TEST_F(AreasTest, AreActivatedAndSelected) {
  Call(Range(u"B2:C3,E5:F6"), u"Select");
  EXPECT_EQ(AddressOf(GetObject(application, u"ActiveCell")), u"$B$2");
  Call(Range(u"F6"), u"Activate");
  EXPECT_EQ(AddressOf(GetObject(application, u"Selection")), u"$B$2:$C$3,$E$5:$F$6");
  EXPECT_EQ(AddressOf(GetObject(application, u"ActiveCell")), u"$F$6");
}

TEST_F(AreasTest, AreOneOperandOfAFormula) {
  Set(u"A1:A3", 1);
  Set(u"C1", 5);
  Call(GetObject(workbook, u"Names"), u"Add", {u"Zona", Range(u"A1:A3,C1")});
  EXPECT_EQ(Text(GetObject(workbook, u"Names", {u"Zona"}), u"RefersTo"), u"=Sheet1!$A$1:$A$3,Sheet1!$C$1");
  EXPECT_EQ(Evaluate(u"=SUM(Zona)"), Value(8.0));
  EXPECT_EQ(Evaluate(u"=SUM((A1,C1),1)"), Value(7.0));
  EXPECT_EQ(Evaluate(u"=Zona+1"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Evaluate(u"=(A1,2)"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Evaluate(u"=SUMIF(Zona,1,A1)"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Text(GetObject(Range(u"A1:A3,C1"), u"Name"), u"Name"), u"Zona");
}

TEST_F(AreasTest, FormulasInTheUsersLanguageAreThoseOfTheUnitedStates) {
  Put(Range(u"A1"), u"FormulaLocal", u"=1+1");
  EXPECT_EQ(Get(Range(u"A1"), u"FormulaLocal"), Value(u"=1+1"));
  EXPECT_EQ(At(u"A1"), Value(2.0));
  Put(Range(u"A1"), u"FormulaLocal", u"");
  EXPECT_EQ(At(u"A1"), Value());
}

}  // namespace
}  // namespace qva::memory
