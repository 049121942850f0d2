// CRepPeriod: what the status bar tells where the period takes long.
#include "tests/period/rep_period_fixture.h"
#include "tests/ticking_clock.h"

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

TEST_F(LongPeriod, TheBudgetsAreToldAsTheyAreReadShownAndTakenOver) {
  for (int row = 1; row <= 40; ++row) SetRow(row, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  Set(u"BudgetCount", 40);
  trace.Clear();
  // What is done with the rows is the library's own work.
  TickingClock clock(platform.clock, milliseconds(500));
  Services services = GetServices();
  services.clock = &clock;
  InstallServices(services);
  Value while_shown;
  EXPECT_TRUE(EditAndConfirm([&](MemoryForm&) { while_shown = BarNow(); }));
  EXPECT_EQ(while_shown, Value(false));
  for (const char* text :
       {"Skaitomi biudžetai: 1 iš 40", "Rodomi biudžetai: 1 iš 40", "Perimami biudžetai"}) {
    EXPECT_THAT(Bar(), Contains("Application.StatusBar = \"" + std::string(text) + "\""));
  }
  EXPECT_EQ(BarNow(), Value(false));
  services.clock = &platform.clock;
  InstallServices(services);
}

}  // namespace
}  // namespace qva
