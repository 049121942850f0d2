#include "period/CRepPeriod.h"

#include <algorithm>

#include "platform/date.h"
#include "platform/excel.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::u16string> kNames = {
    u"AccPlan",           u"RepYear",         u"RepQuarter",        u"RepMon",
    u"RepType",           u"RepLastPerBeg",   u"RepLastPerEnd",     u"RepCurrPerBeg",
    u"RepCurrPerEnd",     u"CurrBudgetDocId", u"CurrBudgetDocCode", u"LastBudgetDocId",
    u"LastBudgetDocCode", u"IsBudgetPlan",    u"BudgetCount",       u"BookCode"};

/// A workbook whose sheet keeps the period.
class ReportPeriod : public LibraryTest {
 protected:
  ReportPeriod() {
    global = Connected();
    workbook = excel->AddWorkbook();
    sheet = excel::Worksheet(GetObject(workbook, u"ActiveSheet"));
    period = Create(u"CRepPeriod");
  }

  ObjectPtr Sheet() { return interceptor.Wrap(sheet.object(), u"Worksheet"); }
  void Init() { Call(period, u"Init", {Sheet()}); }
  bool Edit() { return Call(period, u"Edit").ToBoolean(); }
  /// Lets the user act and confirm.
  bool EditAndConfirm(const std::function<void(MemoryForm&)>& user = {}) {
    platform.forms.user = [user](MemoryForm& form) {
      if (user) user(form);
      form.Click(u"btOk");
    };
    return Edit();
  }

  excel::Names Names() { return excel::Workbook(workbook).Names(); }
  /// All names of the workbook with what they refer to.
  std::vector<std::u16string> NameList() {
    std::vector<std::u16string> list;
    for (std::int32_t i = 1; i <= Names().Count(); ++i) {
      list.push_back(Names().Item(i).Name() + Names().Item(i).RefersTo());
    }
    return list;
  }
  excel::Range Cell(std::u16string_view address) { return sheet.Range(address); }
  Value At(std::u16string_view address) { return Cell(address).Value(); }
  void Set(std::u16string_view address, Value value) { Cell(address).SetValue(std::move(value)); }

  /// The 16 names on A1:A16, with the values of a report of 2024; the budget table begins at A17.
  void NameCells() {
    for (std::size_t i = 0; i < kNames.size(); ++i) {
      Names().Add(kNames[i], u"=Sheet1!$A$" + NumberText(static_cast<long long>(i) + 1));
    }
    Set(u"AccPlan", u"F1");
    Set(u"RepYear", 2024);
    Set(u"RepQuarter", 2);
    Set(u"RepMon", 5);
    Set(u"RepType", 3);
    Init();
  }
  void SetRow(std::int32_t row, const std::vector<Value>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      Cell(u"BookCode").Offset(row, static_cast<std::int32_t>(i)).SetValue(values[i]);
    }
  }
  std::vector<Value> RowOf(std::int32_t row) {
    std::vector<Value> values;
    for (std::int32_t i = 0; i < 7; ++i) values.push_back(Cell(u"BookCode").Offset(row, i).Value());
    return values;
  }
  /// What the named cells hold, in their order.
  std::vector<Value> Cells() {
    std::vector<Value> values;
    for (const std::u16string& name : kNames) values.push_back(At(name));
    return values;
  }
  /// What the dialog is given, shown to a user who cancels.
  std::string ShownPeriods() {
    std::string shown = "not shown";
    platform.forms.user = [&](MemoryForm& form) {
      const auto day = [&](std::u16string_view name) {
        return ToUtf8(FormatByWindowsPattern(ui::Get<ui::DatePicker>(form, name).Value(), u"yyyy-MM-dd"));
      };
      shown = day(u"edPrevBegDate") + ".." + day(u"edPrevEndDate") + " " + day(u"edCurrBegDate") + ".." +
              day(u"edCurrEndDate");
    };
    Edit();
    return shown;
  }
  /// The rows that the dialog shows.
  std::vector<std::vector<std::u16string>> ShownRows() {
    std::vector<std::vector<std::u16string>> rows;
    platform.forms.user = [&](MemoryForm& form) {
      for (std::size_t row = 0; row < form.RowCount(u"SpecGrid"); ++row) {
        rows.emplace_back();
        for (const ui::GridColumn& column : form.Columns(u"SpecGrid")) {
          rows.back().push_back(form.CellText(u"SpecGrid", row, column.name));
        }
      }
    };
    Edit();
    return rows;
  }

  ObjectPtr global;
  ObjectPtr workbook;
  excel::Worksheet sheet;
  ObjectPtr period;
};

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
  EXPECT_EQ(ErrorNumberOf([&] { Init(); }), kApplicationDefined);
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
  platform.forms.user = [](MemoryForm& form) {
    EXPECT_EQ(form.Text(u"cbAccPlan"), u"F1");
    EXPECT_EQ(form.Text(u"txtYear"), u"2024");
    EXPECT_EQ(form.Text(u"txtQuater"), u"2");
    EXPECT_EQ(form.Text(u"txtMonth"), u"5");
    EXPECT_EQ(form.Text(u"optMonth"), u"1");
  };
  EXPECT_FALSE(Edit());
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

TEST_F(ReportPeriod, EditPrefersTheTableToTheSingleBudgetCells) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"BALTIJA", u"F2", 0, 14, u"BIU-B"});
  Set(u"CurrBudgetDocId", 12);
  Set(u"CurrBudgetDocCode", u"BIU-2024");
  EXPECT_THAT(ShownRows(), ElementsAre(ElementsAre(u"BALTIJA", u"F2", u"0", u"BIU-B", u"")));
}

