// The server's part of the log of calls (server/call_log.h).
#pragma once

namespace qva::com {

/// Switches the log on where a file is named: by the environment variable QVA_VARNHOLT_CALL_LOG, else by the
/// value "CallLog" of HKEY_CURRENT_USER\Software\QVA_Varnholt, which the doctor writes. Content goes into it
/// where QVA_VARNHOLT_CALL_LOG_CONTENT or "CallLogContent", a text or a number, is 1. Looks once in a
/// process.
void StartCallLog();

}  // namespace qva::com
