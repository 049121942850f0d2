// CReports: what ClearFormulas makes of the formulas.
#include "tests/reports/formulas_fixture.h"

namespace qva {
namespace {

TEST_F(Formulas, BecomeTheirValues) {
  Set(u"A1", 5);
  Set(u"B1", u"=A1*2");
  Set(u"B2", u"=B1+1");
  Set(u"B3", u"=\"ą\"&\"č\"");
  Clear(u"A1:B3");
  EXPECT_EQ(FormulaOf(u"B1"), u"10");
  EXPECT_EQ(At(u"B1"), Value(10.0));
  EXPECT_EQ(At(u"B2"), Value(11.0));
  EXPECT_EQ(FormulaOf(u"B3"), u"ąč");
  Set(u"A1", 100);
  EXPECT_EQ(At(u"B2"), Value(11.0)) << "nothing is computed any more";
}

TEST_F(Formulas, ThatYieldTheEmptyTextLeaveAnEmptyCell) {
  Set(u"A1", u"=\"\"");
  Clear(u"A1");
  EXPECT_EQ(At(u"A1"), Value());
  EXPECT_EQ(FormulaOf(u"A1"), u"");
}

TEST_F(Formulas, ThatYieldAnErrorKeepItAsAValue) {
  Set(u"A1", u"=1/0");
  Clear(u"A1");
  EXPECT_EQ(At(u"A1"), Value(ErrorValue{xlErrDiv0}));
  EXPECT_EQ(FormulaOf(u"A1"), u"#DIV/0!");
}

TEST_F(Formulas, ThatYieldATextLikeSomethingElseStayThatText) {
  const char16_t* const texts[] = {u"007",  u"1/4",  u"5%",  u"12:30", u"2024-06-12", u"1e5",  u"TRUE",
                                   u"#N/A", u"=1+1", u"'=a", u"'",     u"-5",         u"a = b"};
  std::int32_t row = 1;
  for (const char16_t* text : texts) {
    Set(u"A" + NumberText(row), u"=\"" + std::u16string(text) + u"\"");
    Set(u"B" + NumberText(row), u"=A" + NumberText(row) + u"&\"x\"");
    Put(Cells(u"C" + NumberText(row)), u"Formula", u"=\"" + std::u16string(text) + u"\"");
    Put(Cells(u"C" + NumberText(row++)), u"NumberFormat", u"@");
  }
  for (int time = 1; time <= 2; ++time) {
    Clear(u"A1:C13");
    row = 1;
    for (const char16_t* text : texts) {
      EXPECT_EQ(At(u"A" + NumberText(row)), Value(text));
      EXPECT_EQ(At(u"B" + NumberText(row)), Value(std::u16string(text) + u"x"));
      EXPECT_EQ(At(u"C" + NumberText(row++)), Value(text)) << "in a cell of texts";
    }
  }
}

TEST_F(Formulas, OfCurrencyAndDatesKeepAllDigits) {
  Set(u"A1", u"=1/3");
  Put(Cells(u"A1"), u"NumberFormat", u"#,##0.00 €");
  ASSERT_EQ(At(u"A1"), Value(Currency{3333})) << "which has four decimals";
  Set(u"B1", Date{45455.1234567891});
  Set(u"A2", u"=B1");
  Clear(u"A1:A2");
  EXPECT_EQ(Get(Cells(u"A1"), u"Value2"), Value(1.0 / 3));
  EXPECT_EQ(Get(Cells(u"A1"), u"NumberFormat"), Value(u"#,##0.00 €"));
  EXPECT_EQ(Get(Cells(u"A2"), u"Value2"), Value(45455.1234567891));
}

TEST_F(Formulas, OfTruthStayTruth) {
  Set(u"A1", u"=1=1");
  Set(u"A2", u"=1=2");
  Clear(u"A1:A2");
  EXPECT_EQ(At(u"A1"), Value(true));
  EXPECT_EQ(At(u"A2"), Value(false));
}

TEST_F(Formulas, InCellsOfTextsKeepTheFormatAndTheKindOfTheirValue) {
  const char16_t* const formulas[] = {u"=1+1", u"=1=1", u"=1/0", u"=\"\"", u"=\"ą\""};
  std::int32_t row = 1;
  for (const char16_t* formula : formulas) {
    Set(u"A" + NumberText(row), formula);
    Put(Cells(u"A" + NumberText(row++)), u"NumberFormat", u"@");
  }
  Put(Cells(u"B1"), u"Formula", u"=1+2");
  for (const char16_t* area : {u"A1:A2", u"A1:B5"}) {
    Clear(area);  // once the one format of all, once differing ones
    EXPECT_EQ(At(u"A1"), Value(2.0));
    EXPECT_EQ(At(u"A2"), Value(true));
  }
  EXPECT_EQ(At(u"A3"), Value(ErrorValue{xlErrDiv0}));
  EXPECT_EQ(At(u"A4"), Value());
  EXPECT_EQ(At(u"A5"), Value(u"ą"));
  EXPECT_EQ(At(u"B1"), Value(3.0));
  EXPECT_EQ(Get(Cells(u"A1:A5"), u"NumberFormat"), Value(u"@"));
}

TEST_F(Formulas, OfAnArrayAreFrozenTogether) {
  Set(u"A1:A3", Array::Block(3, 1, {1, 2, 3}));
  Put(Cells(u"B1:B3"), u"FormulaArray", u"=A1:A3*2");
  Put(Cells(u"C2"), u"FormulaArray", u"=SUM(A1:A3)");
  Put(Cells(u"D1:E2"), u"FormulaArray", u"=\"007\"");
  Set(u"C1", u"=A1+1");
  Clear(u"A1:E3");
  Set(u"A1:A3", 0);
  EXPECT_EQ(At(u"B1"), Value(2.0));
  EXPECT_EQ(At(u"B3"), Value(6.0));
  EXPECT_EQ(At(u"C1"), Value(2.0));
  EXPECT_EQ(At(u"C2"), Value(6.0));
  EXPECT_EQ(At(u"E2"), Value(u"007"));
  EXPECT_EQ(Get(Cells(u"A1:E3"), u"HasArray"), Value(false));
  Set(u"B2", 9);
  EXPECT_EQ(At(u"B2"), Value(9.0)) << "the cells are free";
}

TEST_F(Formulas, OfAnArrayThatGoesBeyondTheAreaRefuseTheWhole) {
  Set(u"A1", u"=1+1");
  Put(Cells(u"B1:B3"), u"FormulaArray", u"=A1:A3*2");
  Put(Workbook(), u"Saved", true);
  for (const char16_t* area : {u"A1:B2", u"B2", u"B2:C3"}) {
    EXPECT_EQ(RaisedBy([&] { Clear(area); }), kApplicationDefined);
    EXPECT_EQ(FormulaOf(u"A1"), u"=1+1");
    EXPECT_EQ(Get(Cells(u"B1:B3"), u"HasArray"), Value(true));
    EXPECT_EQ(At(u"B1"), Value(4.0));
    EXPECT_EQ(Get(Workbook(), u"Saved"), Value(true));
  }
}

TEST_F(Formulas, OutsideOfTheAreaStay) {
  Set(u"A1", 5);
  Set(u"A2", u"=A1");
  Set(u"B2", u"=A1");
  Clear(u"A1:A2");
  EXPECT_EQ(FormulaOf(u"A2"), u"5");
  EXPECT_EQ(FormulaOf(u"B2"), u"=A1");
}

TEST_F(Formulas, ConstantsWithoutAnEqualsSignAreNotWritten) {
  const Value constants[] = {12.5, u"tekstas", true, Date{45000}, Value()};
  std::int32_t row = 1;
  for (const Value& constant : constants) Set(u"A" + NumberText(row++), constant);
  Put(Workbook(), u"Saved", true);
  Clear(u"A1:A5");
  EXPECT_EQ(Get(Workbook(), u"Saved"), Value(true));
  row = 1;
  for (const Value& constant : constants) EXPECT_EQ(At(u"A" + NumberText(row++)), constant);
}

TEST_F(Formulas, ATextWithAnEqualsSignIsWrittenAnew) {
  Set(u"A1", u"a = b");
  Put(Workbook(), u"Saved", true);
  Clear(u"A1");
  EXPECT_EQ(At(u"A1"), Value(u"a = b"));
  EXPECT_EQ(Get(Workbook(), u"Saved"), Value(false));
}

TEST_F(Formulas, ATextThatBeginsWithAnEqualsSignStaysThatText) {
  Set(u"A1", 5);
  Set(u"B1", u"'=A1");
  Set(u"B2", u"'=");
  Set(u"B3", u"=\"=\"&\"A1\"");
  ASSERT_EQ(FormulaOf(u"B1"), u"=A1") << "which looks like a formula";
  Put(Workbook(), u"Saved", true);
  Clear(u"B1");
  EXPECT_EQ(Get(Workbook(), u"Saved"), Value(false)) << "it is written anew";
  for (int time = 1; time <= 2; ++time) {
    Clear(u"B1:B3");
    EXPECT_EQ(At(u"B1"), Value(u"=A1"));
    EXPECT_EQ(At(u"B2"), Value(u"="));
    EXPECT_EQ(At(u"B3"), Value(u"=A1")) << "what a formula yields is no formula either";
  }
}

TEST_F(Formulas, OfABlockBecomeTheValuesOfTheirOwnCells) {
  for (std::int32_t row = 1; row <= 3; ++row) {
    Set(u"A" + NumberText(row), u"=" + NumberText(row * 10) + u"+1");
    Set(u"B" + NumberText(row), row);
    Set(u"C" + NumberText(row), u"=B" + NumberText(row) + u"*100");
  }
  Clear(u"A1:C3");
  for (std::int32_t row = 1; row <= 3; ++row) {
    EXPECT_EQ(FormulaOf(u"A" + NumberText(row)), NumberText(row * 10 + 1));
    EXPECT_EQ(FormulaOf(u"B" + NumberText(row)), NumberText(row));
    EXPECT_EQ(FormulaOf(u"C" + NumberText(row)), NumberText(row * 100));
  }
}

TEST_F(Formulas, FormatsOfTheCellsStay) {
  Set(u"A1", u"=1+1");
  Put(Cells(u"A1"), u"NumberFormat", u"0.00");
  Put(GetObject(Cells(u"A1"), u"Interior"), u"ColorIndex", 6);
  Clear(u"A1");
  EXPECT_EQ(Get(Cells(u"A1"), u"NumberFormat"), Value(u"0.00"));
  EXPECT_EQ(Get(GetObject(Cells(u"A1"), u"Interior"), u"ColorIndex"), Value(6));
}

TEST_F(Formulas, OfEveryAreaOfARangeAreCleared) {
  Set(u"A1", u"=1");
  Set(u"B1", u"=2");
  Set(u"C3", u"=3");
  Clear(u"A1,C1:C3");
  EXPECT_EQ(FormulaOf(u"A1"), u"1");
  EXPECT_EQ(FormulaOf(u"B1"), u"=2");
  EXPECT_EQ(FormulaOf(u"C3"), u"3");
}

TEST_F(Formulas, OfWholeColumnsAndOfTheWholeSheetAreCleared) {
  Set(u"A1", u"=1");
  Set(u"B65536", u"=2");
  Set(u"IV65536", u"=3");
  Clear(u"A:B");
  EXPECT_EQ(FormulaOf(u"A1"), u"1");
  EXPECT_EQ(FormulaOf(u"B65536"), u"2");
  Call(reports, u"ClearFormulas",
       {Traced(GetObject(GetObject(Sheet(), u"Columns"), u"Columns", {u"IV"}), u"Column")});
  EXPECT_EQ(FormulaOf(u"IV65536"), u"3") << "a range that counts columns instead of cells";
  // On a sheet of its own, whose used part is not the whole of it: that would take minutes.
  const ObjectPtr other = Sheet(2);
  for (const std::u16string_view corner : {u"C7", u"IV600"}) {
    Put(GetObject(other, u"Range", {corner}), u"Value", u"=2+1");
  }
  Call(reports, u"ClearFormulas", {GetObject(other, u"Cells")});
  for (const std::u16string_view corner : {u"C7", u"IV600"}) {
    EXPECT_EQ(Get(GetObject(other, u"Range", {corner}), u"Formula"), Value(u"3"));
  }
}

TEST_F(Formulas, OfAWholeSheetAreSoughtInItsUsedPart) {
  Set(u"C3:D4", 5);
  Set(u"D4", u"=1");
  for (const char16_t* area : {u"A:IV", u"4:65536", u"D2:IV65536"}) {
    Set(u"D4", u"=1");
    StartOver();
    Clear(area);
    EXPECT_EQ(FormulaOf(u"D4"), u"1") << ToUtf8(area);
    EXPECT_EQ(count.calls(), 6 + 10 + 2 + 3 + 2) << ToUtf8(area);
  }
  StartOver();
  Clear(u"F1:IV65536");
  EXPECT_EQ(count.calls(), 6 + 10) << "beyond the used part nothing is read";
}

TEST_F(Formulas, OnAProtectedSheetRaiseExcelsRefusal) {
  Set(u"A1", u"=1");
  Call(Sheet(), u"Protect");
  EXPECT_EQ(RaisedBy([&] { Clear(u"A1"); }), kApplicationDefined);
  EXPECT_EQ(FormulaOf(u"A1"), u"=1");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Formulas, InCellsOfTextsStayWhereAProtectedSheetKeepsTheFormat) {
  Set(u"A1", u"=1+1");
  Set(u"A2", u"=1+1");
  Put(Cells(u"B1:B2"), u"FormulaArray", u"=1+1");
  for (const char16_t* cells : {u"A1", u"B1:B2"}) Put(Cells(cells), u"NumberFormat", u"@");
  Put(Cells(u"A1:B2"), u"Locked", false);
  Call(Sheet(), u"Protect");
  for (const char16_t* area : {u"A1", u"B1:B2"}) {
    EXPECT_EQ(RaisedBy([&] { Clear(area); }), kApplicationDefined);
  }
  Clear(u"A2");
  EXPECT_EQ(FormulaOf(u"A1"), u"=1+1");
  EXPECT_EQ(FormulaOf(u"A2"), u"2") << "whose format need not be changed";
  EXPECT_EQ(FormulaOf(u"B1"), u"=1+1");
  EXPECT_EQ(Get(Cells(u"B1:B2"), u"HasArray"), Value(true));
}

TEST_F(Formulas, OfNothingRaiseObjectNotSet) {
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"ClearFormulas", {Nothing()}); }), kObjectNotSet);
}

