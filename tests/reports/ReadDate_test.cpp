#include "platform/date.h"
#include "platform/excel.h"
#include "reports/CReports.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

constexpr std::u16string_view kMonth = u"MonthView1";

/// A report with the year in A1, the month in A2, the day in A3 and the quarter in A4.
class ReadDate : public LibraryTest {
 protected:
  ReadDate() {
    global = Connected();
    const excel::Worksheet sheet(GetObject(excel->AddWorkbook(), u"ActiveSheet"));
    for (const std::u16string_view address : {u"A1", u"A2", u"A3", u"A4"})
      cells.push_back(sheet.Range(address));
    Set({2024, 2, 29, 2});
    reports = Create(u"CReports");
  }

  void Set(const std::vector<Value>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) cells[i].SetValue(values[i]);
  }
  std::vector<Value> Cells() const {
    std::vector<Value> values;
    for (const excel::Range& cell : cells) values.push_back(cell.Value());
    return values;
  }
  bool Read(std::int32_t type) {
    Arguments arguments;
    for (const excel::Range& cell : cells)
      arguments.positional.push_back(interceptor.Wrap(cell.object(), u"Range"));
    arguments.positional.push_back(type);
    return Call(reports, u"ReadDate", std::move(arguments)).ToBoolean();
  }
  /// The date that the picker opens on; the user leaves it.
  std::u16string Shown(std::int32_t type) {
    std::u16string shown = u"nothing";
    platform.forms.user = [&](MemoryForm& form) { shown = form.Text(kMonth); };
    EXPECT_FALSE(Read(type));
    return shown;
  }
  /// Lets the user choose a date.
  bool Choose(std::int32_t type, Date date) {
    platform.forms.user = [=](MemoryForm& form) { form.DoubleClickDay(kMonth, date); };
    return Read(type);
  }

  ObjectPtr global;
  ObjectPtr reports;
  std::vector<excel::Range> cells;
};

TEST_F(ReadDate, ShowsAFullDate) {
  EXPECT_EQ(Shown(FullDate), u"2024-02-29");
}

TEST_F(ReadDate, ShowsThe12thOfAMonth) {
  EXPECT_EQ(Shown(YearAndMonth), u"2024-02-12");
}

TEST_F(ReadDate, ShowsThe12thOfTheLastMonthOfAQuarter) {
  EXPECT_EQ(Shown(YearAndQuater), u"2024-06-12");
}

TEST_F(ReadDate, WritesAFullDate) {
  EXPECT_TRUE(Choose(FullDate, DateFromParts(2025, 11, 3)));
  EXPECT_THAT(Cells(), ElementsAre(2025.0, 11.0, 3.0, 2.0));
}

TEST_F(ReadDate, WritesYearAndMonthAndLeavesTheDayAlone) {
  EXPECT_TRUE(Choose(YearAndMonth, DateFromParts(2025, 1, 31)));
  EXPECT_THAT(Cells(), ElementsAre(2025.0, 1.0, 29.0, 2.0));
}

TEST_F(ReadDate, WritesYearAndQuarter) {
  EXPECT_TRUE(Choose(YearAndQuater, DateFromParts(2024, 11, 3)));
  EXPECT_THAT(Cells(), ElementsAre(2024.0, 2.0, 29.0, 4.0));
}

TEST_F(ReadDate, WritesTheQuarterOfEveryMonth) {
  for (int month = 1; month <= 12; ++month) {
    EXPECT_TRUE(Choose(YearAndQuater, DateFromParts(2024, month, 1)));
    EXPECT_EQ(Cells()[3], Value((month + 2) / 3 * 1.0)) << month;
  }
}

TEST_F(ReadDate, LeavesEveryCellWhenTheUserCancels) {
  const auto before = Cells();
  for (const std::int32_t type : {FullDate, YearAndMonth, YearAndQuater}) Shown(type);
  EXPECT_EQ(Cells(), before);
}

TEST_F(ReadDate, ShowsTodayForAnUnknownTypeAndWritesNothing) {
  const auto before = Cells();
  for (const std::int32_t type : {0, 4, -1}) {
    EXPECT_EQ(Shown(type), u"2024-06-12");
    EXPECT_TRUE(Choose(type, DateFromParts(2020, 1, 1)));
  }
  EXPECT_EQ(Cells(), before);
}

