// LibreOffice's part of the log of calls (server/call_log.h).
#pragma once

namespace qva::calc {

/// Switches the log on where the environment variable QVA_VARNHOLT_CALL_LOG names its file.
/// QVA_VARNHOLT_CALL_LOG_CONTENT=1 puts content into it.
void StartCallLog();

}  // namespace qva::calc