TEST_F(Formulas, OfARectangleKeepTheKindOfEachValue) {
  struct Kind {
    const char16_t* formula;
    Value value;
  };
  const Kind kinds[] = {{u"=1+1", 2.0},
                        {u"=1=1", true},
                        {u"=1=2", false},
                        {u"=\"ąč x\"", u"ąč x"},
                        {u"=\"a = b\"", u"a = b"},
                        {u"=\"007\"", u"007"},
                        {u"=\"-5\"", u"-5"},
                        {u"=\"5%\"", u"5%"},
                        {u"=\"12-Jun\"", u"12-Jun"},
                        {u"=\"true\"", u"true"},
                        {u"=\" False \"", u" False "},
                        {u"=\"=A1\"", u"=A1"},
                        {u"=\"'a\"", u"'a"},
                        {u"=\"+a\"", u"+a"},
                        {u"=\"^a\"", u"^a"},
                        {u"=\"#N/A\"", u"#N/A"},
                        {u"=\" \"", u" "},
                        {u"=\"\"", Value()},
                        {u"=1/0", ErrorValue{xlErrDiv0}}};
  const auto rows = static_cast<std::int32_t>(std::size(kinds));
  for (const char16_t* format : {u"General", u"0.00", u"@", u"m/d/yyyy"}) {
    for (std::int32_t row = 1; row <= rows; ++row) {
      // Each kind has each other one below it, in one of the columns, and plain ones around.
      for (std::int32_t column = 1; column <= rows; ++column) {
        const ObjectPtr cell = GetObject(Sheet(), u"Cells", {row, column});
        Put(cell, u"NumberFormat", u"General");
        Put(cell, u"Formula", kinds[(row * column) % rows].formula);
        Put(cell, u"NumberFormat", format);
      }
    }
    Call(reports, u"ClearFormulas", {Traced(GetObject(Cells(u"A1"), u"Resize", {rows, rows}), u"Range")});
    for (std::int32_t row = 1; row <= rows; ++row) {
      for (std::int32_t column = 1; column <= rows; ++column) {
        const ObjectPtr cell = GetObject(Sheet(), u"Cells", {row, column});
        const Kind& kind = kinds[(row * column) % rows];
        EXPECT_EQ(Get(cell, u"Value2"), kind.value) << ToUtf8(kind.formula) << " in " << ToUtf8(format);
        EXPECT_EQ(Get(cell, u"NumberFormat"), Value(format));
      }
    }
  }
}

