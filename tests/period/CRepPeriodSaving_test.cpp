// CRepPeriod: what Edit keeps.
#include "period/CRepPeriod.h"

#include <algorithm>

#include "tests/period/rep_period_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using ReportPeriodSaving = ReportPeriodTest;

// --- Saving

TEST_F(ReportPeriodSaving, EditKeepsWhatTheUserConfirms) {
  NameCells();
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) {
    form.Type(u"cbAccPlan", u"B1");
    form.Type(u"txtQuater", u"3");
  }));
  EXPECT_THAT(Cells(),
              ElementsAre(u"B1", 2024.0, 3.0, 5.0, 2.0, DateFromParts(2024, 4, 1), DateFromParts(2024, 6, 30),
                          DateFromParts(2024, 7, 1), DateFromParts(2024, 9, 30), 0.0, Value(), 0.0, Value(),
                          0.0, 0.0, Value()));
}

TEST_F(ReportPeriodSaving, EditLeavesEveryCellWhenTheUserCancels) {
  NameCells();
  Set(u"CurrBudgetDocId", 12);
  Set(u"BudgetCount", 1);
  SetRow(1, {u"BALTIJA", u"F2", 0, 14, u"BIU-B"});
  const auto before = Cells();
  const auto row = RowOf(1);
  EditAndLeave([](MemoryForm& form) {
    form.Type(u"txtQuater", u"3");
    form.Click(u"btSpecDelete");
    form.Click(u"btCancel");
  });
  EXPECT_EQ(Cells(), before);
  EXPECT_EQ(RowOf(1), row);
}

TEST_F(ReportPeriodSaving, EditMovesTheSingleBudgetIntoTheTable) {
  NameCells();
  Set(u"CurrBudgetDocId", 12);
  Set(u"CurrBudgetDocCode", u"BIU-2024");
  Set(u"LastBudgetDocId", 11);
  Set(u"LastBudgetDocCode", u"BIU-2023");
  Set(u"IsBudgetPlan", 1);
  EXPECT_TRUE(EditAndConfirm());
  EXPECT_THAT(RowOf(1), ElementsAre(u"MEDVILNE", u"F1", 1.0, Currency{120000}, u"BIU-2024", Currency{110000},
                                    u"BIU-2023"));
  EXPECT_EQ(At(u"BudgetCount"), Value(1.0));
  EXPECT_EQ(At(u"CurrBudgetDocId"), Value(0.0));
  EXPECT_EQ(At(u"CurrBudgetDocCode"), Value());
  EXPECT_EQ(At(u"LastBudgetDocId"), Value(0.0));
  EXPECT_EQ(At(u"LastBudgetDocCode"), Value());
  EXPECT_EQ(At(u"IsBudgetPlan"), Value(0.0));
}

TEST_F(ReportPeriodSaving, EditReplacesTheOldTable) {
  NameCells();
  Set(u"BudgetCount", 3);
  for (const std::int32_t row : {1, 2, 3})
    SetRow(row, {u"MEDVILNE", u"F1", 0, 12, u"BIU-2024", 11, u"BIU-2023"});
  Set(u"H20", u"lieka");  // beside the table
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) {
    form.SelectRow(u"SpecGrid", 2);
    form.Click(u"btSpecDelete");
    form.Click(u"btSpecDelete");
  }));
  EXPECT_EQ(At(u"BudgetCount"), Value(1.0));
  EXPECT_EQ(RowOf(1)[0], Value(u"MEDVILNE"));
  EXPECT_THAT(RowOf(2), testing::Each(Value()));
  EXPECT_THAT(RowOf(3), testing::Each(Value()));
  EXPECT_EQ(At(u"H20"), Value(u"lieka"));
}

TEST_F(ReportPeriodSaving, EditClearsDownToTheSheetsBottomBelowATableOfOneRow) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE", u"F1", 0, 12, u"BIU-2024", 11, u"BIU-2023"});
  Set(u"B30", u"dingsta");
  Set(u"G5000", u"dingsta");
  Set(u"H30", u"lieka");
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) { form.Click(u"btSpecDelete"); }));
  EXPECT_EQ(At(u"B30"), Value());
  EXPECT_EQ(At(u"G5000"), Value());
  EXPECT_EQ(At(u"H30"), Value(u"lieka"));
  EXPECT_EQ(At(u"BudgetCount"), Value(0.0));
  EXPECT_THAT(RowOf(1), testing::Each(Value()));
}

