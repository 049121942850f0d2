#include "platform/failure_listener.h"

#include "platform/error.h"

namespace qva {
namespace {

FailureListener* listening = nullptr;

}  // namespace

void ListenForFailures(FailureListener* listener) {
  listening = listener;
}

void TellFailure(std::u16string_view what) noexcept {
  if (listening) IgnoreFailures([&] { listening->Failed(what); });
}

void TellWrongAnswer(std::u16string_view what) noexcept {
  if (listening) IgnoreFailures([&] { listening->WronglyAnswered(what); });
}

}  // namespace qva
