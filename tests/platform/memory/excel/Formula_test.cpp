#include "platform/memory/excel/Formula.h"

#include <gtest/gtest.h>

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

using FormulaTest = ExcelTest;

TEST_F(FormulaTest, ComputesWithPrecedenceAndParentheses) {
  EXPECT_EQ(Evaluate(u"=1+2*3"), Value(7.0));
  EXPECT_EQ(Evaluate(u"=(1+2)*3"), Value(9.0));
  EXPECT_EQ(Evaluate(u"=8/4/2"), Value(1.0));
  EXPECT_EQ(Evaluate(u"=10-4-3"), Value(3.0));
  EXPECT_EQ(Evaluate(u"=-2*--3"), Value(-6.0));
  EXPECT_EQ(Evaluate(u"= 1.5E1 + .5 "), Value(15.5));
  EXPECT_EQ(Evaluate(u"=1E-1"), Value(0.1));
  EXPECT_EQ(Evaluate(u"=50%*4"), Value(2.0));
}

TEST_F(FormulaTest, JoinsTextsAndNumbersByTheRegionalSettings) {
  EXPECT_EQ(Evaluate(u"=\"a \"\"b\"\"\"&1.5&TRUE"), Value(u"a \"b\"1,5TRUE"));
}

TEST_F(FormulaTest, Compares) {
  EXPECT_EQ(Evaluate(u"=1<2"), Value(true));
  EXPECT_EQ(Evaluate(u"=2<=1"), Value(false));
  EXPECT_EQ(Evaluate(u"=2>=2"), Value(true));
  EXPECT_EQ(Evaluate(u"=2>1+1"), Value(false));
  EXPECT_EQ(Evaluate(u"=\"ĄŽ\"=\"ąž\""), Value(true)) << "letter case does not count";
  EXPECT_EQ(Evaluate(u"=\"a\"<>\"b\""), Value(true));
  EXPECT_EQ(Evaluate(u"=\"1\">99"), Value(true)) << "texts come after numbers";
  EXPECT_EQ(Evaluate(u"=FALSE>\"z\""), Value(true)) << "Booleans come last";
  EXPECT_EQ(Evaluate(u"=A1=0"), Value(true)) << "an empty cell is zero";
  EXPECT_EQ(Evaluate(u"=A1=\"\""), Value(true)) << "and the empty text";
}

TEST_F(FormulaTest, ReadsCellsOfItsOwnAndOtherSheets) {
  Set(u"A1", 5);
  const ObjectPtr second = GetObject(workbook, u"Sheets", {2});
  Put(second, u"Name", u"Mano lapas");
  Put(GetObject(second, u"Range", {u"B2"}), u"Value", 7);
  EXPECT_EQ(Evaluate(u"=A1+$A$1"), Value(10.0));
  EXPECT_EQ(Evaluate(u"=Sheet1!a1"), Value(5.0));
  EXPECT_EQ(Evaluate(u"='Mano lapas'!B2*2"), Value(14.0));
  EXPECT_EQ(Evaluate(u"=A2"), Value(0.0)) << "an empty cell gives zero";
}

TEST_F(FormulaTest, ReadsReferencesWithoutASheetOnItsOwnSheet) {
  Set(u"A1", 5);
  const ObjectPtr second = GetObject(workbook, u"Sheets", {2});
  Put(GetObject(second, u"Range", {u"A1"}), u"Value", 8);
  Put(GetObject(second, u"Range", {u"B1"}), u"Value", u"=A1");
  EXPECT_EQ(Evaluate(u"=Sheet2!B1"), Value(8.0));
}

TEST_F(FormulaTest, ReadsNames) {
  Set(u"A1", 5);
  const ObjectPtr names = GetObject(workbook, u"Names");
  Call(names, u"Add", {u"Metai", u"=Sheet1!$A$1"});
  Call(names, u"Add", {u"Double", u"=metai*2"});
  Call(names, u"Add", {u"Self", u"=Self+1"});
  EXPECT_EQ(Evaluate(u"=METAI"), Value(5.0));
  EXPECT_EQ(Evaluate(u"=Double+1"), Value(11.0));
  EXPECT_EQ(Evaluate(u"=Unknown"), Value(ErrorValue{xlErrName}));
  EXPECT_EQ(Evaluate(u"=Self"), Value(ErrorValue{xlErrName}));
}

TEST_F(FormulaTest, PrefersTheNameOfTheSheet) {
  Call(GetObject(workbook, u"Names"), u"Add", {u"Kaina", 1});
  Call(GetObject(sheet, u"Names"), u"Add", {u"Kaina", 2});
  EXPECT_EQ(Evaluate(u"=Kaina"), Value(2.0));
  const ObjectPtr second = GetObject(workbook, u"Sheets", {2});
  Put(GetObject(second, u"Range", {u"B1"}), u"Value", u"=Kaina");
  EXPECT_EQ(Get(GetObject(second, u"Range", {u"B1"}), u"Value"), Value(1.0));
  EXPECT_EQ(Evaluate(u"=Sheet2!Kaina"), Value(1.0));
}