TEST_F(ReportPeriodSaving, EditKeepsATableOnAnotherSheetThanTheOneGiven) {
  NameCells();
  Names().Add(u"BookCode", u"=Sheet2!$B$2");
  Init();
  const excel::Range table(GetObject(Names().Item(u"BookCode").object(), u"RefersToRange"));
  Set(u"BudgetCount", 2);
  for (const std::int32_t row : {1, 2}) {
    table.Offset(row, 0).SetValue(u"MEDVILNE");
    table.Offset(row, 1).SetValue(u"F1");
    table.Offset(row, 2).SetValue(0);
  }
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) { form.Click(u"btSpecDelete"); }));
  EXPECT_EQ(At(u"BudgetCount"), Value(1.0));
  EXPECT_EQ(table.Offset(1, 0).Value(), Value(u"MEDVILNE"));
  EXPECT_EQ(table.Offset(2, 0).Value(), Value());
}

TEST_F(ReportPeriodSaving, EditReadsAndWritesTheCellsInTheirOrder) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  trace.Clear();
  EXPECT_TRUE(EditAndConfirm());
  // Each cell by its name, and what was done with it.
  std::vector<std::string> steps;
  for (const std::string& line : trace.lines()) {
    const std::string item = "Worksheet.Parent.Names.Item(";
    const std::size_t range = line.find(").RefersToRange.");
    if (!line.starts_with(item) || range == line.npos) continue;
    const std::string name = ToUtf8(Names().Item(std::stoi(line.substr(item.size()))).Name());
    steps.push_back(name + line.substr(range + std::string(").RefersToRange").size()));
  }
  std::vector<std::string> read;
  for (const char* name :
       {"AccPlan", "RepYear", "RepQuarter", "RepMon", "CurrBudgetDocId", "CurrBudgetDocCode",
        "LastBudgetDocId", "LastBudgetDocCode", "IsBudgetPlan", "RepType", "RepLastPerBeg", "RepLastPerEnd",
        "RepCurrPerBeg", "RepCurrPerEnd", "BudgetCount"}) {
    read.push_back(std::string(name) + ".Value");
  }
  ASSERT_GT(steps.size(), read.size());
  for (std::size_t i = 0; i < read.size(); ++i) EXPECT_EQ(steps[i].substr(0, read[i].size()), read[i]);
  const auto first_write = std::ranges::find_if(
      steps, [](const std::string& step) { return step.find(".Value = ") != step.npos; });
  EXPECT_THAT(std::vector<std::string>(first_write, steps.end()),
              ElementsAre("AccPlan.Value = \"F1\"", "AccPlan.Value -> \"F1\"", "RepYear.Value = 2024",
                          "RepQuarter.Value = 2", "RepMon.Value = 5", "RepType.Value = 3",
                          "RepLastPerBeg.Value = #2023-01-01#", "RepLastPerEnd.Value = #2023-12-31#",
                          "RepCurrPerBeg.Value = #2024-01-01#", "RepCurrPerEnd.Value = #2024-12-31#",
                          "BudgetCount.Value = 1", "CurrBudgetDocId.Value = 0",
                          "CurrBudgetDocCode.Value = \"\"", "LastBudgetDocId.Value = 0",
                          "LastBudgetDocCode.Value = \"\"", "IsBudgetPlan.Value = 0", "BookCode.Offset(1, 0)",
                          "BookCode.Offset(1, 0).Value -> \"MEDVILNE\"", "BookCode.Offset(1, 0).Worksheet",
                          "BookCode.Offset(1, 0).End(-4121)", "BookCode.Offset(1, 0).End(-4121).Offset(0, 6)",
                          "BookCode.Offset(1, 0).CopyFromRecordset(Recordset.Clone(-1)) -> 1",
                          "BudgetCount.Value = 1"));
}

TEST_F(ReportPeriodSaving, EditCountsTheRecordsWritten) {
  NameCells();
  Set(u"BudgetCount", 2);
  SetRow(1, {u"MEDVILNE", u"F1", 0});
  SetRow(2, {u"MEDVILNE", u"B1", 1});
  EXPECT_TRUE(EditAndConfirm(
      [](MemoryForm& form) { EXPECT_TRUE(form.TypeCell(u"SpecGrid", 2, u"BookCode", u"BALTIJA")); }));
  EXPECT_EQ(At(u"BudgetCount"), Value(3.0));
  EXPECT_EQ(RowOf(3)[0], Value(u"BALTIJA"));
}

