#include "platform/posix/SystemClock.h"

#include <algorithm>
#include <ctime>

#include "platform/date.h"

namespace qva {

Date SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  const int second = std::min(local.tm_sec, 59);  // a leap second is no time of a Date
  const int seconds = local.tm_hour * 3600 + local.tm_min * 60 + second;
  return {DateFromParts(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).serial + seconds / 86400.0};
}

std::chrono::milliseconds SystemClock::Running() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace qva