TEST_F(FormulaTest, Sums) {
  Set(u"A1:A3", Array::Block(3, 1, {1, u"text", 3}));
  Set(u"B1", true);
  EXPECT_EQ(Evaluate(u"=SUM(A1:B3,10,\"5\",TRUE)"), Value(20.0))
      << "texts and Booleans count as arguments, not in cells";
  EXPECT_EQ(Evaluate(u"=sum(A:A)"), Value(4.0));
  EXPECT_EQ(Evaluate(u"=SUM(1:2)"), Value(1.0));
  EXPECT_EQ(Evaluate(u"=SUM()"), Value(0.0));
  EXPECT_EQ(Evaluate(u"=SUM(\"x\")"), Value(ErrorValue{xlErrValue}));
  Set(u"A2", ErrorValue{xlErrNA});
  EXPECT_EQ(Evaluate(u"=SUM(A1:A3)"), Value(ErrorValue{xlErrNA}));
}

TEST_F(FormulaTest, SumsWhereACriterionIsMet) {
  Put(Range(u"A1:A5"), u"NumberFormat", u"@");
  Set(u"A1:B5", Array::Block(5, 2, {u"2710", 1, u"2720", 2, u"3011", 4, u"PVM1/S", 8, Value(), 16}));
  EXPECT_EQ(Evaluate(u"=SUMIF(A1:A5,\"27*\",B1:B5)"), Value(3.0));
  EXPECT_EQ(Evaluate(u"=SUMIF($A$1:$A$5,\"pvm1/s\",B1:B5)"), Value(8.0));
  EXPECT_EQ(Evaluate(u"=SUMIF(A1:A5,\"<>27*\",B1:B5)"), Value(12.0)) << "of the cells that hold something";
  EXPECT_EQ(Evaluate(u"=SUMIF(B1:B5,\">=4\",B1:B5)"), Value(28.0));
  EXPECT_EQ(Evaluate(u"=SUMIF(B1:B5,2,B1:B5)"), Value(2.0));
  EXPECT_EQ(Evaluate(u"=SUMIF(B1:B5,\"1*\",B1:B5)"), Value(0.0)) << "numbers fit no pattern";
  EXPECT_EQ(Evaluate(u"=SUMIF(1,2,3)"), Value(ErrorValue{xlErrValue}));
  Set(u"B2", ErrorValue{xlErrNA});
  EXPECT_EQ(Evaluate(u"=SUMIF(A1:A5,\"27*\",B1:B5)"), Value(ErrorValue{xlErrNA}));
  EXPECT_EQ(Evaluate(u"=SUMIF(A1:A5,\"3*\",B1:B5)"), Value(4.0));
}