TEST_F(Formulas, OfTextsTooLongForABlockStayThem) {
  const std::u16string longest(911, u'a');
  Set(u"A1", longest);
  Set(u"A2", longest + u"a");
  Set(u"B1", u"=A1");
  Set(u"B2", u"=A2");
  Clear(u"B1:B2");
  EXPECT_EQ(count.calls(), 10 + 2 + 3) << "the longer one goes by itself";
  EXPECT_EQ(At(u"B1"), Value(longest));
  EXPECT_EQ(At(u"B2"), Value(longest + u"a"));
}

TEST_F(Formulas, OfTextsInWhichSomethingMayBeReadGoOneByOne) {
  const char16_t* const texts[] = {u"Jun 12", u"kovo 5", u"A1",  u"a\nb", u"x\uFF11",
                                   u"(a",     u"-",      u"\"a", u"true", u" FALSE"};
  for (const char16_t* text : texts) {
    Set(u"A1", u"'" + std::u16string(text));
    Set(u"B1", u"=A1");
    StartOver();
    Clear(u"B1");
    EXPECT_EQ(count.calls(), 10 + 3) << ToUtf8(text);
    EXPECT_EQ(At(u"B1"), Value(text));
  }
  for (const char16_t* text : {u"Iš jų: „a“ – 'b' (c), d = e", u"Žemė", u" Суммa", u"a€", u"untrue"}) {
    Set(u"A1", u"'" + std::u16string(text));
    Set(u"B1", u"=A1");
    StartOver();
    Clear(u"B1");
    EXPECT_EQ(count.calls(), 10 + 2) << ToUtf8(text);
    EXPECT_EQ(At(u"B1"), Value(text));
  }
}

