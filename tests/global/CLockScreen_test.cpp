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
  EXPECT_EQ(ErrorNumberOf([] { Create(u"CLockScreen"); }), kObjectNotSet);
}

TEST_F(LockScreen, ThawsWhatItCanWhenExcelRefuses) {
  const ObjectPtr global = Connected();
  ObjectPtr lock = Create(u"CLockScreen");
  trace.Clear();
  failure.Reset(1);
  lock.reset();
  EXPECT_EQ(trace.lines().size(), 3u);
  EXPECT_EQ(Get(excel, u"Cursor"), Value(std::int32_t{-4143}));
}

}  // namespace
}  // namespace qva
