// CReports: ClearFormulas.
#include "tests/reports/report_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

/// A range of several rectangles, which the in-memory Excel does not model.
class SeveralAreas : public Described<SeveralAreas> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription description = ClassBuilder(u"Areas", "")
                                                    .Get<&SeveralAreas::This>(u"Areas")
                                                    .Get<&SeveralAreas::Count>(u"Count")
                                                    .Get<&SeveralAreas::Item>(u"Item", {{u"Index"}});
    return description;
  }
  explicit SeveralAreas(std::vector<ObjectPtr> areas) : areas_(std::move(areas)) {}

 private:
  ObjectPtr This() { return ObjectPtr(this); }
  std::int32_t Count() { return static_cast<std::int32_t>(areas_.size()); }
  ObjectPtr Item(std::int32_t index) { return areas_.at(static_cast<std::size_t>(index) - 1); }

  std::vector<ObjectPtr> areas_;
};

class Formulas : public ReportTest {
 protected:
  void Clear(std::u16string_view address) { Call(reports, u"ClearFormulas", {TracedCells(address)}); }
  std::u16string FormulaOf(std::u16string_view address) const {
    return Get(Cells(address), u"Formula").ToText();
  }
};

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

TEST_F(Formulas, ThatYieldATextLikeANumberBecomeANumber) {
  Set(u"A1", u"=\"007\"");
  Set(u"A2", u"=A1&\"x\"");
  Clear(u"A1:A2");
  EXPECT_EQ(At(u"A1"), Value(7.0)) << "as Excel reads what is entered";
  EXPECT_EQ(At(u"A2"), Value(u"7x")) << "each value is taken in its turn";
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
  Call(reports, u"ClearFormulas",
       {MakeRef<SeveralAreas>(std::vector<ObjectPtr>{Cells(u"A1"), Cells(u"C1:C3")})});
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
}

TEST_F(Formulas, OnAProtectedSheetRaiseExcelsRefusal) {
  Set(u"A1", u"=1");
  Call(Sheet(), u"Protect");
  EXPECT_EQ(ErrorNumberOf([&] { Clear(u"A1"); }), kApplicationDefined);
  EXPECT_EQ(FormulaOf(u"A1"), u"=1");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Formulas, OfNothingRaiseObjectNotSet) {
  EXPECT_EQ(ErrorNumberOf([&] { Call(reports, u"ClearFormulas", {Nothing()}); }), kObjectNotSet);
}

// --- Cost
// -----------------------------------------------------------------------------------------------------

const char* const kOneCell[] = {"Range.Areas",
                                "Range.Areas.Count -> 1",
                                "Range.Rows",
                                "Range.Rows.Count -> 1",
                                "Range.Columns",
                                "Range.Columns.Count -> 1",
                                "Range.Formula -> \"=1+1\"",
                                "Range.Value -> 2",
                                "Range.FormulaLocal = \"\"",
                                "Range.Value = 2"};

TEST_F(Formulas, OfOneCellCostTenCalls) {
  Set(u"A1", u"=1+1");
  Clear(u"A1");
  EXPECT_THAT(trace.lines(), testing::ElementsAreArray(kOneCell));
}

TEST_F(Formulas, CellsWithoutFormulasCostSevenCallsHoweverManyTheyAre) {
  for (const auto* area : {u"A1", u"A1:A1000", u"A1:J10000"}) {
    Set(area, 1);
    StartOver();
    Clear(area);
    EXPECT_EQ(count.calls(), 7) << ToUtf8(area);
  }
}

TEST_F(Formulas, EachChangedCellCostsFourCalls) {
  Set(u"A1:A1000", 1);
  for (const std::int32_t row : {1, 500, 1000}) Set(u"A" + NumberText(row), u"=1+1");
  StartOver();
  Clear(u"A1:A1000");
  EXPECT_EQ(count.calls(), 7 + 3 * 4);
  EXPECT_EQ(At(u"A500"), Value(2.0));

  Set(u"A1:A1000", u"=1+1");
  StartOver();
  Clear(u"A1:A1000");
  EXPECT_EQ(count.calls(), 7 + 1000 * 4);
}

TEST_F(Formulas, OfAHundredThousandCellsCostWhatChanges) {
  Set(u"A1:J10000", 1);
  Set(u"J1:J1000", u"=1+1");
  StartOver();
  Clear(u"A1:J10000");
  EXPECT_EQ(count.calls(), 7 + 1000 * 4);
  EXPECT_EQ(FormulaOf(u"J1000"), u"2");
}

TEST_F(Formulas, AreReadInBlocksWhereACellByCellReadWouldNotFitIntoMemory) {
  Set(u"C65536", u"=1");
  StartOver();
  Clear(u"A:C");  // 196 608 cells: two blocks, each of three more calls to find it
  EXPECT_EQ(count.calls(), 6 + 2 * 3 + 4);
  EXPECT_EQ(FormulaOf(u"C65536"), u"1");
}

TEST_F(Formulas, KeepWhatWasDoneBeforeACallThatFails) {
  const long live = Object::LiveCount();
  for (long n = 1; n <= 16; ++n) {
    SCOPED_TRACE(n);
    const ObjectPtr fresh = Create(u"CReports");
    Set(u"A1:A2", u"=1+1");
    const ObjectPtr area = TracedCells(u"A1:A2");
    StartOver(n);
    const std::int32_t raised = ErrorNumberOf([&] { Call(fresh, u"ClearFormulas", {area}); });
    EXPECT_EQ(failure.has_failed(), n <= 15);
    failure.Reset(0);
    EXPECT_EQ(raised, n <= 15 ? kAutomationFailed : 0);
    // Calls 8 to 11 are those of the first cell, 12 to 15 those of the second.
    EXPECT_EQ(FormulaOf(u"A1"), n <= 10 ? u"=1+1" : n == 11 ? u"" : u"2");
    EXPECT_EQ(FormulaOf(u"A2"), n <= 14 ? u"=1+1" : n == 15 ? u"" : u"2");
  }
  EXPECT_EQ(Object::LiveCount(), live);
}

}  // namespace
}  // namespace qva