TEST_F(ReportPeriodSaving, EditShowsWhatItSaved) {
  NameCells();
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) {
    form.Type(u"txtMonth", u"9");
    EXPECT_TRUE(form.TypeCell(u"SpecGrid", 0, u"BookCode", u"MEDVILNE"));
    EXPECT_TRUE(form.TypeCell(u"SpecGrid", 0, u"PlanCode", u"B1"));
  }));
  const auto saved = Cells();
  EXPECT_EQ(ShownPeriods(), "2024-08-01..2024-08-31 2024-09-01..2024-09-30");
  EXPECT_TRUE(EditAndConfirm());
  EXPECT_EQ(Cells(), saved);
  EXPECT_EQ(RowOf(1)[1], Value(u"B1"));
}

TEST_F(ReportPeriodSaving, SheetsOfAWorkbookShareItsPeriod) {
  NameCells();
  const ObjectPtr second = Call(GetObject(workbook, u"Worksheets"), u"Add").ToObject();
  ObjectPtr other = Create(u"CRepPeriod");
  Call(other, u"Init", {interceptor.Wrap(second, u"Worksheet")});
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) { form.Type(u"txtYear", u"2026"); }));
  EditAndLeave(other, [](MemoryForm& form) { EXPECT_EQ(form.Text(u"txtYear"), u"2026"); });
}

TEST_F(ReportPeriodSaving, WorkbooksKeepTheirOwnPeriods) {
  NameCells();
  const ObjectPtr second = GetObject(excel->AddWorkbook(), u"ActiveSheet");
  ObjectPtr other = Create(u"CRepPeriod");
  Call(other, u"Init", {interceptor.Wrap(second, u"Worksheet")});
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) { form.Type(u"txtYear", u"2026"); }));
  EditAndLeave(other, [](MemoryForm& form) { EXPECT_EQ(form.Text(u"txtYear"), u""); });
}

TEST_F(ReportPeriodSaving, EditKeepsEveryPlanCodeAsItIs) {
  NameCells();
  auto& plans = host.account_sets[u"MEDVILNE"];
  for (const std::u16string_view code :
       {u"0012", u"1E5", u"1-2", u"12:30", u"5%", u"TRUE", u"=1+1", u"=1+", u"'a", u"-7", u"1,5", u"MAR5",
        u"0", u"12", u"123456789012345", u"1234567890123456", u"00"}) {
    plans.push_back({std::u16string(code), u"Planas", false});
    EXPECT_TRUE(EditAndConfirm([&](MemoryForm& form) {
      form.Type(u"cbAccPlan", code);
      EXPECT_TRUE(form.TypeCell(u"SpecGrid", form.RowCount(u"SpecGrid"), u"BookCode", u"MEDVILNE"));
      EXPECT_TRUE(form.TypeCell(u"SpecGrid", form.RowCount(u"SpecGrid") - 1, u"PlanCode", code));
    })) << ToUtf8(code);
    EXPECT_EQ(At(u"AccPlan").ToText(), code);
    EXPECT_EQ(RowOf(At(u"BudgetCount").ToInt32())[1].ToText(), code);
    // The next dialog shows what this one kept.
    EditAndLeave([&](MemoryForm& form) { EXPECT_EQ(form.Text(u"cbAccPlan"), code); });
  }
}

TEST_F(ReportPeriodSaving, EditPutsNoCodeInAgainThatIsNoFormula) {
  NameCells();
  host.account_sets[u"MEDVILNE"].push_back({u"~A", u"Planas", false});
  bool has_failed = true;
  for (long n = 1; has_failed; ++n) {
    Set(u"AccPlan", u"F1");
    trace.Clear();
    failure.Reset(n);
    EditAndConfirm([](MemoryForm& form) { form.Type(u"cbAccPlan", u"~A"); });
    has_failed = failure.has_failed();
    failure.Reset(0);
    EXPECT_THAT(trace.Text(), testing::Not(testing::HasSubstr("'~A"))) << "after the failure of call " << n;
  }
}

TEST_F(ReportPeriodSaving, EditKeepsAPlanCodeInACellForTexts) {
  NameCells();
  Put(Cell(u"AccPlan").object(), u"NumberFormat", u"@");
  for (const std::u16string_view code : {u"0012", u"12"}) {
    host.account_sets[u"MEDVILNE"].push_back({std::u16string(code), u"Planas", false});
    EXPECT_TRUE(EditAndConfirm([&](MemoryForm& form) { form.Type(u"cbAccPlan", code); }));
    EXPECT_EQ(At(u"AccPlan"), Value(code));
  }
}

