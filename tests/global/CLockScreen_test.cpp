#include "global/CLockScreen.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

class LockScreen : public LibraryTest {};

TEST_F(LockScreen, FreezesTheScreenForAsLongAsItLives) {
  const ObjectPtr global = Connected();
  trace.Clear();
  ObjectPtr lock = Create(u"CLockScreen");
  EXPECT_THAT(trace.lines(), ElementsAre("Application.ScreenUpdating = False", "Application.Cursor = 2"));
  trace.Clear();
  lock.reset();
  EXPECT_THAT(trace.lines(), ElementsAre("Application.ScreenUpdating = True", "Application.Cursor = -4143",
                                         "Application.StatusBar = False"));
}

TEST_F(LockScreen, CannotBeMadeWithoutAnApplication) {
  EXPECT_EQ(RaisedBy([] { Create(u"CLockScreen"); }), kObjectNotSet);
}

TEST_F(LockScreen, LeavesTheScreenLiveWhenItCannotBeMade) {
  const ObjectPtr global = Connected();
  for (long n = 1; n <= 2; ++n) {
    failure.Reset(n);
    EXPECT_EQ(RaisedBy([] { Create(u"CLockScreen"); }), kAutomationFailed);
    EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true)) << "call " << n;
    EXPECT_EQ(Get(excel, u"Cursor"), Value(std::int32_t{-4143}));
  }
}

TEST_F(LockScreen, TriesEveryStepOfTheThawWhicheverFails) {
  const ObjectPtr global = Connected();
  for (long n = 1; n <= 3; ++n) {
    Put(excel, u"StatusBar", u"Skaičiuojama");
    ObjectPtr lock = Create(u"CLockScreen");
    trace.Clear();
    failure.Reset(n);
    lock.reset();
    EXPECT_EQ(trace.lines().size(), 3u);
    EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(n != 1));
    EXPECT_EQ(Get(excel, u"Cursor"), Value(std::int32_t{n == 2 ? 2 : -4143}));
    EXPECT_EQ(Get(excel, u"StatusBar").Is(Value::Type::Text), n == 3);
  }
}

TEST_F(LockScreen, TriesEveryStepOfTheThawWhenMemoryRunsOut) {
  const ObjectPtr global = Connected();
  for (long n = 1; n <= 3; ++n) {
    Put(excel, u"StatusBar", u"Skaičiuojama");
    ObjectPtr lock = Create(u"CLockScreen");
    failure.Reset(n, CallFailure::Kind::NoMemory);
    lock.reset();
    EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(n != 1));
    EXPECT_EQ(Get(excel, u"Cursor"), Value(std::int32_t{n == 2 ? 2 : -4143}));
    EXPECT_EQ(Get(excel, u"StatusBar").Is(Value::Type::Text), n == 3);
  }
}

TEST_F(LockScreen, LeavesTheScreenLiveWhenThereIsNoMemoryToMakeIt) {
  const ObjectPtr global = Connected();
  for (long n = 1; n <= 2; ++n) {
    failure.Reset(n, CallFailure::Kind::NoMemory);
    EXPECT_THROW(Create(u"CLockScreen"), std::bad_alloc);
    EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true)) << "call " << n;
    EXPECT_EQ(Get(excel, u"Cursor"), Value(std::int32_t{-4143}));
  }
}

TEST_F(LockScreen, ThawsTheApplicationThatIsConnectedByThen) {
  const ObjectPtr global = Connected();
  ObjectPtr lock = Create(u"CLockScreen");
  const Ref<memory::Application> other = MakeRef<memory::Application>();
  Put(other, u"ScreenUpdating", false);
  Call(global, u"InitConnectEX", {ObjectPtr(other), ObjectPtr()});
  lock.reset();
  EXPECT_EQ(Get(other, u"ScreenUpdating"), Value(true));
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(false));
}

TEST_F(LockScreen, CannotThawOnceTheGlobalObjectIsGone) {
  ObjectPtr global = Connected();
  ObjectPtr lock = Create(u"CLockScreen");
  global.reset();
  lock.reset();
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(false));
}

TEST_F(LockScreen, CostsTwoCallsToMakeAndThreeToRelease) {
  const ObjectPtr global = Connected();
  count.Reset();
  ObjectPtr lock = Create(u"CLockScreen");
  EXPECT_EQ(count.calls(), 2);
  lock.reset();
  EXPECT_EQ(count.calls(), 5);
}

TEST_F(LockScreen, ThawsWhenTheHolderLeavesThroughAnError) {
  const ObjectPtr global = Connected();
  EXPECT_EQ(RaisedBy([] {
              const ObjectPtr lock = Create(u"CLockScreen");
              throw AutomationError(kSubscriptOutOfRange);
            }),
            kSubscriptOutOfRange);
  EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
}

}  // namespace
}  // namespace qva
