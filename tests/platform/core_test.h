// What tests of the seam's core share: an in-memory platform in use, values in readable form, and the number
// of an expected error.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "platform/memory/MemoryPlatform.h"
#include "platform/text.h"
#include "platform/value.h"

namespace qva {

inline void PrintTo(const Value& value, std::ostream* out) {
  *out << ToUtf8(DescribeValue(value));
}

inline void PrintTo(const Currency& amount, std::ostream* out) {
  PrintTo(Value(amount), out);
}

inline void PrintTo(const Date& date, std::ostream* out) {
  PrintTo(Value(date), out);
}

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
