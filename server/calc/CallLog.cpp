#include "server/calc/CallLog.h"

#include <cstdlib>
#include <string>
#include <string_view>

#include "server/PublicClasses.h"
#include "server/call_log.h"

namespace qva::calc {
namespace {

std::string VariableOrEmpty(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

}  // namespace

void StartCallLog() {
  SetCallLog({VariableOrEmpty("QVA_VARNHOLT_CALL_LOG"),
              VariableOrEmpty("QVA_VARNHOLT_CALL_LOG_CONTENT") == "1", &IsPublicObject});
}

}  // namespace qva::calc
