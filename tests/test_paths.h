// Where a build keeps what tests read and start. Alone in a source of its own, so that no other source
// depends on the folder that a clone stands in, and the compiler's results serve every clone. Where
// QVA_TESTED_BUILD names the folder of a release build, its runner and component are tested in the place of
// our own.
#pragma once

#include <filesystem>
#include <string>

namespace qva {

/// The project's own folder.
std::filesystem::path SourceFolder();
/// The embedded host's module.
std::string HostModuleFile();

/// The report runner.
std::string ReportRunnerFile();
/// The LibreOffice component.
std::filesystem::path CalcComponentFile();
/// The module that stands in the host's place in tests of the component.
std::filesystem::path ExcelCallsModuleFile();
/// The module in its place that holds windows to their contracts.
std::filesystem::path ContractsModuleFile();
/// The library that writes down what is given to some calls of the system.
std::string FileCallsLibrary();
/// The library that gives the LibreOffices of a batch more memory, and their jobs not.
std::string WorkerMemoryLibrary();
/// The library that keeps threads from a batch.
std::string FewThreadsLibrary();
/// The sanitizers' library that must be loaded before the component is; empty where it was built without
/// them.
std::string SanitizerRuntime();

}  // namespace qva