TEST_F(Formulas, ThatYieldErrorsGoOneByOne) {
  Set(u"A1:A3", u"=1/0");
  StartOver();
  Clear(u"A1:A3");  // no block of LibreOffice's holds an error
  EXPECT_EQ(count.calls(), 10 + 3 * 3);
  EXPECT_EQ(At(u"A3"), Value(ErrorValue{xlErrDiv0}));
}

TEST_F(Formulas, OfTextsGoTogetherOnlyWhileEachCharacterIsHarmless) {
  const auto goes_by_itself = [&](const std::u16string& text) {
    Set(u"A1", u"'" + text);
    Set(u"B1", u"=A1");
    StartOver();
    Clear(u"B1");
    EXPECT_EQ(At(u"B1"), Value(text));
    return count.calls() == 10 + 3;
  };
  for (const char16_t c : {u'A', u'Z', u'a', u'z', u'\u00C0', u'\u052F'}) {
    EXPECT_FALSE(goes_by_itself({c, u'b'})) << static_cast<int>(c);
  }
  for (const char16_t c : {u'@', u'[', u'`', u'{', u'\u00BF', u'\u0530', u'\u2010', u'€'}) {
    EXPECT_TRUE(goes_by_itself({c, u'b'})) << static_cast<int>(c);
  }
  for (const char16_t c : {u' ', u'!', u'/', u':', u'~', u'\u2010', u'\u2027', u'€'}) {
    EXPECT_FALSE(goes_by_itself({u'a', c, u'b'})) << static_cast<int>(c);
  }
  for (const char16_t c : {u'\x1F', u'0', u'9', u'\x7F', u'\u00BF', u'\u0530', u'\u200F', u'\u2028'}) {
    EXPECT_TRUE(goes_by_itself({u'a', c, u'b'})) << static_cast<int>(c);
  }
}

