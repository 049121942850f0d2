#include "server/calc/CallLog.h"

#include "platform/filesystem/native_file.h"
#include "platform/variables.h"
#include "server/PublicClasses.h"
#include "server/call_log.h"

namespace qva::calc {

void StartCallLog() {
  SetCallLog({EnvironmentVariable(variables::kCallLog),
              EnvironmentVariable(variables::kCallLogContent) == "1", &IsPublicObject});
}

}  // namespace qva::calc
