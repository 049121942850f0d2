// Servers that are busy for the moment.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// How long a busy server is asked again, and the pause before each time.
inline constexpr DWORD kBusyLimitMilliseconds = 2000;
inline constexpr DWORD kBusyPauseMilliseconds = 50;

/// True for the answers by which a server turns a call away unexecuted because it is busy: the two of COM,
/// and Excel's own while the user edits a cell.
inline bool IsBusy(HRESULT code) {
  constexpr HRESULT kExcelIsEditing = static_cast<HRESULT>(0x800AC472);
  return code == RPC_E_CALL_REJECTED || code == RPC_E_SERVERCALL_RETRYLATER || code == kExcelIsEditing;
}

/// What one operation may wait for busy servers, all its calls together: an operation of a hundred calls
/// keeps its user waiting no longer than one of a single call. Within an operation of the same thread that
/// began earlier it is that one's. After as long without a busy server the wait begins anew: an operation
/// that shows a dialog lasts as long as its user likes. Lives on the stack.
class BusyBudget {
 public:
  BusyBudget();
  ~BusyBudget();
  BusyBudget(const BusyBudget&) = delete;
  BusyBudget& operator=(const BusyBudget&) = delete;

  /// Waits a moment. False, at once, when the limit is reached.
  bool Pause();

 private:
  const DWORD thread_ = GetCurrentThreadId();
  BusyBudget* whole_ = this;    ///< the thread's outermost, which counts
  BusyBudget* next_ = nullptr;  ///< another thread's
  ULONGLONG waited_ = 0;        ///< milliseconds
  ULONGLONG last_wait_ = 0;     ///< when it ended, by GetTickCount64
};

/// Makes a call, again and again while the server is busy and the operation's budget lasts. Result: the last
/// answer.
template <class Call>
HRESULT RetryWhileBusy(Call&& call) {
  HRESULT code = call();
  if (!IsBusy(code)) return code;
  BusyBudget budget;
  while (IsBusy(code) && budget.Pause()) code = call();
  return code;
}

}  // namespace qva::windows
