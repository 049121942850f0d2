// COM's failures in the words of a macro.
#pragma once

#include <string>

#include "platform/error.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// The number that a macro meets for a failure code: the platform's trappable error where the code has one (a
/// code in the facility of controls, 800A…, carries its number in itself), otherwise the code.
std::int32_t ErrorNumberOf(HRESULT code);

/// Windows' own text for a code, in the user's language and without the end of its line; empty where it has
/// none.
std::u16string SystemWords(DWORD code);
/// The same for a failure code; "Automation error" where it has none.
std::u16string SystemText(HRESULT code);

/// The failure of a call that left no further information: the number above, with the platform's own text or
/// else the system's text for the code.
AutomationError ErrorOf(HRESULT code);

/// The failure that a called member raised (DISP_E_EXCEPTION): number, source and description as the object
/// left them, fetching them first when it put that off. An object that tells no number raised 440 (Automation
/// error). `info` is emptied.
AutomationError ErrorOf(EXCEPINFO& info);

}  // namespace qva::windows