TEST_F(ReportPeriodSaving, EditKeepsAPlanCodeThatIsANumberAsOne) {
  NameCells();
  const std::pair<std::u16string, Value> kept[] = {{u"12", 12.0},
                                                   {u"0", 0.0},
                                                   {u"90", 90.0},
                                                   {u"123456789012345", 123456789012345.0},
                                                   {u"1234567890123456", u"1234567890123456"},
                                                   {u"00", u"00"}};
  for (const auto& [code, value] : kept) {
    host.account_sets[u"MEDVILNE"].push_back({code, u"Planas", false});
    EXPECT_TRUE(EditAndConfirm([&](MemoryForm& form) { form.Type(u"cbAccPlan", code); }));
    EXPECT_EQ(At(u"AccPlan"), value);
  }
}

TEST_F(ReportPeriodSaving, EditLeavesNoFormatOfAPlanCodeThatReadsLikeADate) {
  NameCells();
  for (const std::u16string_view code : {u"1-2", u"12"}) {
    host.account_sets[u"MEDVILNE"].push_back({std::u16string(code), u"Planas", false});
    EXPECT_TRUE(EditAndConfirm([&](MemoryForm& form) { form.Type(u"cbAccPlan", code); }));
    EXPECT_EQ(Get(Cell(u"AccPlan").object(), u"NumberFormat"), Value(u"General"));
  }
  EXPECT_EQ(At(u"AccPlan"), Value(12.0));
}

// --- Calls from within

TEST_F(ReportPeriodSaving, EditAndInitDuringTheDialogRaiseFormAlreadyDisplayed) {
  NameCells();
  EXPECT_TRUE(EditAndConfirm([&](MemoryForm& form) {
    EXPECT_EQ(RaisedBy([&] { Edit(); }), kFormAlreadyDisplayed);
    EXPECT_EQ(RaisedBy([&] { Init(); }), kFormAlreadyDisplayed);
    form.Type(u"txtYear", u"2026");
  }));
  EXPECT_EQ(At(u"RepYear"), Value(2026.0));
  // Afterwards both go again, also when the dialog failed.
  Init();
  platform.faults.forms.Refuse();
  EXPECT_FALSE(Edit());
  platform.faults.forms.Allow();
  EXPECT_TRUE(EditAndConfirm());
}

TEST_F(ReportPeriodSaving, AnotherObjectIsEditedDuringTheDialog) {
  NameCells();
  const ObjectPtr other = Create(u"CRepPeriod");
  Call(other, u"Init", {Sheet()});
  int shown = 0;
  platform.forms.user = [&](MemoryForm& form) {
    if (++shown == 1) {
      EXPECT_TRUE(Call(other, u"Edit").ToBoolean());
    } else {
      form.Type(u"txtQuater", u"3");
    }
    form.Click(u"btOk");
  };
  EXPECT_TRUE(Edit());
  EXPECT_EQ(shown, 2);
}

// --- Failures and cost

TEST_F(ReportPeriodSaving, EditRaisesNothingWhenMemoryRunsOut) {
  NameCells();
  const auto before = Cells();
  platform.forms.user = [](MemoryForm&) { throw std::bad_alloc(); };
  bool result = true;
  EXPECT_NO_THROW(result = Edit());
  EXPECT_FALSE(result);
  EXPECT_EQ(Cells(), before);
  EXPECT_TRUE(EditAndConfirm());
}

TEST_F(ReportPeriodSaving, EditLeavesAllAsItWasWhenItsWindowCannotBeShown) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  EXPECT_TRUE(EditAndConfirm());  // what is made on first use is there
  const auto cells = Cells();
  const auto names = NameList();
  const auto row = RowOf(1);
  const long live = Object::LiveCount();
  for (const ErrorNumber error : {kOutOfMemory, kInternalError}) {
    platform.faults.forms.RefuseShowing(error);
    trace.Clear();
    EXPECT_FALSE(EditAndConfirm([](MemoryForm& form) { form.Type(u"txtYear", u"2026"); }));
    for (const std::string& line : trace.lines())
      EXPECT_THAT(line, testing::Not(testing::HasSubstr("Range.Value =")));
    EXPECT_EQ(Cells(), cells);
    EXPECT_EQ(NameList(), names);
    EXPECT_EQ(RowOf(1), row);
    EXPECT_EQ(Object::LiveCount(), live);
  }
  platform.faults.forms.Allow();
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) { form.Type(u"txtYear", u"2026"); }));
  EXPECT_EQ(At(u"RepYear"), Value(2026.0));
}

