// The one translator at the boundary: whatever is thrown inside becomes what COM callers read.
#pragma once

#include <cstdint>

#include "platform/windows/WindowsApi.h"

namespace qva::com {

// The reports are called in a catch block and look at the exception that is being handled (UseCaught in
// platform/error.h). None of these throws.

/// The code under which a macro finds an error number again in Err.Number: a trappable error stands in the
/// facility of controls, a negative number for itself.
HRESULT ErrorCode(std::int32_t number) noexcept;

/// Reports to a late-bound caller. A call that was refused - unknown member, wrong number of arguments, an
/// argument that does not convert - has a code of the protocol's, which is the result; `argument` then
/// receives the position of the parameter that the error is about, if any. Everything else, whatever a member
/// raises above all, fills `info`, where the caller gave one, and is DISP_E_EXCEPTION.
HRESULT ReportLate(EXCEPINFO* info, int& argument) noexcept;

/// Reports to an early-bound caller of the interface: sets the thread's error object.
/// Result: the error's code.
HRESULT ReportEarly(REFIID interface_id) noexcept;

/// Sets the thread's error object. Does nothing when it cannot be made.
void SetErrorObject(REFIID interface_id, const wchar_t* source, const wchar_t* description) noexcept;

}  // namespace qva::com