TEST_F(ReadDate, TakesPartsAsWholeNumbers) {
  Set({2024.5, u"3", 10.5, u"2"});  // halves go to the even number
  EXPECT_EQ(Shown(FullDate), u"2024-03-10");
  EXPECT_EQ(Shown(YearAndMonth), u"2024-03-12");
  EXPECT_EQ(Shown(YearAndQuater), u"2024-06-12");
}

// The month is the part that becomes a whole number, not the quarter.
TEST_F(ReadDate, TakesThreeTimesTheQuarterBeforeItIsAWholeNumber) {
  for (const auto& [quarter, shown] : {std::pair(1.5, u"2024-04-12"), {2.4, u"2024-07-12"}}) {
    Set({2024, 1, 1, quarter});
    EXPECT_EQ(Shown(YearAndQuater), shown);
  }
}

TEST_F(ReadDate, TakesEmptyCellsAsZero) {
  Set({Value(), Value(), Value(), Value()});
  EXPECT_EQ(Shown(FullDate), u"1999-11-30");  // the day before the first, of the month before January 2000
  EXPECT_EQ(Shown(YearAndMonth), u"1999-12-12");
  EXPECT_EQ(Shown(YearAndQuater), u"1999-12-12");
}

TEST_F(ReadDate, CarriesPartsOverAsDatesDo) {
  Set({24, 14, 0, 5});
  EXPECT_EQ(Shown(FullDate), u"2025-01-31");
  EXPECT_EQ(Shown(YearAndQuater), u"2025-03-12");
}

TEST_F(ReadDate, RaisesForPartsThatAreNoSmallNumbers) {
  Set({40000});
  EXPECT_EQ(RaisedBy([&] { Read(FullDate); }), kOverflow);
  Set({u"metai"});
  EXPECT_EQ(RaisedBy([&] { Read(YearAndMonth); }), kTypeMismatch);
  for (const double quarter : {20000.0, 1e308, -1e308}) {
    Set({2024, 1, 1, quarter});
    EXPECT_EQ(RaisedBy([&] { Read(YearAndQuater); }), kOverflow) << quarter;
  }
  Set({2024, 1, 40000, 1});
  EXPECT_EQ(RaisedBy([&] { Read(FullDate); }), kOverflow);
  Set({2024, 40000, 1, 1});
  EXPECT_EQ(RaisedBy([&] { Read(YearAndMonth); }), kOverflow);
  EXPECT_EQ(platform.forms.created, 0);
}

TEST_F(ReadDate, LooksAtThePartsOfItsTypeAlone) {
  Set({2024, 2, u"diena", u"ketvirtis"});
  EXPECT_EQ(Shown(YearAndMonth), u"2024-02-12");
  Set({2024, u"mėnuo", u"diena", 2});
  EXPECT_EQ(Shown(YearAndQuater), u"2024-06-12");
  Set({u"metai", u"mėnuo", u"diena", u"ketvirtis"});
  EXPECT_EQ(Shown(0), u"2024-06-12");
}

TEST_F(ReadDate, RaisesForPartsThatMakeNoDate) {
  Set({20000, 1, 1, 1});
  EXPECT_EQ(RaisedBy([&] { Read(FullDate); }), kInvalidProcedureCall);
  Set({1700, 1, 1, 1});
  EXPECT_EQ(RaisedBy([&] { Read(FullDate); }), kInvalidPropertyValue) << "no calendar shows it";
}

TEST_F(ReadDate, RaisesWhatThePickerRaisesAndWritesNothing) {
  Set({2024, 5, 29, 2});
  platform.faults.forms.RefuseShowing();
  trace.Clear();
  EXPECT_EQ(RaisedBy([&] { Read(FullDate); }), kInternalError);
  for (const std::string& line : trace.lines())
    EXPECT_THAT(line, testing::Not(testing::HasSubstr("Range.Value =")));
  EXPECT_EQ(Get(application, u"ScreenUpdating"), Value(true));
  platform.faults.forms.Allow();
  EXPECT_TRUE(Choose(FullDate, DateFromParts(2025, 1, 31)));
}