TEST_F(ReportPeriodSaving, EditKeepsTheTableThatTheDialogCouldNotShow) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  const auto before = Cells();
  const auto row = RowOf(1);
  host.texts.erase(828);  // the filling ends before the grid
  EditAndLeave([](MemoryForm& form) {
    EXPECT_EQ(form.RowCount(u"SpecGrid"), 0u);
    form.Click(u"btOk");
  });
  EXPECT_EQ(Cells(), before);
  EXPECT_EQ(RowOf(1), row);
}

TEST_F(ReportPeriodSaving, EditNeverRaisesAndKeepsWhatWasWrittenWhateverCallFails) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  period.reset();
  platform.forms.user = [](MemoryForm& form) {
    form.Type(u"txtYear", u"2026");
    form.Click(u"btOk");
  };
  HostText(828);  // the message resource is there from now on
  const long alive = Object::LiveCount();
  std::vector<std::size_t> written;  // how many cells hold new values after the failure of call 1, 2, …
  long calls = 1;
  for (bool failed = true; failed; ++calls) {
    for (const std::u16string_view cell : {u"RepYear", u"RepType"}) Set(cell, cell == u"RepYear" ? 2024 : 1);
    for (const std::u16string_view cell :
         {u"RepLastPerBeg", u"RepLastPerEnd", u"RepCurrPerBeg", u"RepCurrPerEnd"}) {
      Set(cell, DateFromParts(2024, 5, 1));
    }
    period = Create(u"CRepPeriod");
    Init();
    failure.Reset(calls);
    bool result = false;
    EXPECT_EQ(RaisedBy([&] { result = Edit(); }), 0) << "call " << calls;
    failed = failure.has_failed();
    failure.Reset(0);
    period.reset();
    EXPECT_EQ(Object::LiveCount(), alive) << "call " << calls;
    EXPECT_TRUE(failed || result);
    if (result) continue;  // also after a failure in filling the controls, which can be confirmed as they are
    std::size_t cells = 0;
    for (const std::u16string_view cell :
         {u"RepYear", u"RepLastPerBeg", u"RepLastPerEnd", u"RepCurrPerBeg", u"RepCurrPerEnd"}) {
      cells += At(cell) != Value(DateFromParts(2024, 5, 1)) && At(cell) != Value(2024.0) ? 1 : 0;
    }
    written.push_back(cells);
  }
  // Each later failure leaves at least as much written, up to all of it.
  EXPECT_TRUE(std::ranges::is_sorted(written));
  EXPECT_EQ(written.front(), 0u);
  EXPECT_EQ(written.back(), 5u);
  EXPECT_GT(calls, 100);
}

TEST_F(ReportPeriodSaving, EditCostsTheSameFewCallsForEachBudget) {
  NameCells();
  Edit();  // the dialog and the message resource are there from now on
  std::map<long, long> calls;
  platform.forms.user = [](MemoryForm& form) { form.Click(u"btOk"); };
  for (const std::int32_t rows : {0, 100, 10000}) {
    Set(u"BudgetCount", rows);
    if (rows > 0) {
      std::vector<Value> cells;
      for (std::int32_t i = 0; i < rows; ++i) {
        for (const Value& value : {Value(u"MEDVILNE"), Value(u"B1"), Value(1), Value(12), Value(u"BIU-2024"),
                                   Value(11), Value(u"BIU-2023")}) {
          cells.push_back(value);
        }
      }
      Cell(u"BookCode").Offset(1, 0).Resize(rows, 7).SetValue(Array::Block(rows, 7, std::move(cells)));
    }
    count.Reset();
    EXPECT_TRUE(Edit());
    calls[rows] = count.calls();
    EXPECT_EQ(At(u"BudgetCount"), Value(static_cast<double>(rows)));
  }
  EXPECT_EQ(calls[0], 173);
  EXPECT_EQ(calls[100], 606);
  // For each budget: stored when loaded; deleted and passed when the dialog rewrites them; stored again.
  EXPECT_EQ(calls[10000] - calls[100], 9900 * 4);
}

}  // namespace
}  // namespace qva
