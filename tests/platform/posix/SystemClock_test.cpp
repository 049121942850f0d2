#include "platform/posix/SystemClock.h"

#include <cmath>
#include <ctime>
#include <thread>

#include "platform/date.h"
#include "platform/text.h"
#include "tests/platform/clock_contract.h"
#include "tests/temporary_environment.h"

namespace qva {
namespace {

class SystemsClock {
 public:
  Clock& clock() { return clock_; }
  static void Pass(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

 private:
  SystemClock clock_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(SystemClock, ClockContract, SystemsClock);

namespace {

class SystemClockTest : public testing::Test {
 protected:
  ~SystemClockTest() override {
    zone.reset();
    ::tzset();
  }

  /// The clock's time in a time zone, as seconds since 1 January 1970 by that zone.
  static long long LocalSeconds() { return std::llround((SystemClock().Now().serial - 25569) * 86400); }

  void UseZone(const char* name) {
    zone->Set("TZ", name);
    ::tzset();
  }

  std::optional<TemporaryEnvironment> zone{std::in_place};
};

TEST_F(SystemClockTest, ShowsTheCurrentSecond) {
  UseZone("UTC0");
  const long long before = std::time(nullptr);
  const long long now = LocalSeconds();
  EXPECT_GE(now, before);
  EXPECT_LE(now, std::time(nullptr));
}

TEST_F(SystemClockTest, ShowsTheUsersTimeZone) {
  UseZone("EAST-5:30");
  const long long before = std::time(nullptr);
  const long long now = LocalSeconds() - (5 * 60 + 30) * 60;
  EXPECT_GE(now, before);
  EXPECT_LE(now, std::time(nullptr));
}

TEST_F(SystemClockTest, ShowsWholeSeconds) {
  const double seconds = SystemClock().Now().serial * 86400;
  EXPECT_NEAR(seconds, std::round(seconds), 1e-3);
}

TEST_F(SystemClockTest, RunsOnWhateverTheWallClockShows) {
  const SystemClock clock;
  const auto before = clock.Running();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  const auto passed = clock.Running() - before;
  EXPECT_GE(passed, std::chrono::milliseconds(19));
  EXPECT_LT(passed, std::chrono::seconds(60));
}

}  // namespace
}  // namespace qva
