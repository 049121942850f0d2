// CReports: the calls of ClearFormulas, their number, and what becomes of the formulas where one fails.
#include <limits>

#include "tests/reports/formulas_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

/// An object that answers like a range, but not as one does.
class LooksLikeARange : public Described<LooksLikeARange> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"LooksLikeARange", "")
        .Get<&LooksLikeARange::This>(u"Areas")
        .Get<&LooksLikeARange::This>(u"Worksheet")
        .Get<&LooksLikeARange::This>(u"UsedRange")
        .Get<&LooksLikeARange::Rows>(u"Rows")
        .Get<&LooksLikeARange::Columns>(u"Columns")
        .Get<&LooksLikeARange::Cells>(u"Cells", {{u"Row"}, {u"Column"}})
        .Get<&LooksLikeARange::Part>(u"Range", {{u"Cell1"}})
        .Property<&LooksLikeARange::count>(u"Count")
        .Property<&LooksLikeARange::first>(u"Row")
        .Property<&LooksLikeARange::first>(u"Column")
        .Property<&LooksLikeARange::formula>(u"Formula")
        .Property<&LooksLikeARange::values>(u"Value2")
        .Property<&LooksLikeARange::format>(u"NumberFormat")
        .Property<&LooksLikeARange::formula>(u"FormulaLocal")
        .Property<&LooksLikeARange::formula>(u"Value")
        .Property<&LooksLikeARange::has_array>(u"HasArray");
  }
  std::int32_t count = 1;
  std::int32_t first = 1;
  std::int32_t rows = 1;
  std::int32_t columns = 1;
  Value formula;
  Value values;
  Value format = u"General";
  Value has_array = false;

 private:
  static ObjectPtr Units(std::int32_t number) {
    auto units = MakeRef<LooksLikeARange>();
    units->count = number;
    return units;
  }
  ObjectPtr This() { return ObjectPtr(this); }
  ObjectPtr Rows() { return Units(rows); }
  ObjectPtr Columns() { return Units(columns); }
  ObjectPtr Cells(std::int32_t, std::int32_t) { return ObjectPtr(this); }
  ObjectPtr Part(const std::u16string&) { return ObjectPtr(this); }
};

/// A range of an array formula in another spelling than its own: how it is given, and how it is entered. So
/// do those that it leads to.
class Spelled : public Object {
 public:
  Spelled(ObjectPtr inner, std::u16string_view given, std::u16string_view entered)
      : inner_(std::move(inner)), given_(given), entered_(entered) {}

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override {
    if (member == u"FormulaArray" && access == Access::Put) {
      EXPECT_EQ(arguments.positional.front(), Value(entered_));
      Arguments own{u"=1+1"};
      return inner_->Invoke(access, member, own);
    }
    const Value result = inner_->Invoke(access, member, arguments);
    if (result.Is(Value::Type::Object) && !result.IsNothing()) {
      return ObjectPtr(MakeRef<Spelled>(result.ToObject(), given_, entered_));
    }
    if (member != u"Formula" || access != Access::Get) return result;
    if (result.Is(Value::Type::Text)) return given_;
    Array block = result.ToArray();
    for (Value& formula : block.elements) formula = given_;
    return block;
  }
  std::u16string TypeName() const override { return inner_->TypeName(); }

 private:
  ObjectPtr inner_;
  std::u16string given_;
  std::u16string entered_;
};

TEST_F(Formulas, OfAnObjectThatOnlyLooksLikeARangeRaiseAnError) {
  const auto raised = [&](std::int32_t rows, std::int32_t columns, const Value& formula) {
    auto range = MakeRef<LooksLikeARange>();
    range->rows = rows;
    range->columns = columns;
    range->formula = formula;
    return RaisedBy([&] { Call(reports, u"ClearFormulas", {ObjectPtr(range)}); });
  };
  EXPECT_EQ(raised(1, 1, u"1"), 0) << "which would do";
  const Value one = Array::Block(1, 1, {u"=1"});
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(raised(1, count, one), kTypeMismatch) << count;
    EXPECT_EQ(raised(count, 1, one), kTypeMismatch) << count;
  }
  EXPECT_EQ(raised(0, 1, Array::Block(0, 1, {})), kTypeMismatch) << "though it gives what it has";
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(raised(most, most, one), kTypeMismatch);
  EXPECT_EQ(raised(most, 1, one), kTypeMismatch);
  for (const Value& formulas :
       {Value(Array{}), Array::Of({u"=1", u"=1"}), Array::Block(2, 1, {u"=1", u"=1"}),
        Array::Block(1, 3, {u"=1", u"=1", u"=1"}), Value(Array{{{1, 1}, {1, 1}, {1, 2}}, {u"=1", u"=1"}}),
        Value(u"=1"), Value()}) {
    EXPECT_EQ(raised(1, 2, formulas), kTypeMismatch) << testing::PrintToString(formulas);
  }
}

