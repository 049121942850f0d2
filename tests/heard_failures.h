// A failure listener that keeps what it hears while it lives.
#pragma once

#include <string>
#include <vector>

#include "platform/failure_listener.h"

namespace qva {

struct HeardFailures : FailureListener {
  HeardFailures() { ListenForFailures(this); }
  ~HeardFailures() override { ListenForFailures(nullptr); }
  HeardFailures(const HeardFailures&) = delete;
  HeardFailures& operator=(const HeardFailures&) = delete;

  void Failed(std::u16string_view what) override { failed.emplace_back(what); }
  void WronglyAnswered(std::u16string_view what) override { wrongly_answered.emplace_back(what); }

  std::vector<std::u16string> failed;
  std::vector<std::u16string> wrongly_answered;
};

}  // namespace qva
