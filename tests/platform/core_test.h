// What tests of the seam's core share: an in-memory platform in use, values in readable form, and the error
// that is raised.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/MemoryPlatform.h"
#include "platform/value.h"
#include "tests/raised_error.h"
#include "tests/readable_values.h"

namespace qva {

class CoreTest : public testing::Test {
 protected:
  CoreTest() { InstallServices(platform.services()); }
  ~CoreTest() override {
    EXPECT_EQ(Object::LiveCount(), live_before) << "objects stay alive";
    InstallServices({});
  }

  const long live_before = Object::LiveCount();
  MemoryPlatform platform;
};

}  // namespace qva
