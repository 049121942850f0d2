#include "platform/windows/WindowsClock.h"

#include "platform/date.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

Date WindowsClock::Now() const {
  SYSTEMTIME now;
  GetLocalTime(&now);
  const int seconds = now.wHour * 3600 + now.wMinute * 60 + now.wSecond;
  return {DateFromParts(now.wYear, now.wMonth, now.wDay).serial + seconds / 86400.0};
}

std::chrono::milliseconds WindowsClock::Running() const {
  return std::chrono::milliseconds(GetTickCount64());
}

}  // namespace qva::windows
