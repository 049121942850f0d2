// CReports: Locking and ColorRanges.
#include "tests/heard_failures.h"
#include "tests/reports/report_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Colouring : public ReportTest {
 protected:
  void Lock(std::u16string_view address) { Call(reports, u"Locking", {TracedCells(address)}); }
  bool IsLocked(std::u16string_view address) const { return Get(Cells(address), u"Locked").ToBoolean(); }
  bool Updating() const { return Get(excel, u"ScreenUpdating").ToBoolean(); }

  void Color(const Value& grey, bool color, const Value& yellow = Nothing(), const Value& error = Nothing()) {
    Call(reports, u"ColorRanges", {grey, yellow, error, color});
  }
  Value ColorOf(std::u16string_view address) const {
    return Get(GetObject(Cells(address), u"Interior"), u"ColorIndex");
  }
};

// --- Locking

TEST_F(Colouring, LockingLocksAndUnlocksInTurn) {
  Put(Cells(u"B2:C3"), u"Locked", false);
  Lock(u"B2:C3");
  EXPECT_TRUE(IsLocked(u"B2:C3"));
  Lock(u"B2:C3");
  EXPECT_FALSE(IsLocked(u"B2:C3"));
  EXPECT_TRUE(IsLocked(u"A1")) << "other cells stay locked as they are at first";
  Lock(u"B2:C3");
  EXPECT_TRUE(IsLocked(u"B2:C3"));
}

TEST_F(Colouring, LockingsFlagBelongsToTheInstanceAndNotToTheZone) {
  Lock(u"A1");
  Lock(u"B1");
  EXPECT_TRUE(IsLocked(u"A1"));
  EXPECT_FALSE(IsLocked(u"B1")) << "the second call unlocks, whatever its zone";
  const ObjectPtr other = Create(u"CReports");
  Call(other, u"Locking", {TracedCells(u"B1")});
  EXPECT_TRUE(IsLocked(u"B1")) << "another instance begins with locking";
}

TEST_F(Colouring, LockingKeepsTheActiveCellAndSelectsTheZone) {
  Call(Cells(u"D5"), u"Select");
  Lock(u"B2:C3");
  EXPECT_EQ(Get(GetObject(excel, u"ActiveCell"), u"Address"), Value(u"$D$5"));
  Call(Cells(u"C3"), u"Select");
  Lock(u"B2:C3");
  EXPECT_EQ(Get(GetObject(excel, u"ActiveCell"), u"Address"), Value(u"$C$3"));
  EXPECT_EQ(Get(GetObject(excel, u"Selection"), u"Address"), Value(u"$B$2:$C$3"));
}

TEST_F(Colouring, LockingTakesMergedCellsAsAWholeAndAllAreas) {
  Call(Cells(u"B2:C3"), u"Merge");
  Put(Cells(u"B2:C3,E5"), u"Locked", false);
  Lock(u"B2,E5");
  EXPECT_TRUE(IsLocked(u"C3")) << "a name for a merged cell means its first one alone";
  EXPECT_TRUE(IsLocked(u"E5"));
}

const char* const kLockingCalls[] = {"Application.ActiveCell",
                                     "Application.ScreenUpdating = False",
                                     "Range.Select() -> True",
                                     "Application.Selection",
                                     "Application.Selection.Locked = True",
                                     "Application.ActiveCell.Activate() -> True",
                                     "Application.ScreenUpdating = True"};

TEST_F(Colouring, LockingFreezesTheScreenMeanwhileAndTakesSevenCalls) {
  Lock(u"B2:C3");
  EXPECT_THAT(trace.lines(), testing::ElementsAreArray(kLockingCalls));
}

TEST_F(Colouring, LockingLetsTheScreenGoOnWhateverItWasBefore) {
  Put(excel, u"ScreenUpdating", false);
  Lock(u"B2");
  EXPECT_TRUE(Updating());
}

// Errors reach the macro; the screen goes on all the same, and the flag has turned.
TEST_F(Colouring, LockingPassesTheErrorOfAnyCallOnAndFreesTheScreen) {
  const long live = Object::LiveCount();
  for (long n = 1; n <= 8; ++n) {
    SCOPED_TRACE(n);
    const ObjectPtr fresh = Create(u"CReports");
    Put(Cells(u"B2"), u"Locked", false);
    Put(excel, u"ScreenUpdating", true);
    const ObjectPtr zone = TracedCells(u"B2");
    StartOver(n);
    const std::int32_t raised = RaisedBy([&] { Call(fresh, u"Locking", {zone}); });
    EXPECT_EQ(failure.has_failed(), n <= 7);
    failure.Reset(0);
    EXPECT_EQ(raised, n <= 7 ? kAutomationFailed : 0);
    EXPECT_TRUE(Updating()) << "where that very call fails, it is tried once more";
    EXPECT_EQ(IsLocked(u"B2"), n >= 6);
    Put(Cells(u"B2"), u"Locked", true);
    Call(fresh, u"Locking", {zone});
    EXPECT_FALSE(IsLocked(u"B2")) << "the failed call counts as the one that locks";
  }
  EXPECT_EQ(Object::LiveCount(), live);
}

TEST_F(Colouring, LockingFreesTheScreenWhenMemoryRunsOut) {
  for (long n = 1; n <= 7; ++n) {
    SCOPED_TRACE(n);
    Put(excel, u"ScreenUpdating", true);
    const ObjectPtr zone = TracedCells(u"B2");
    StartOver(n);
    failure.Reset(n, CallFailure::Kind::NoMemory);
    EXPECT_THROW(Call(reports, u"Locking", {zone}), std::bad_alloc);
    EXPECT_TRUE(Updating());
  }
}

