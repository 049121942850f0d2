#include "period/CRepPeriod.h"

#include "tests/period/rep_period_fixture.h"

namespace qva {
namespace {

/// Another object, all whose blocks of cells are one and the same; so are those of the objects that it leads
/// to.
class WithBlock : public Object {
 public:
  WithBlock(ObjectPtr inner, Value block) : inner_(std::move(inner)), block_(std::move(block)) {}

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override {
    for (Value& argument : arguments.positional) {
      if (!argument.Is(Value::Type::Object)) continue;
      if (const auto* own = dynamic_cast<const WithBlock*>(argument.ToObject().get())) argument = own->inner_;
    }
    Value result = inner_->Invoke(access, member, arguments);
    if (result.Is(Value::Type::Array)) return block_;
    if (result.Is(Value::Type::Object) && !result.IsNothing()) {
      return ObjectPtr(MakeRef<WithBlock>(result.ToObject(), block_));
    }
    return result;
  }
  std::u16string TypeName() const override { return inner_->TypeName(); }

 private:
  ObjectPtr inner_;
  Value block_;
};

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;
using ReportPeriod = ReportPeriodTest;

// --- Creation

TEST_F(ReportPeriod, BeginsWithTheSettingsInTheirOrderAndTypes) {
  trace.Clear();
  const ObjectPtr another = Create(u"CRepPeriod");
  std::vector<std::string> added;
  for (const std::string& line : trace.lines()) {
    const std::size_t call = line.find(".Add(");
    if (call != line.npos) added.push_back(line.substr(call + 5));
  }
  EXPECT_THAT(added, ElementsAre("\"Plan\", 7)", "\"Year\", 3)", "\"Quarter\", 3)", "\"Month\", 3)",
                                 "\"RepPeriodType\", 3)", "\"LastPerBeg\", 9)", "\"LastPerEnd\", 9)",
                                 "\"CurrPerBeg\", 9)", "\"CurrPerEnd\", 9)", "\"CurrBudgetDocId\", 3)",
                                 "\"CurrBudgetDocCode\", 15)", "\"LastBudgetDocId\", 3)",
                                 "\"LastBudgetDocCode\", 15)", "\"IsBudgetPlan\", 14)", "\"BudgetCount\", 2)",
                                 "\"BudgetRS\", 100, Recordset)"));
}

TEST_F(ReportPeriod, FabricatesItsBudgetRecordset) {
  trace.Clear();
  const ObjectPtr another = Create(u"CRepPeriod");
  std::vector<std::string> fields;
  std::string opened;
  for (const std::string& line : trace.lines()) {
    const std::size_t append = line.find(".Append(");
    if (append != line.npos) fields.push_back(line.substr(append + 8));
    if (line.find("Recordset.Open(") == 0) opened = line;
  }
  EXPECT_THAT(fields, ElementsAre("\"BookCode\", 200, 25, -1)", "\"PlanCode\", 200, 25, -1)",
                                  "\"PlanIsBudget\", 3, 0, -1)", "\"BudgetCurrDocId\", 6, 0, 64)",
                                  "\"BudgetCurrDocCode\", 200, 250, 64)", "\"BudgetLastDocId\", 6, 0, 64)",
                                  "\"BudgetLastDocCode\", 200, 250, 64)"));
  EXPECT_EQ(opened, "Recordset.Open(Missing, Missing, -1, -1, -1)");
}

// --- Binding

TEST_F(ReportPeriod, InitRaisesWithoutASheet) {
  const auto error = ErrorOf([&] { Call(period, u"Init", {Nothing()}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), -2147221503);
  EXPECT_EQ(error->source(), u"Wrong parameter");
  EXPECT_EQ(error->description(), u"");
}

TEST_F(ReportPeriod, InitGivesEveryMissingNameACellToTheRightInBlue) {
  Set(u"B3", u"x");
  Set(u"C7", u"y");
  Init();
  const char16_t* const cells[] = {u"$D$3", u"$E$3", u"$F$3", u"$G$3", u"$H$3", u"$I$3", u"$J$3", u"$K$3",
                                   u"$L$3", u"$M$3", u"$N$3", u"$O$3", u"$P$3", u"$Q$3", u"$R$3", u"$S$3"};
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    SCOPED_TRACE(ToUtf8(kNames[i]));
    EXPECT_EQ(Cell(kNames[i]).Address(), cells[i]);
    EXPECT_EQ(Cell(kNames[i]).Font().ColorIndex().ToInt32(), 5);
  }
  EXPECT_EQ(Names().Count(), 16);
}

TEST_F(ReportPeriod, InitFindsNamesInAnyLetterCase) {
  Names().Add(u"repyear", u"=Sheet2!$C$4");
  Init();
  EXPECT_EQ(Names().Count(), 16);
  EXPECT_THAT(NameList(), testing::Contains(u"repyear=Sheet2!$C$4"));
}

TEST_F(ReportPeriod, InitLeavesNamesThatAreThereAlone) {
  NameCells();
  const auto before = NameList();
  Init();
  EXPECT_EQ(NameList(), before);
}

TEST_F(ReportPeriod, InitMakesABrokenNameAnew) {
  NameCells();
  Names().Add(u"RepMon", u"=Sheet1!#REF!");
  ASSERT_THAT(NameList(), testing::Contains(u"RepMon=Sheet1!#REF!"));
  Init();
  EXPECT_EQ(Names().Count(), 16);
  for (const std::u16string& name : NameList()) EXPECT_EQ(name.find(u"REF!"), name.npos) << ToUtf8(name);
  EXPECT_EQ(At(u"RepMon"), Value());
}

TEST_F(ReportPeriod, InitDeletesABrokenNameAlsoWhereItCannotMakeItAnew) {
  NameCells();
  Names().Add(u"RepMon", u"=Sheet1!#REF!");
  Put(sheet.object(), u"Name", u"Mano lapas");
  EXPECT_EQ(RaisedBy([&] { Init(); }), kApplicationDefined);
  EXPECT_EQ(Names().Count(), 15);
  for (const std::u16string& name : NameList()) EXPECT_FALSE(name.starts_with(u"RepMon=")) << ToUtf8(name);
}

TEST_F(ReportPeriod, InitTakesASheetWithRefInItsNameForABrokenReference) {
  Put(sheet.object(), u"Name", u"REFERENTAS");
  Names().Add(u"RepYear", u"=REFERENTAS!$A$1");
  Init();
  EXPECT_EQ(Cell(u"RepYear").Address(), u"$C$1");
}

TEST_F(ReportPeriod, InitTakesNoNameOfASheetsOwn) {
  Names().Add(u"Sheet2!RepYear", u"=Sheet2!$C$4");
  Init();
  EXPECT_EQ(Names().Count(), 17);
  EXPECT_THAT(NameList(), testing::Contains(u"RepYear=Sheet1!$C$1"));
  EXPECT_THAT(NameList(), testing::Contains(u"Sheet2!RepYear=Sheet2!$C$4"));
}

TEST_F(ReportPeriod, InitCreatesANameStepByStep) {
  NameCells();
  Names().Item(u"RepMon").Delete();
  trace.Clear();
  Init();
  const std::string add = "Worksheet.Parent.Names.Add(Name:=\"RepMon\", RefersTo:=\"=Sheet1!$B$1\")";
  std::vector<std::string> steps;
  for (const std::string& line : trace.lines()) {
    if (line.starts_with("Worksheet.UsedRange") && line.find("Address") == line.npos) steps.push_back(line);
    if (line.starts_with(add)) steps.push_back(line);
  }
  EXPECT_THAT(steps, ElementsAre("Worksheet.UsedRange", "Worksheet.UsedRange.Columns",
                                 "Worksheet.UsedRange.Columns.Count -> 1", "Worksheet.UsedRange.Offset(0, 1)",
                                 "Worksheet.UsedRange.Offset(0, 1).Cells(1)", add, add + ".RefersToRange",
                                 add + ".RefersToRange.Font", add + ".RefersToRange.Font.ColorIndex = 5"));
}

TEST_F(ReportPeriod, InitDoesNotQuoteTheSheetsName) {
  Put(sheet.object(), u"Name", u"Mano lapas");
  EXPECT_EQ(RaisedBy([&] { Init(); }), kApplicationDefined);
}

TEST_F(ReportPeriod, InitPassesOnWhatExcelRaisesAndLeaksNothing) {
  const long alive = Object::LiveCount();
  long calls = 1;
  for (;; ++calls) {
    ObjectPtr another = Create(u"CRepPeriod");
    failure.Reset(calls);
    const auto error = ErrorOf([&] { Call(another, u"Init", {Sheet()}); });
    const bool failed = failure.has_failed();
    failure.Reset(0);
    another.reset();
    for (std::int32_t i = Names().Count(); i > 0; --i) Names().Item(i).Delete();
    EXPECT_EQ(Object::LiveCount(), alive) << "call " << calls;
    if (!failed) break;
    EXPECT_TRUE(error) << "call " << calls;
  }
  EXPECT_GT(calls, 60);
}

// --- Loading

TEST_F(ReportPeriod, EditFailsBeforeInit) {
  EXPECT_FALSE(EditAndConfirm());
}

TEST_F(ReportPeriod, EditShowsTheNamedCells) {
  NameCells();
  Set(u"RepLastPerBeg", DateFromParts(2023, 4, 1));
  Set(u"RepLastPerEnd", DateFromParts(2023, 4, 30));
  Set(u"RepCurrPerBeg", DateFromParts(2024, 5, 1));
  Set(u"RepCurrPerEnd", DateFromParts(2024, 5, 31));
  EditAndLeave([](MemoryForm& form) {
    EXPECT_EQ(form.Text(u"cbAccPlan"), u"F1");
    EXPECT_EQ(form.Text(u"txtYear"), u"2024");
    EXPECT_EQ(form.Text(u"txtQuater"), u"2");
    EXPECT_EQ(form.Text(u"txtMonth"), u"5");
    EXPECT_EQ(form.Text(u"optMonth"), u"1");
  });
  EXPECT_EQ(ShownPeriods(), "2023-04-01..2023-04-30 2024-05-01..2024-05-31");
}

TEST_F(ReportPeriod, EditTakesEveryOtherKindForAYear) {
  NameCells();
  for (const Value& type : {Value(0), Value(7), Value(u"mėnuo"), Value(), Value(-1)}) {
    Set(u"RepType", type);
    bool is_year = false;
    platform.forms.user = [&](MemoryForm& form) { is_year = form.Text(u"optYear") == u"1"; };
    Edit();
    EXPECT_TRUE(is_year) << ToUtf8(DescribeValue(type));
  }
}

TEST_F(ReportPeriod, EditRoundsAFractionOfAKindWithinTheKinds) {
  NameCells();
  const std::pair<double, std::u16string_view> kinds[] = {
      {0.9, u"optYear"},        {1.0, u"optYear"}, {1.6, u"optQuarter"}, {2.5, u"optQuarter"},
      {3.5, u"optHalfYearOwn"}, {6.0, u"optUser"}, {6.1, u"optYear"}};
  for (const auto& [type, option] : kinds) {
    Set(u"RepType", type);
    bool is_selected = false;
    platform.forms.user = [&, name = option](MemoryForm& form) { is_selected = form.Text(name) == u"1"; };
    Edit();
    EXPECT_TRUE(is_selected) << type;
  }
}

TEST_F(ReportPeriod, EditDefaultsTheDatesToTheCalendarYears) {
  NameCells();
  EXPECT_EQ(ShownPeriods(), "2023-01-01..2023-12-31 2024-01-01..2024-12-31");
}

TEST_F(ReportPeriod, EditGivesTheDialogWholeYearsForDatesThatAreMissing) {
  NameCells();
  trace.Clear();
  Edit();
  for (const char* item : {"LastPerBeg\").Value = #2023-01-01#", "LastPerEnd\").Value = #2023-12-31#",
                           "CurrPerBeg\").Value = #2024-01-01#", "CurrPerEnd\").Value = #2024-12-31#"}) {
    EXPECT_THAT(trace.lines(), Contains("SettingsCollection.Item(\"" + std::string(item)));
  }
}

TEST_F(ReportPeriod, EditDefaultsEachDateByItself) {
  NameCells();
  Set(u"RepLastPerEnd", DateFromParts(2022, 6, 30));
  Set(u"RepCurrPerBeg", DateFromParts(2024, 3, 1));
  EXPECT_EQ(ShownPeriods(), "2023-01-01..2022-06-30 2024-03-01..2024-12-31");
}

TEST_F(ReportPeriod, EditDefaultsTheDatesToThisYearWithoutAYear) {
  NameCells();
  Set(u"RepYear", Value());
  platform.clock.Set(DateFromParts(2031, 8, 9));
  EXPECT_EQ(ShownPeriods(), "2030-01-01..2030-12-31 2031-01-01..2031-12-31");
  std::u16string year = u"?";
  platform.forms.user = [&](MemoryForm& form) { year = form.Text(u"txtYear"); };
  Edit();
  EXPECT_EQ(year, u"");
}

TEST_F(ReportPeriod, EditReadsDatesThatAreText) {
  NameCells();
  Set(u"RepCurrPerBeg", u"2024-07-01");
  EXPECT_EQ(ShownPeriods(), "2023-01-01..2023-12-31 2024-07-01..2024-12-31");
}

TEST_F(ReportPeriod, EditFailsForADateThatIsNone) {
  NameCells();
  Set(u"RepCurrPerBeg", u"vakar");
  EXPECT_FALSE(EditAndConfirm());
  EXPECT_EQ(platform.forms.created, 0);
}

TEST_F(ReportPeriod, EditShowsTheBudgetTable) {
  NameCells();
  Set(u"BudgetCount", 2);
  SetRow(1, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  SetRow(2, {u"BALTIJA", u"F2", 0});
  EXPECT_THAT(ShownRows(), ElementsAre(ElementsAre(u"MEDVILNE", u"B1", u"1", u"BIU-2024", u"BIU-2023"),
                                       ElementsAre(u"BALTIJA", u"F2", u"0", u"", u"")));
}

TEST_F(ReportPeriod, EditShowsNothingForTheTablesEmptyCells) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE"});
  EXPECT_THAT(ShownRows(), ElementsAre(ElementsAre(u"MEDVILNE", u"", u"0", u"", u"")));
}

TEST_F(ReportPeriod, EditFailsForABlockOfAnotherSizeThanTheTable) {
  NameCells();
  Set(u"BudgetCount", 2);
  SetRow(1, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  const auto edit = [&](Value block) {
    platform.forms.created = 0;
    Call(period, u"Init", {ObjectPtr(MakeRef<WithBlock>(sheet.object(), std::move(block)))});
    return EditAndConfirm();
  };
  const Value cell = u"1";
  EXPECT_TRUE(edit(Array::Block(2, 7, std::vector<Value>(14, cell))));
  for (const std::size_t size : {0, 1, 6, 8, 13, 15, 21}) {
    const auto count = static_cast<std::int32_t>(size);
    EXPECT_FALSE(edit(Array::Block(1, count, std::vector<Value>(size, cell)))) << size;
    EXPECT_EQ(platform.forms.created, 0) << size;
  }
  EXPECT_FALSE(edit(Array{})) << "without dimensions";
}

TEST_F(ReportPeriod, EditShowsNoBudgetsForNoneAtAll) {
  NameCells();
  Set(u"BudgetCount", 0);
  Set(u"CurrBudgetDocId", 0);
  Set(u"LastBudgetDocId", 0);
  EXPECT_THAT(ShownRows(), IsEmpty());
  Set(u"BudgetCount", -3);
  Set(u"CurrBudgetDocId", 12);
  EXPECT_THAT(ShownRows(), IsEmpty());
}

TEST_F(ReportPeriod, EditMakesARowOfTheSingleBudgetCells) {
  NameCells();
  Set(u"CurrBudgetDocId", 12);
  Set(u"CurrBudgetDocCode", u"BIU-2024");
  Set(u"IsBudgetPlan", true);
  EXPECT_THAT(ShownRows(), ElementsAre(ElementsAre(u"MEDVILNE", u"F1", u"-1", u"BIU-2024", u"")));
  Set(u"CurrBudgetDocId", 0);
  EXPECT_THAT(ShownRows(), IsEmpty());
  Set(u"LastBudgetDocId", 11);
  Set(u"LastBudgetDocCode", u"BIU-2023");
  EXPECT_THAT(ShownRows(), ElementsAre(ElementsAre(u"MEDVILNE", u"F1", u"-1", u"BIU-2024", u"BIU-2023")));
}

TEST_F(ReportPeriod, EditTakesTheIdentifier1ForOne) {
  NameCells();
  Set(u"CurrBudgetDocId", 1);
  EXPECT_THAT(ShownRows(), SizeIs(1));
}

TEST_F(ReportPeriod, EditGoesToTheFirstBudget) {
  NameCells();
  Set(u"CurrBudgetDocId", 12);
  trace.Clear();
  ShownRows();
  EXPECT_THAT(trace.lines(), Contains("Recordset.MoveFirst()"));
}

TEST_F(ReportPeriod, EditPrefersTheTableToTheSingleBudgetCells) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"BALTIJA", u"F2", 0, 14, u"BIU-B"});
  Set(u"CurrBudgetDocId", 12);
  Set(u"CurrBudgetDocCode", u"BIU-2024");
  EXPECT_THAT(ShownRows(), ElementsAre(ElementsAre(u"BALTIJA", u"F2", u"0", u"BIU-B", u"")));
}

// --- Cost

TEST_F(ReportPeriod, InitCostsTwoCallsForEachName) {
  std::map<long, long> calls;
  NameCells();
  for (const long names : {16, 160, 1600}) {
    for (long i = Names().Count() + 1; i <= names; ++i) {
      Names().Add(u"Kita" + NumberText(i), u"=Sheet2!$A$" + NumberText(i));
    }
    count.Reset();
    Init();
    calls[names] = count.calls();
  }
  // Fixed: Parent, Names, Count, and RefersTo with RefersToRange of the 16.
  EXPECT_EQ(calls, (std::map<long, long>{
                       {16, 3 + 32 + 2 * 16}, {160, 3 + 32 + 2 * 160}, {1600, 3 + 32 + 2 * 1600}}));
}

}  // namespace
}  // namespace qva