TEST_F(Formulas, OfAnObjectThatGivesFewerValuesThanCellsRaiseAnError) {
  auto range = MakeRef<LooksLikeARange>();
  range->columns = 2;
  const Value formulas = Array::Block(1, 2, {u"=1", u"=1"});
  for (const Value& values : {Value(1.0), Value(), Array::Of({1.0, 1.0}), Array::Block(1, 1, {1.0})}) {
    range->formula = formulas;
    range->values = values;
    EXPECT_EQ(RaisedBy([&] { Call(reports, u"ClearFormulas", {ObjectPtr(range)}); }), kTypeMismatch);
    EXPECT_EQ(range->formula, formulas) << "nothing was changed";
  }
}

TEST_F(Formulas, OfACellThatDoesNotTellItsFormatAreWrittenAsOfAnyOther) {
  auto range = MakeRef<LooksLikeARange>();
  range->formula = u"=1";
  range->values = 1.0;
  range->format = Null{};
  Call(reports, u"ClearFormulas", {ObjectPtr(range)});
  EXPECT_TRUE(range->values.Is(Value::Type::Array)) << "as a block";
}

// --- Cost

const char* const kOneCell[] = {"Range.Areas",
                                "Range.Areas.Count -> 1",
                                "Range.Rows",
                                "Range.Rows.Count -> 1",
                                "Range.Columns",
                                "Range.Columns.Count -> 1",
                                "Range.Formula -> \"=1+1\"",
                                "Range.HasArray -> False",
                                "Range.Value2 -> 2",
                                "Range.NumberFormat -> \"General\"",
                                "Range.Range(\"A1:A1\")",
                                "Range.Range(\"A1:A1\").Value2 = Array(2)"};

TEST_F(Formulas, OfOneCellCostTwelveCalls) {
  Set(u"A1", u"=1+1");
  Clear(u"A1");
  EXPECT_THAT(trace.lines(), testing::ElementsAreArray(kOneCell));
}

TEST_F(Formulas, OfACellOfTextsAreReplacedWhileItsFormatIsGeneral) {
  Set(u"A1", u"=1+1");
  Put(Cells(u"A1"), u"NumberFormat", u"@");
  StartOver();
  Clear(u"A1");
  EXPECT_THAT(trace.Text(), testing::EndsWith("Range.Cells(1, 1).NumberFormat = \"General\"\n"
                                              "Range.Cells(1, 1).FormulaLocal = \"\"\n"
                                              "Range.Cells(1, 1).Value = 2\n"
                                              "Range.Cells(1, 1).NumberFormat = \"@\"\n"));
}

TEST_F(Formulas, CellsWithoutFormulasCostSevenCallsHoweverManyTheyAre) {
  for (const auto* area : {u"A1", u"A1:A1000", u"A1:J10000"}) {
    Set(area, 1);
    StartOver();
    Clear(area);
    EXPECT_EQ(count.calls(), 7) << ToUtf8(area);
  }
}

TEST_F(Formulas, EachRectangleCostsTwoCalls) {
  Set(u"A1:J100", 1);
  for (const char16_t* cells : {u"B2", u"D2:D50", u"F2:H50", u"F60:H60"}) Set(cells, u"=1+1");
  StartOver();
  Clear(u"A1:J100");
  EXPECT_EQ(count.calls(), 10 + 4 * 2);
  EXPECT_EQ(FormulaOf(u"H50"), u"2");

  Set(u"A1:J10000", u"=1+1");
  StartOver();
  Clear(u"A1:J10000");
  EXPECT_EQ(count.calls(), 10 + 2);
  EXPECT_EQ(FormulaOf(u"J10000"), u"2");
}

