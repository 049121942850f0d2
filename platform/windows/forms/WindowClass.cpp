#include "platform/windows/forms/WindowClass.h"

#include "platform/error.h"

namespace qva::windows {
namespace {

/// Windows of several threads may come and go at the same time.
class Locked {
 public:
  Locked() { AcquireSRWLockExclusive(&lock_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
  ~Locked() { ReleaseSRWLockExclusive(&lock_); }

 private:
  static inline SRWLOCK lock_ = SRWLOCK_INIT;
};

}  // namespace

WindowClassUse::WindowClassUse(WindowClass& window_class) : class_(window_class) {
  const Locked locked;
  if (class_.uses == 0) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = class_.style;
    description.lpfnWndProc = class_.procedure;
    description.hInstance = OwnModule();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = class_.name;
    if (!RegisterClassExW(&description)) throw AutomationError(kOutOfMemory);
  }
  ++class_.uses;
}

WindowClassUse::~WindowClassUse() {
  const Locked locked;
  if (--class_.uses == 0) UnregisterClassW(class_.name, OwnModule());
}

}  // namespace qva::windows