TEST_F(Formulas, OfMergedCellsLeaveThemMerged) {
  Set(u"A1:A3", u"=1+1");
  for (const char16_t* cells : {u"A1:B1", u"A2:B2", u"A3:C3"}) Call(Cells(cells), u"Merge");
  Clear(u"A1:C3");
  EXPECT_EQ(FormulaOf(u"A3"), u"2");
  EXPECT_EQ(At(u"B2"), Value());
  EXPECT_EQ(Get(Cells(u"A1:B2"), u"MergeCells"), Value(true));
}

TEST_F(Formulas, GetTheValuesThatTheyHadBeforeAnyWasFrozen) {
  Set(u"A1", u"=\"\"");
  Set(u"B1", u"=A1+1");
  ASSERT_EQ(At(u"B1"), Value(ErrorValue{xlErrValue}));
  Clear(u"A1:B1");
  EXPECT_EQ(At(u"A1"), Value());
  EXPECT_EQ(At(u"B1"), Value(ErrorValue{xlErrValue})) << "which was a sum with the empty text";
}

TEST_F(Formulas, OfOtherAreasAndArraysGetTheValuesThatTheyHadBeforeAnyWasFrozen) {
  Set(u"A1", u"=\"\"");
  Set(u"C1", u"=A1+1");
  Put(Cells(u"E1:E2"), u"FormulaArray", u"=A1+1");
  const Value error = ErrorValue{xlErrValue};
  ASSERT_EQ(At(u"E2"), error);
  Clear(u"A1,C1,E1:E2");
  EXPECT_EQ(At(u"A1"), Value());
  EXPECT_EQ(At(u"C1"), error);
  EXPECT_EQ(At(u"E2"), error);
}

}  // namespace
}  // namespace qva
