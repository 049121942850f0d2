#include "tests/test_paths.h"

#include <cstdlib>

namespace qva {

std::filesystem::path SourceFolder() {
  return QVA_SOURCE_DIR;
}
std::string HostModuleFile() {
  return QVA_HOST_MODULE;
}

#ifdef QVA_CALC_COMPONENT
namespace {

/// A file of the tested build: our own, unless QVA_TESTED_BUILD is the full path of another one's folder.
std::filesystem::path OfTestedBuild(const char* own, const char* file) {
  const char* const folder = std::getenv("QVA_TESTED_BUILD");
  return folder ? std::filesystem::path(folder) / file : std::filesystem::path(own);
}

}  // namespace

std::string ReportRunnerFile() {
  return OfTestedBuild(QVA_REPORT_RUNNER, "tools/report-runner");
}
std::filesystem::path CalcComponentFile() {
  return OfTestedBuild(QVA_CALC_COMPONENT, "libqva_calc.so");
}
std::filesystem::path ExcelCallsModuleFile() {
  return QVA_EXCEL_CALLS_MODULE;
}
std::filesystem::path ContractsModuleFile() {
  return QVA_CONTRACTS_MODULE;
}
std::string FileCallsLibrary() {
  return QVA_FILE_CALLS_LIBRARY;
}
std::string FewThreadsLibrary() {
  return QVA_FEW_THREADS_LIBRARY;
}
std::string WorkerMemoryLibrary() {
  return QVA_WORKER_MEMORY_LIBRARY;
}
std::string SanitizerRuntime() {
  return std::getenv("QVA_TESTED_BUILD") ? "" : QVA_SANITIZER_RUNTIME;
}
#endif

}  // namespace qva
