// The server's part of the log of calls (server/call_log.h).
#pragma once

namespace qva::com {

/// The value that names the log's file, in the current user's kOwnKey.
inline constexpr wchar_t kCallLogValue[] = L"CallLog";

/// Switches the log on where a file is named: by the environment variable QVA_VARNHOLT_CALL_LOG, else by the
/// value kCallLogValue, which the doctor writes. Content goes into it where QVA_VARNHOLT_CALL_LOG_CONTENT or
/// the value "CallLogContent", a text or a number, is 1. Looks once in a process.
void StartCallLog();

}  // namespace qva::com