TEST_F(Formulas, WhereFormatsDifferEachPartOfOneFormatCostsTwoCallsMore) {
  Set(u"A1:D100", u"=1+1");
  Put(Cells(u"A1:B100"), u"NumberFormat", u"0.00");
  Put(Cells(u"D50"), u"NumberFormat", u"@");
  StartOver();
  Clear(u"A1:B100");
  EXPECT_EQ(count.calls(), 10 + 2);
  Set(u"A1:B100", u"=1+1");
  StartOver();
  Clear(u"A1:D100");
  // Asked for are A:D, A:B, C:D, C and D, then seven times the halves of what holds D50, which costs six
  // calls by itself. Around it are three rectangles.
  EXPECT_EQ(count.calls(), 10 + 2 * (5 + 7 * 2) + 3 * 2 + 6);
  EXPECT_EQ(At(u"D50"), Value(2.0));
  EXPECT_EQ(At(u"D100"), Value(2.0));
}

TEST_F(Formulas, EachCellThatIsFrozenByItselfCostsThreeCalls) {
  Set(u"A1:A1000", 1);
  for (const std::int32_t row : {1, 500, 1000}) Set(u"A" + NumberText(row), u"=\"007\"");
  StartOver();
  Clear(u"A1:A1000");
  EXPECT_EQ(count.calls(), 10 + 3 * 3);
  EXPECT_EQ(At(u"A500"), Value(u"007"));
}

TEST_F(Formulas, AreReadInBlocksWhereACellByCellReadWouldNotFitIntoMemory) {
  Set(u"A1", u"=1");
  Set(u"C65536", u"=1");
  StartOver();
  Clear(u"A:C");  // 196 608 cells: two blocks, each found by one more call
  EXPECT_EQ(count.calls(), 6 + 10 + 2 * (2 + 3 + 2));
  EXPECT_EQ(FormulaOf(u"C65536"), u"1");
}

TEST_F(Formulas, OfAsManyCellsAsABlockHoldsAreReadAtOnce) {
  Set(u"A1", u"=1");
  StartOver();
  Clear(u"A:B");
  EXPECT_EQ(count.calls(), 10 + 2);
  Set(u"A1", u"=1");
  Set(u"C43690", u"=1");  // the last row of the first block of three columns
  StartOver();
  Clear(u"A:C");
  EXPECT_EQ(count.calls(), 6 + 10 + (2 + 3 + 2 * 2));
  EXPECT_EQ(FormulaOf(u"C43690"), u"1");
}

TEST_F(Formulas, OfColumnsBesideTheUsedOnesAreNotSought) {
  Set(u"B2", u"=1");
  for (const char16_t* area : {u"C:E", u"D:F"}) {
    StartOver();
    Clear(area);
    EXPECT_EQ(count.calls(), 6 + 10) << ToUtf8(area);
  }
}

TEST_F(Formulas, OfAnArrayAreAskedOfItOnce) {
  Put(Cells(u"C3:E5"), u"FormulaArray", u"=1+1");
  StartOver();
  Clear(u"B2:E5");
  EXPECT_EQ(count.calls(), 8 + 6 + 15 + 5 + 2) << "for block, its place, the array, its values and theirs";
  EXPECT_EQ(FormulaOf(u"E5"), u"2");
}

TEST_F(Formulas, OfARowLongerThanABlockAreReadRowByRow) {
  auto range = MakeRef<LooksLikeARange>();
  range->rows = 2;
  range->columns = (1 << 17) + 1;
  range->formula = Array::Block(1, range->columns, std::vector<Value>((1 << 17) + 1));  // of either row
  Call(reports, u"ClearFormulas", {Traced(range, u"Range")});
  EXPECT_EQ(count.calls(), 6 + 10 + 2 * 2) << "each row found by one call and read by another";
}

// --- Refusals

TEST_F(Formulas, KeepWhatWasDoneBeforeACallThatFails) {
  const long live = Object::LiveCount();
  for (long n = 1; n <= 17; ++n) {
    SCOPED_TRACE(n);
    const ObjectPtr fresh = Create(u"CReports");
    Set(u"A1:A2", u"=\"007\"");
    const ObjectPtr area = TracedCells(u"A1:A2");
    StartOver(n);
    const std::int32_t raised = RaisedBy([&] { Call(fresh, u"ClearFormulas", {area}); });
    EXPECT_EQ(failure.has_failed(), n <= 16);
    failure.Reset(0);
    EXPECT_EQ(raised, n <= 16 ? kAutomationFailed : 0);
    // Calls 11 to 13 are those of the first cell, 14 to 16 those of the second.
    EXPECT_EQ(FormulaOf(u"A1"), n <= 13 ? u"=\"007\"" : u"007");
    EXPECT_EQ(FormulaOf(u"A2"), n <= 16 ? u"=\"007\"" : u"007");
  }
  EXPECT_EQ(Object::LiveCount(), live);
}

