// Servers that are busy for the moment.
#pragma once

#include <utility>

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

/// Makes a call, again and again while the server is busy and the limit is not reached. Result: the last
/// answer.
template <class Call>
HRESULT RetryWhileBusy(Call&& call) {
  const ULONGLONG start = GetTickCount64();
  for (;;) {
    const HRESULT code = call();
    if (!IsBusy(code) || GetTickCount64() - start >= kBusyLimitMilliseconds) return code;
    Sleep(kBusyPauseMilliseconds);
  }
}

}  // namespace qva::windows
