#include "tests/test_paths.h"

namespace qva {

std::filesystem::path SourceFolder() {
  return QVA_SOURCE_DIR;
}
std::string HostModuleFile() {
  return QVA_HOST_MODULE;
}

#ifdef QVA_CALC_COMPONENT
std::string ReportRunnerFile() {
  return QVA_REPORT_RUNNER;
}
std::filesystem::path CalcComponentFile() {
  return QVA_CALC_COMPONENT;
}
std::filesystem::path ExcelCallsModuleFile() {
  return QVA_EXCEL_CALLS_MODULE;
}
std::string SanitizerRuntime() {
  return QVA_SANITIZER_RUNTIME;
}
#endif

}  // namespace qva
