// What Clock promises, as tests that every adapter passes. A System is made for each test and brings the
// adapter:
// - Clock& clock(): the adapter.
// - void Pass(std::chrono::milliseconds time): returns when so much time has passed.
#pragma once

#include <gtest/gtest.h>

#include <cmath>

#include "platform/clock.h"
#include "platform/date.h"
#include "tests/readable_values.h"

namespace qva {

template <class System>
class ClockContract : public testing::Test {
 protected:
  double Seconds() { return clock.Now().serial * 86400; }

  System system;
  Clock& clock = system.clock();
};

TYPED_TEST_SUITE_P(ClockContract);

TYPED_TEST_P(ClockContract, NowIsASecondOfOurDays) {
  EXPECT_NEAR(this->Seconds(), std::round(this->Seconds()), 1e-3);
  EXPECT_GT(this->clock.Now(), DateFromParts(2024, 1, 1));
  EXPECT_LT(this->clock.Now(), DateFromParts(2100, 1, 1));
}

TYPED_TEST_P(ClockContract, NowGoesOn) {
  const double before = this->Seconds();
  this->system.Pass(std::chrono::milliseconds(1100));
  EXPECT_GT(this->Seconds(), before + 0.5);
  EXPECT_LT(this->Seconds(), before + 60);
}

TYPED_TEST_P(ClockContract, RunsOnSteadily) {
  const auto before = this->clock.Running();
  this->system.Pass(std::chrono::milliseconds(100));
  const auto passed = this->clock.Running() - before;
  EXPECT_GE(passed, std::chrono::milliseconds(80));  // Windows counts in steps of 16
  EXPECT_LT(passed, std::chrono::seconds(60));
}

REGISTER_TYPED_TEST_SUITE_P(ClockContract, NowIsASecondOfOurDays, NowGoesOn, RunsOnSteadily);

}  // namespace qva