TEST_F(ReadDate, NeedsOnlyTheCellsOfItsType) {
  platform.forms.user = [](MemoryForm& form) { form.PressKey(kMonth, 13); };
  const Value year = cells[0].object();
  const Value month = cells[1].object();
  EXPECT_TRUE(Call(reports, u"ReadDate", {year, month, Nothing(), Nothing(), 2}).ToBoolean());
  EXPECT_EQ(RaisedBy([&] {
              Call(reports, u"ReadDate", {year, month, Nothing(), Nothing(), 1});
            }),
            kObjectNotSet);
}

TEST_F(ReadDate, RaisesWithoutAnApplication) {
  global.reset();
  EXPECT_EQ(RaisedBy([&] { Read(FullDate); }), kObjectNotSet);
}

TEST_F(ReadDate, LetsTheScreenBeSeenAndReadsBeforeItWrites) {
  const std::string screen = "Application.ScreenUpdating = True";
  const auto calls_of = [&](std::int32_t type) {
    Set({2024, 5, 29, 2});
    trace.Clear();
    Choose(type, DateFromParts(2025, 1, 31));
    return trace.lines();
  };
  EXPECT_THAT(calls_of(FullDate),
              ElementsAre(screen, "Range.Value -> 2024", "Range.Value -> 5", "Range.Value -> 29",
                          "Range.Value = 2025", "Range.Value = 1", "Range.Value = 31"));
  EXPECT_THAT(calls_of(YearAndMonth), ElementsAre(screen, "Range.Value -> 2024", "Range.Value -> 5",
                                                  "Range.Value = 2025", "Range.Value = 1"));
  EXPECT_THAT(calls_of(YearAndQuater), ElementsAre(screen, "Range.Value -> 2024", "Range.Value -> 2",
                                                   "Range.Value = 2025", "Range.Value = 1"));
  EXPECT_THAT(calls_of(7), ElementsAre(screen));
}

TEST_F(ReadDate, ShowsThePickerOverAScreenThatIsUpdated) {
  Put(excel, u"ScreenUpdating", false);
  bool updated = false;
  platform.forms.user = [&](MemoryForm&) { updated = Get(excel, u"ScreenUpdating").ToBoolean(); };
  EXPECT_FALSE(Read(FullDate));
  EXPECT_TRUE(updated);
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
}

TEST_F(ReadDate, CostsFewCalls) {
  const auto calls_of = [&](std::int32_t type, const MemoryForm::User& user) {
    platform.forms.user = user;
    count.Reset();
    Read(type);
    return count.calls();
  };
  const MemoryForm::User confirm = [](MemoryForm& form) { form.PressKey(kMonth, 13); };
  const MemoryForm::User leave = [](MemoryForm& form) { form.PressKey(kMonth, 27); };
  EXPECT_EQ(calls_of(FullDate, confirm), 1 + 3 + 3);
  EXPECT_EQ(calls_of(FullDate, leave), 1 + 3);
  EXPECT_EQ(calls_of(YearAndMonth, confirm), 1 + 2 + 2);
  EXPECT_EQ(calls_of(YearAndMonth, leave), 1 + 2);
  EXPECT_EQ(calls_of(YearAndQuater, confirm), 1 + 2 + 2);
  EXPECT_EQ(calls_of(YearAndQuater, leave), 1 + 2);
  EXPECT_EQ(calls_of(0, confirm), 1);
}

TEST_F(ReadDate, KeepsOnePickerForTheReportsLife) {
  const long without = Object::LiveCount();
  Shown(FullDate);
  EXPECT_EQ(Object::LiveCount(), without + 1);
  Shown(YearAndMonth);
  EXPECT_EQ(Object::LiveCount(), without + 1);
  reports.reset();
  EXPECT_EQ(Object::LiveCount(), without - 1);
}

TEST_F(ReadDate, PassesEveryFailureOnAndLeaksNothing) {
  Choose(FullDate, DateFromParts(2025, 1, 31));
  const long alive = Object::LiveCount();
  long calls = 1;
  for (;; ++calls) {
    failure.Reset(calls);
    const std::int32_t error = RaisedBy([&] { Choose(FullDate, DateFromParts(2025, 1, 31)); });
    const bool failed = failure.has_failed();
    failure.Reset(0);
    EXPECT_EQ(Object::LiveCount(), alive) << "call " << calls;
    if (!failed) break;
    EXPECT_EQ(error, kAutomationFailed) << "call " << calls;
  }
  EXPECT_EQ(calls, 8);
}

}  // namespace
}  // namespace qva
