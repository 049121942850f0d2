// CRepPeriod: what the status bar tells where the period takes long.
#include "tests/period/rep_period_fixture.h"

namespace qva {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::IsEmpty;

class LongPeriod : public ReportPeriodTest {
 protected:
  LongPeriod() {
    NameCells();
    trace.Clear();
  }
  std::vector<std::string> Bar() const {
    std::vector<std::string> lines;
    for (const std::string& line : trace.lines()) {
      if (line.find("StatusBar") != line.npos) lines.push_back(line);
    }
    return lines;
  }
  Value BarNow() const { return Get(excel, u"StatusBar"); }
};

TEST_F(LongPeriod, WithinASecondNothingIsTold) {
  call_time.PerCall(milliseconds(1));
  Init();
  EXPECT_TRUE(EditAndConfirm());
  EXPECT_THAT(Bar(), IsEmpty());
}

TEST_F(LongPeriod, InitTellsThatItLooksForItsCells) {
  call_time.PerCall(milliseconds(100));
  Init();
  EXPECT_THAT(Bar(), Contains("Application.StatusBar = \"Ieškoma ataskaitos laikotarpio langelių\""));
  EXPECT_EQ(BarNow(), Value(false));
}

TEST_F(LongPeriod, WritingThePeriodIsToldAndNotWhileTheDialogIsShown) {
  call_time.PerCall(milliseconds(300));
  Value while_shown;
  EXPECT_TRUE(EditAndConfirm([&](MemoryForm&) { while_shown = BarNow(); }));
  EXPECT_EQ(while_shown, Value(false));
  EXPECT_THAT(Bar(), Contains("Application.StatusBar = \"Įrašomas ataskaitos laikotarpis\""));
  EXPECT_EQ(BarNow(), Value(false));
}

}  // namespace
}  // namespace qva
