// What tests of the seam's core share: an in-memory platform in use, values in readable form, and the number
// of an expected error.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/MemoryPlatform.h"
#include "platform/value.h"
#include "tests/readable_values.h"

namespace qva {

class CoreTest : public testing::Test {
 protected:
  CoreTest() { InstallServices(platform.services()); }
  ~CoreTest() override {
    EXPECT_EQ(Object::LiveCount(), live_before) << "objects stay alive";
    InstallServices({});
  }

  /// The number of the error that `step` raises, 0 for none.
  template <class Step>
  static std::int32_t RaisedBy(Step&& step) {
    try {
      step();
      return 0;
    } catch (const AutomationError& error) {
      return error.number();
    }
  }

  const long live_before = Object::LiveCount();
  MemoryPlatform platform;
};

}  // namespace qva
