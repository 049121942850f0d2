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

TEST_F(LongPeriod, EachStepOfASecondIsTold) {
  for (int row = 1; row <= 3; ++row) SetRow(row, {u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023"});
  Set(u"BudgetCount", 3);
  trace.Clear();
  TickingClock clock(platform.clock, milliseconds(1000));
  Services services = GetServices();
  services.clock = &clock;
  InstallServices(services);
  Init();
  EXPECT_TRUE(EditAndConfirm());
  services.clock = &platform.clock;
  InstallServices(services);
  std::map<std::string, int> told;
  for (const std::string& line : Bar()) {
    const std::string setting = "Application.StatusBar = ";
    if (line.starts_with(setting)) ++told[line.substr(setting.size())];
  }
  EXPECT_EQ(told,
            (std::map<std::string, int>{
                {"\"Ieškoma ataskaitos laikotarpio langelių\"", 16 + 16},  // names and cells
                {"\"Skaitomi biudžetai: 0 iš 3\"", 1},
                {"\"Skaitomi biudžetai: 1 iš 3\"", 1},
                {"\"Skaitomi biudžetai: 2 iš 3\"", 1},
                {"\"Rodomi biudžetai: 0 iš 3\"", 1},
                {"\"Rodomi biudžetai: 1 iš 3\"", 1},
                {"\"Rodomi biudžetai: 2 iš 3\"", 1},
                {"\"Perimami biudžetai\"", 3 + 3},                   // taken away and added
                {"\"Įrašomas ataskaitos laikotarpis\"", 9 + 1 + 1},  // cells, the old table, the new one
                {"False", 5}}));
}

}  // namespace
}  // namespace qva