TEST_F(Colouring, LockingAZoneOfAnotherSheetRaisesExcelsRefusal) {
  const ObjectPtr zone = GetObject(Sheet(2), u"Range", {u"A1"});
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"Locking", {zone}); }), kApplicationDefined);
  EXPECT_TRUE(Updating());
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Colouring, LockingNothingRaisesObjectNotSet) {
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"Locking", {Nothing()}); }), kObjectNotSet);
  EXPECT_TRUE(Updating());
}

// --- ColorRanges

TEST_F(Colouring, ColorRangesFillsWithGreyAndTakesTheFillAway) {
  Color(TracedCells(u"A1:B2"), true);
  EXPECT_EQ(ColorOf(u"A1:B2"), Value(15));
  Color(TracedCells(u"A1:B2"), false);
  EXPECT_EQ(ColorOf(u"A1:B2"), Value(-4142));
}

TEST_F(Colouring, ColorRangesNeverTouchesTheYellowRangeAndThatOfErrors) {
  Put(GetObject(Cells(u"C1"), u"Interior"), u"ColorIndex", 6);
  Put(GetObject(Cells(u"D1"), u"Interior"), u"ColorIndex", 3);
  for (const bool color : {true, false}) {
    Color(TracedCells(u"A1"), color, TracedCells(u"C1", u"Yellow"), TracedCells(u"D1", u"Error"));
    EXPECT_EQ(ColorOf(u"C1"), Value(6));
    EXPECT_EQ(ColorOf(u"D1"), Value(3));
  }
  EXPECT_THAT(trace.Text(),
              testing::Not(testing::AnyOf(testing::HasSubstr("Yellow"), testing::HasSubstr("Error"))));
}

TEST_F(Colouring, ColorRangesWithoutAGreyRangeOnlyFreezesTheScreen) {
  Color(Nothing(), true, TracedCells(u"C1"));
  EXPECT_THAT(trace.lines(),
              ElementsAre("Application.ScreenUpdating -> True", "Application.ScreenUpdating = False",
                          "Application.ScreenUpdating = True"));
}

TEST_F(Colouring, ColorRangesTakesFiveCalls) {
  Color(TracedCells(u"A1:B2"), true);
  EXPECT_THAT(
      trace.lines(),
      ElementsAre("Application.ScreenUpdating -> True", "Application.ScreenUpdating = False",
                  "Range.Interior", "Range.Interior.ColorIndex = 15", "Application.ScreenUpdating = True"));
}

TEST_F(Colouring, ColorRangesLeavesTheScreenFrozenWhereItWasSo) {
  Put(excel, u"ScreenUpdating", false);
  Color(TracedCells(u"A1"), true);
  EXPECT_FALSE(Updating());
  EXPECT_EQ(ColorOf(u"A1"), Value(15));
}

TEST_F(Colouring, ColorRangesShowsAnErrorAndRestoresTheScreenWhicheverCallFails) {
  const long live = Object::LiveCount();
  for (long n = 1; n <= 6; ++n) {
    SCOPED_TRACE(n);
    platform.message_box = {};
    Put(excel, u"ScreenUpdating", true);
    const ObjectPtr fresh = Create(u"CReports");
    const ObjectPtr grey = TracedCells(u"A1");
    Put(GetObject(Cells(u"A1"), u"Interior"), u"ColorIndex", -4142);
    StartOver(n);
    EXPECT_EQ(RaisedBy([&] { Call(fresh, u"ColorRanges", {grey, Nothing(), Nothing(), true}); }), 0);
    EXPECT_EQ(failure.has_failed(), n <= 5);
    EXPECT_EQ(ColorOf(u"A1"), Value(n >= 5 ? 15 : -4142));
    EXPECT_TRUE(Updating()) << "where that very call fails, it is tried once more";
    if (n <= 5) {
      ASSERT_EQ(Boxes().size(), 1u);
      EXPECT_EQ(Boxes()[0].text, u"The call failed");
      EXPECT_THAT(Boxes()[0].captions, ElementsAre(u"Gerai"));
    } else {
      EXPECT_THAT(BoxTexts(), IsEmpty());
    }
  }
  EXPECT_EQ(Object::LiveCount(), live);
}

TEST_F(Colouring, ColorRangesOnAProtectedSheetShowsExcelsRefusal) {
  const HeardFailures heard;
  Call(Sheet(), u"Protect");
  Color(TracedCells(u"A1"), true);
  EXPECT_THAT(BoxTexts(), ElementsAre(u"Unable to set the ColorIndex property"));
  EXPECT_EQ(heard.failed, BoxTexts());
  EXPECT_TRUE(Updating());
}

TEST_F(Colouring, AnErrorThatCannotBeShownReachesTheMacro) {
  Call(Sheet(), u"Protect");
  StartOver(6);  // the creation of the message object, after the screen was restored
  EXPECT_EQ(RaisedBy([&] { Color(TracedCells(u"A1"), true); }), kAutomationFailed);
  EXPECT_TRUE(Updating());
}

TEST_F(Colouring, ColorRangesFreesTheScreenWhenMemoryRunsOut) {
  for (long n = 1; n <= 5; ++n) {
    SCOPED_TRACE(n);
    const ObjectPtr grey = TracedCells(u"B2");
    StartOver(n);
    failure.Reset(n, CallFailure::Kind::NoMemory);
    EXPECT_THROW(Color(grey, true), std::bad_alloc);
    EXPECT_TRUE(Updating());
  }
}

}  // namespace
}  // namespace qva
