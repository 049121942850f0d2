#include "platform/windows/Busy.h"

namespace qva::windows {
namespace {

/// The operations under way, one for each thread. A list on the stacks instead of memory of the thread's own,
/// which a library that is unloaded cannot take along.
SRWLOCK lock = SRWLOCK_INIT;
BusyBudget* operations = nullptr;

}  // namespace

BusyBudget::BusyBudget() {
  AcquireSRWLockExclusive(&lock);
  BusyBudget* own = operations;
  while (own && own->thread_ != thread_) own = own->next_;
  if (own) {
    whole_ = own;
  } else {
    next_ = operations;
    operations = this;
  }
  ReleaseSRWLockExclusive(&lock);
}

BusyBudget::~BusyBudget() {
  if (whole_ != this) return;
  AcquireSRWLockExclusive(&lock);
  BusyBudget** place = &operations;
  while (*place != this) place = &(*place)->next_;
  *place = next_;
  ReleaseSRWLockExclusive(&lock);
}

bool BusyBudget::Pause() {
  const ULONGLONG start = GetTickCount64();
  if (start - whole_->last_wait_ > kBusyLimitMilliseconds) whole_->waited_ = 0;
  if (whole_->waited_ >= kBusyLimitMilliseconds) return false;
  Sleep(kBusyPauseMilliseconds);
  whole_->last_wait_ = GetTickCount64();
  whole_->waited_ += whole_->last_wait_ - start;
  return true;
}

}  // namespace qva::windows