TEST_F(Formulas, OfABlockThatIsRefusedGoCellByCell) {
  for (long n = 1; n <= 13; ++n) {
    SCOPED_TRACE(n);
    Set(u"A1:B2", u"=1+1");
    const ObjectPtr area = TracedCells(u"A1:B2");
    StartOver(n);
    const std::int32_t raised = RaisedBy([&] { Call(reports, u"ClearFormulas", {area}); });
    failure.Reset(0);
    EXPECT_EQ(raised, n <= 10 ? kAutomationFailed : 0);
    EXPECT_EQ(count.calls(), n <= 10 ? n : n == 13 ? 12 : n + 4 * 3) << "eleven and twelve are the block's";
    EXPECT_EQ(FormulaOf(u"A1"), n <= 10 ? u"=1+1" : u"2");
    EXPECT_EQ(FormulaOf(u"B2"), n <= 10 ? u"=1+1" : u"2");
  }
}

TEST_F(Formulas, BehindTheLastCellOfARefusedBlockStillGoTogether) {
  for (const char16_t* cells : {u"A2:B3", u"C3", u"F5"}) Set(cells, u"=1+1");
  StartOver(12);  // the block A2:B3
  Clear(u"A1:F5");
  EXPECT_TRUE(failure.has_failed());
  std::vector<std::string> written(trace.lines().begin() + 12, trace.lines().end());
  std::erase_if(written, [](const std::string& line) { return line.find(".Value") == line.npos; });
  EXPECT_THAT(written, ElementsAre("Range.Cells(2, 1).Value = 2", "Range.Cells(2, 2).Value = 2",
                                   "Range.Cells(3, 1).Value = 2", "Range.Cells(3, 2).Value = 2",
                                   "Range.Range(\"C3:C3\").Value2 = Array(2)",
                                   "Range.Range(\"F5:F5\").Value2 = Array(2)"));
}

TEST_F(Formulas, BehindARefusedOneStayAlsoWhereABlockWasAheadOfIt) {
  // B is frozen down to its end before the locked D3 is met.
  Set(u"B1:B5", u"=1+1");
  Set(u"D1:D5", u"=\"ą\"&\"č\"");
  Set(u"F1:F5", u"=\"007\"");
  Put(Cells(u"A1:F5"), u"Locked", false);
  Put(Cells(u"D3"), u"Locked", true);
  Call(Sheet(), u"Protect");
  const auto error = ErrorOf([&] { Clear(u"A1:F5"); });
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->number(), kApplicationDefined);
  EXPECT_EQ(error->description(), excel::kProtectedRefusal);
  for (std::int32_t row = 1; row <= 5; ++row) {
    EXPECT_EQ(FormulaOf(u"B" + NumberText(row)), row <= 3 ? u"2" : u"=1+1");
    EXPECT_EQ(FormulaOf(u"D" + NumberText(row)), row <= 2 ? u"ąč" : u"=\"ą\"&\"č\"");
    EXPECT_EQ(FormulaOf(u"F" + NumberText(row)), row <= 2 ? u"007" : u"=\"007\"");
  }
}

TEST_F(Formulas, BehindARefusedRectangleAreNotTouched) {
  Set(u"A1:A3", u"=1+1");
  Set(u"C1:C3", u"=1+1");
  Put(Cells(u"C1:C3"), u"Locked", false);
  Call(Sheet(), u"Protect");
  EXPECT_EQ(RaisedBy([&] { Clear(u"A1:C3"); }), kApplicationDefined);
  EXPECT_EQ(count.calls(), 10 + 2 + 2) << "the rectangle and its first cell were tried";
  EXPECT_EQ(FormulaOf(u"C1"), u"=1+1");
}

