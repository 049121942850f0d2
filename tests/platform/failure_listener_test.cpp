#include "platform/failure_listener.h"

#include <gtest/gtest.h>

#include <new>

namespace qva {
namespace {

/// One that has no memory for what it hears.
struct ShortOfMemory : FailureListener {
  void Failed(std::u16string_view) override { Hear(); }
  void WronglyAnswered(std::u16string_view) override { Hear(); }
  void Hear() {
    ++heard;
    throw std::bad_alloc();
  }
  int heard = 0;
};

TEST(FailureListener, EndsNothingWhereItRunsOutOfMemory) {
  ShortOfMemory listener;
  ListenForFailures(&listener);
  TellFailure(u"Neapdorota klaida");
  TellWrongAnswer(u"Nepanaudotas atsakymas");
  ListenForFailures(nullptr);
  EXPECT_EQ(listener.heard, 2);
}

}  // namespace
}  // namespace qva
