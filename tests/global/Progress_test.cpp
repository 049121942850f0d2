#include "global/Progress.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

class ProgressTest : public LibraryTest {
 protected:
  ProgressTest() {
    Pass(5000);  // the clock runs longer than the work
    StartOver();
  }

  void StartOver(long failing_call = 0) {
    trace.Clear();
    failure.Reset(failing_call);
  }
  void Pass(int time) { platform.clock.Advance(milliseconds(time)); }
  Value Bar() const { return Get(excel, u"StatusBar"); }

  ObjectPtr global = Connected();
};

TEST_F(ProgressTest, CallsNothingWithinASecond) {
  {
    Progress progress;
    progress.Say(u"Skaičiuojama");
    Pass(999);
    progress.Say(u"Skaičiuojama", 1, 2);
    progress.Pause();
  }
  EXPECT_THAT(trace.lines(), IsEmpty());
}

TEST_F(ProgressTest, TellsAfterASecondAndHandsTheBarBack) {
  {
    Progress progress;
    Pass(1000);
    progress.Say(u"Skaičiuojama", 5, 20);
    EXPECT_EQ(Bar(), Value(u"Skaičiuojama: 5 iš 20"));
  }
  EXPECT_THAT(trace.lines(), ElementsAre("Application.StatusBar -> False",
                                         "Application.StatusBar = \"Skaičiuojama: 5 iš 20\"",
                                         "Application.StatusBar = False"));
}

TEST_F(ProgressTest, PutsTheMacrosOwnTextBack) {
  Put(excel, u"StatusBar", u"Ataskaita rengiama");
  {
    Progress progress;
    Pass(1000);
    progress.Say(u"Skaičiuojama");
    EXPECT_EQ(Bar(), Value(u"Skaičiuojama"));
  }
  EXPECT_EQ(Bar(), Value(u"Ataskaita rengiama"));
}

TEST_F(ProgressTest, ChangesTheTextOnceASecondAtMost) {
  Progress progress;
  Pass(1000);
  progress.Say(u"Pirmas");
  Pass(999);
  progress.Say(u"Antras");
  EXPECT_EQ(Bar(), Value(u"Pirmas"));
  Pass(1);
  progress.Say(u"Trečias");
  EXPECT_EQ(Bar(), Value(u"Trečias"));
  EXPECT_EQ(trace.lines().size(), 3u) << "the former text is read once";
}

TEST_F(ProgressTest, APauseHandsTheBarBackAndIsNoWork) {
  Progress progress;
  Pass(600);
  progress.Pause();
  Pass(60000);
  progress.Say(u"Pirmas");
  Pass(399);
  progress.Say(u"Antras");
  EXPECT_THAT(trace.lines(), IsEmpty());
  Pass(1);
  progress.Say(u"Trečias");
  EXPECT_EQ(Bar(), Value(u"Trečias"));
  progress.Pause();
  EXPECT_EQ(Bar(), Value(false));
  progress.Say(u"Ketvirtas");
  EXPECT_EQ(Bar(), Value(u"Ketvirtas")) << "it has worked long enough";
}

TEST_F(ProgressTest, ABarThatIsRefusedIsLeftAloneFromThenOn) {
  for (const long call : {1, 2}) {
    StartOver(call);
    {
      Progress progress;
      for (int n = 0; n < 3; ++n) {
        Pass(1000);
        progress.Say(u"Skaičiuojama");
      }
    }
    EXPECT_EQ(trace.lines().size(), call == 1 ? 1u : 3u)
        << "after a refused text, the former one is put back";
    EXPECT_EQ(Bar(), Value(false));
  }
}

TEST_F(ProgressTest, WithoutAConnectedExcelNothingIsTold) {
  TheGlobals().application = {};
  Progress progress;
  Pass(1000);
  progress.Say(u"Skaičiuojama");
  EXPECT_THAT(trace.lines(), IsEmpty());
}

}  // namespace
}  // namespace qva