TEST_F(FormulaTest, RoundsAndChooses) {
  EXPECT_EQ(Evaluate(u"=ROUND(2.5,0)"), Value(3.0));
  EXPECT_EQ(Evaluate(u"=ROUND(-2.5,0)"), Value(-3.0));
  EXPECT_EQ(Evaluate(u"=ROUND(1.005,2)"), Value(1.01)) << "which binary digits miss by a hair";
  EXPECT_EQ(Evaluate(u"=ROUND(1234,-2)"), Value(1200.0));
  EXPECT_EQ(Evaluate(u"=ROUND(\"x\",0)"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Evaluate(u"=ROUND(1)"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Evaluate(u"=ABS(-3)+abs(4)"), Value(7.0));
  EXPECT_EQ(Evaluate(u"=IF(1=2,\"a\",\"b\")"), Value(u"b"));
  EXPECT_EQ(Evaluate(u"=IF(0=0,\"\",1/0)"), Value(u""));
  EXPECT_EQ(Evaluate(u"=IF(1/0,1,2)"), Value(ErrorValue{xlErrDiv0}));
}

TEST_F(FormulaTest, GivesErrorValues) {
  EXPECT_EQ(Evaluate(u"=1/0"), Value(ErrorValue{xlErrDiv0}));
  EXPECT_EQ(Evaluate(u"=1+\"x\""), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Evaluate(u"=1+\"2\""), Value(3.0));
  EXPECT_EQ(Evaluate(u"=A1:A2+1"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Evaluate(u"=A1:A2"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Evaluate(u"=Nosuch!A1"), Value(ErrorValue{xlErrRef}));
  EXPECT_EQ(Evaluate(u"=NOSUCH(1,2)"), Value(ErrorValue{xlErrName}));
  EXPECT_EQ(Evaluate(u"=1E300*1E300"), Value(ErrorValue{xlErrNum}));
  EXPECT_EQ(Evaluate(u"=#N/A"), Value(ErrorValue{xlErrNA}));
  EXPECT_EQ(Evaluate(u"=#REF!+1/0"), Value(ErrorValue{xlErrRef})) << "the first error counts";
  EXPECT_EQ(Evaluate(u"=\"a\"&1/0"), Value(ErrorValue{xlErrDiv0}));
  EXPECT_EQ(Evaluate(u"=1=1/0"), Value(ErrorValue{xlErrDiv0}));
}

TEST_F(FormulaTest, RefusesWhatCannotBeRead) {
  for (const char16_t* formula :
       {u"=1+", u"=(1", u"=1)", u"=\"a", u"=SUM(1", u"=SUM(1,)", u"=*1", u"=A1:", u"=1 2", u"='Sheet1!A1",
        u"=Sheet1!", u"=#WHAT", u"=1E+", u"=A1 B1", u"=?", u"=$x"}) {
    EXPECT_EQ(RaisedBy([&] { Evaluate(formula); }), 1004) << ToUtf8(formula);
  }
  EXPECT_EQ(RaisedBy([] { CheckFormula(u"=" + std::u16string(1000, u'(') + u"1"); }), 1004);
  EXPECT_EQ(At(u"IV65536"), Value()) << "a refused formula changes nothing";
}

TEST_F(FormulaTest, FollowsChanges) {
  Set(u"A1", 1);
  Set(u"A2", u"=A1*2");
  Set(u"A3", u"=A2+1");
  EXPECT_EQ(At(u"A3"), Value(3.0));
  Set(u"A1", 10);
  EXPECT_EQ(At(u"A3"), Value(21.0));
  Call(Range(u"A1"), u"ClearContents");
  EXPECT_EQ(At(u"A3"), Value(1.0));
}

TEST_F(FormulaTest, FollowsNames) {
  Set(u"A1:A2", Array::Block(2, 1, {1, 2}));
  const ObjectPtr name = Call(GetObject(workbook, u"Names"), u"Add", {u"x", u"=Sheet1!$A$1"}).ToObject();
  Set(u"B1", u"=x");
  EXPECT_EQ(At(u"B1"), Value(1.0));
  Put(name, u"RefersTo", u"=Sheet1!$A$2");
  EXPECT_EQ(At(u"B1"), Value(2.0));
  Call(name, u"Delete");
  EXPECT_EQ(At(u"B1"), Value(ErrorValue{xlErrName}));
}

TEST_F(FormulaTest, MeetsAZeroInACircle) {
  Set(u"A1", u"=A1+1");
  EXPECT_EQ(At(u"A1"), Value(1.0));
  Set(u"B1", u"=C1+1");
  Set(u"C1", u"=B1+1");
  EXPECT_EQ(At(u"B1"), Value(2.0));
  Set(u"C1", 5);
  EXPECT_EQ(At(u"B1"), Value(6.0)) << "and recovers when the circle is broken";
}

TEST_F(FormulaTest, ComputesSharedPrecedentsInAnyOrder) {
  // D1 reads B1 and C1, C1 reads B1, B1 reads A1.
  Set(u"A1", 1);
  Set(u"D1", u"=C1+B1");
  Set(u"C1", u"=B1*10");
  Set(u"B1", u"=A1+1");
  EXPECT_EQ(At(u"D1"), Value(22.0));
  Set(u"D1", u"=B1+C1");
  EXPECT_EQ(At(u"D1"), Value(22.0));
}

TEST_F(FormulaTest, ComputesAChainAsLongAsTheSheet) {
  std::vector<Value> formulas{1};
  for (int row = 1; row < kRowCount; ++row) formulas.push_back(u"=A" + NumberText(row) + u"+1");
  Set(u"A:A", Array::Block(kRowCount, 1, std::move(formulas)));
  EXPECT_EQ(At(u"A65536"), Value(65536.0));
}

TEST_F(FormulaTest, KeepsDatesThatItOnlyPassesOn) {
  Set(u"A1", Date{45455});
  EXPECT_EQ(Evaluate(u"=\"x\"&A1"), Value(u"x45455")) << "a formula knows the number alone";
  EXPECT_EQ(Evaluate(u"=A1:A2"), Value(ErrorValue{xlErrValue}));
  EXPECT_EQ(Get(Range(u"IV65536"), u"NumberFormat"), Value(u"General"));
  EXPECT_EQ(Evaluate(u"=A1"), Value(Date{45455}));
  Put(Range(u"B1"), u"NumberFormat", u"0");
  Set(u"B1", u"=A1");
  EXPECT_EQ(At(u"B1"), Value(45455.0)) << "a cell keeps a format of its own";
}

TEST_F(FormulaTest, RenamesSheetsWhereTheyAreMentioned) {
  EXPECT_EQ(RenameSheetIn(u"=Sheet1!A1+sheet1!B1+'Sheet1'!C1", u"Sheet1", u"Mano lapas"),
            u"='Mano lapas'!A1+'Mano lapas'!B1+'Mano lapas'!C1");
  EXPECT_EQ(RenameSheetIn(u"=MySheet1!A1&\"Sheet1!A1\"", u"Sheet1", u"X"), u"=MySheet1!A1&\"Sheet1!A1\"");
  EXPECT_EQ(RenameSheetIn(u"='It''s'!A1", u"It's", u"Its"), u"=Its!A1");
}

}  // namespace
}  // namespace qva::memory