// --- Saving

TEST_F(ReportPeriod, EditKeepsWhatTheUserConfirms) {
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

TEST_F(ReportPeriod, EditLeavesEveryCellWhenTheUserCancels) {
  NameCells();
  Set(u"CurrBudgetDocId", 12);
  Set(u"BudgetCount", 1);
  SetRow(1, {u"BALTIJA", u"F2", 0, 14, u"BIU-B"});
  const auto before = Cells();
  const auto row = RowOf(1);
  platform.forms.user = [](MemoryForm& form) {
    form.Type(u"txtQuater", u"3");
    form.Click(u"btSpecDelete");
    form.Click(u"btCancel");
  };
  EXPECT_FALSE(Edit());
  EXPECT_EQ(Cells(), before);
  EXPECT_EQ(RowOf(1), row);
}

TEST_F(ReportPeriod, EditMovesTheSingleBudgetIntoTheTable) {
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

TEST_F(ReportPeriod, EditReplacesTheOldTable) {
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

TEST_F(ReportPeriod, EditClearsDownToTheSheetsBottomBelowATableOfOneRow) {
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

TEST_F(ReportPeriod, EditKeepsATableOnAnotherSheetThanTheOneGiven) {
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

TEST_F(ReportPeriod, EditReadsAndWritesTheCellsInTheirOrder) {
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
  EXPECT_THAT(
      std::vector<std::string>(first_write, steps.end()),
      ElementsAre(
          "AccPlan.Value = \"F1\"", "RepYear.Value = 2024", "RepQuarter.Value = 2", "RepMon.Value = 5",
          "RepType.Value = 3", "RepLastPerBeg.Value = #2023-01-01#", "RepLastPerEnd.Value = #2023-12-31#",
          "RepCurrPerBeg.Value = #2024-01-01#", "RepCurrPerEnd.Value = #2024-12-31#", "BudgetCount.Value = 1",
          "CurrBudgetDocId.Value = 0", "CurrBudgetDocCode.Value = \"\"", "LastBudgetDocId.Value = 0",
          "LastBudgetDocCode.Value = \"\"", "IsBudgetPlan.Value = 0", "BookCode.Offset(1, 0)",
          "BookCode.Offset(1, 0).Value -> \"MEDVILNE\"", "BookCode.Offset(1, 0).Worksheet",
          "BookCode.Offset(1, 0).End(-4121)", "BookCode.Offset(1, 0).End(-4121).Offset(0, 6)",
          "BookCode.Offset(1, 0).CopyFromRecordset(Recordset.Clone(-1)) -> 1", "BudgetCount.Value = 1"));
}

TEST_F(ReportPeriod, EditCountsTheRecordsWritten) {
  NameCells();
  Set(u"BudgetCount", 2);
  SetRow(1, {u"MEDVILNE", u"F1", 0});
  SetRow(2, {u"MEDVILNE", u"B1", 1});
  EXPECT_TRUE(EditAndConfirm(
      [](MemoryForm& form) { EXPECT_TRUE(form.TypeCell(u"SpecGrid", 2, u"BookCode", u"BALTIJA")); }));
  EXPECT_EQ(At(u"BudgetCount"), Value(3.0));
  EXPECT_EQ(RowOf(3)[0], Value(u"BALTIJA"));
}

TEST_F(ReportPeriod, EditShowsWhatItSaved) {
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

TEST_F(ReportPeriod, TwoSheetsKeepTheirOwnPeriods) {
  NameCells();
  ObjectPtr other = Create(u"CRepPeriod");
  Call(other, u"Init", {Sheet()});
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) { form.Type(u"txtYear", u"2026"); }));
  platform.forms.user = [](MemoryForm& form) { EXPECT_EQ(form.Text(u"txtYear"), u"2026"); };
  EXPECT_FALSE(Call(other, u"Edit").ToBoolean());
}

// --- Failures and cost

TEST_F(ReportPeriod, EditRaisesNothingWhenMemoryRunsOut) {
  NameCells();
  const auto before = Cells();
  platform.forms.user = [](MemoryForm&) { throw std::bad_alloc(); };
  bool result = true;
  EXPECT_NO_THROW(result = Edit());
  EXPECT_FALSE(result);
  EXPECT_EQ(Cells(), before);
  EXPECT_TRUE(EditAndConfirm());
}

TEST_F(ReportPeriod, EditKeepsTheTableThatTheDialogCouldNotShow) {
  NameCells();
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  const auto before = Cells();
  const auto row = RowOf(1);
  host.texts.erase(828);  // the filling ends before the grid
  EXPECT_FALSE(EditAndConfirm([](MemoryForm& form) { EXPECT_EQ(form.RowCount(u"SpecGrid"), 0u); }));
  EXPECT_EQ(Cells(), before);
  EXPECT_EQ(RowOf(1), row);
}

TEST_F(ReportPeriod, EditNeverRaisesAndKeepsWhatWasWrittenWhateverCallFails) {
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
    EXPECT_EQ(ErrorNumberOf([&] { result = Edit(); }), 0) << "call " << calls;
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

TEST_F(ReportPeriod, EditCostsTheSameFewCallsForEachBudget) {
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
  EXPECT_EQ(calls[0], 171);
  EXPECT_EQ(calls[100], 604);
  // For each budget: stored when loaded; deleted and passed when the dialog rewrites them; stored again.
  EXPECT_EQ(calls[10000] - calls[100], 9900 * 4);
}

}  // namespace
}  // namespace qva