TEST_F(Formulas, BehindARefusedOneOfEachKindStay) {
  for (const char16_t* refused : {u"=1+1", u"=1=1", u"=\"ą\"", u"=\"007\"", u"=\"\"", u"=1/0", u"a = b"}) {
    SCOPED_TRACE(ToUtf8(refused));
    Set(u"A1:C4", u"=1+1");
    Set(u"B2", refused);
    Put(Cells(u"A1:C4"), u"Locked", false);
    Put(Cells(u"B2"), u"Locked", true);
    Call(Sheet(), u"Protect");
    EXPECT_EQ(RaisedBy([&] { Clear(u"A1:C4"); }), kApplicationDefined);
    Call(Sheet(), u"Unprotect");
    for (const char16_t* done : {u"A1", u"C1", u"A2"}) EXPECT_EQ(FormulaOf(done), u"2");
    EXPECT_EQ(FormulaOf(u"B2"), refused);
    for (const char16_t* left : {u"C2", u"A3", u"C4"}) EXPECT_EQ(FormulaOf(left), u"=1+1");
  }
}

TEST_F(Formulas, OfABlockThatCannotBePutBackComeBackOneByOne) {
  Set(u"B1", u"=\"007\"");
  Put(Cells(u"A1:A4"), u"Locked", false);
  const ObjectPtr area = TracedCells(u"A1:B4");
  const auto refused = [&](long failing_call) {
    Call(Sheet(), u"Unprotect");
    Set(u"A1:A4", u"=1+1");
    Call(Sheet(), u"Protect");
    StartOver(failing_call);
    return RaisedBy([&] { Call(reports, u"ClearFormulas", {area}); });
  };
  ASSERT_EQ(refused(0), kApplicationDefined);
  const long all = count.calls();
  // The last two calls put the block back.
  for (long n = all - 1; n <= all; ++n) {
    EXPECT_EQ(refused(n), kApplicationDefined);
    EXPECT_TRUE(failure.has_failed());
    EXPECT_GT(count.calls(), all);
    EXPECT_EQ(FormulaOf(u"A1"), u"2");
    for (const char16_t* left : {u"A2", u"A3", u"A4"}) EXPECT_EQ(FormulaOf(left), u"=1+1");
  }
}

TEST_F(Formulas, OfAnArrayOfPlainValuesAreStillThereWhereTheirBlockIsRefused) {
  Put(Cells(u"A1:A2"), u"FormulaArray", u"=1+1");
  Call(Sheet(), u"Protect");
  Clear(u"B1");
  EXPECT_EQ(RaisedBy([&] { Clear(u"A1:A2"); }), kApplicationDefined);
  EXPECT_EQ(Get(Cells(u"A1:A2"), u"HasArray"), Value(true));
  Call(Sheet(), u"Unprotect");
  StartOver();
  Clear(u"A1:A2");
  EXPECT_THAT(trace.Text(), testing::Not(testing::HasSubstr("FormulaLocal")))
      << "the array is not cleared first";
  EXPECT_EQ(FormulaOf(u"A2"), u"2");
}

TEST_F(Formulas, OfAnArrayComeBackWhenACallFails) {
  const ObjectPtr cells = TracedCells(u"A1:A2");
  const ObjectPtr in_braces = MakeRef<Spelled>(cells, u"{=1+1}", u"=1+1");  // as LibreOffice gives it
  const ObjectPtr constants = MakeRef<Spelled>(cells, u"={2;2}", u"={2;2}");
  for (const ObjectPtr& area : {cells, in_braces, constants}) {
    bool has_failed = true;
    for (long n = 1; has_failed; ++n) {
      SCOPED_TRACE(n);
      Call(Cells(u"A1:A2"), u"ClearContents");
      Put(Cells(u"A1:A2"), u"FormulaArray", u"=1+1");
      Put(Cells(u"A1:A2"), u"NumberFormat", u"@");
      StartOver(n);
      RaisedBy([&] { Call(reports, u"ClearFormulas", {area}); });
      has_failed = failure.has_failed();
      failure.Reset(0);
      // Of what comes after the second value, the formats alone are left.
      if (At(u"A2") == Value(2.0) && Get(Cells(u"A1:A2"), u"HasArray") == Value(false)) continue;
      EXPECT_EQ(Get(Cells(u"A1:A2"), u"HasArray"), Value(true));
      EXPECT_EQ(FormulaOf(u"A1"), u"=1+1");
      EXPECT_EQ(Get(Cells(u"A1:A2"), u"NumberFormat"), Value(u"@"));
    }
    EXPECT_EQ(FormulaOf(u"A2"), u"2");
    EXPECT_EQ(Get(Cells(u"A1:A2"), u"NumberFormat"), Value(u"@"));
  }
}

}  // namespace
}  // namespace qva
