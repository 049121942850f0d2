#include "host/HostOptions.h"

#include "host/OwnersFiles.h"
#include "platform/variables.h"

namespace qva::embedded {

std::optional<HostOptions> OptionsFromEnvironment(
    const std::function<std::filesystem::path(const char* name)>& variable,
    const std::filesystem::path& default_resources) {
  HostOptions options;
  options.database = variable(variables::kHostDatabase);
  if (options.database.empty()) {
    const std::filesystem::path folder = OwnersDataFolder(variable);
    if (folder.empty()) return std::nullopt;
    options.database = folder / kDatabaseFile;
    options.is_own_folder = true;
  }
  const auto resources = variable(variables::kHostResources);
  options.resources = resources.empty() ? default_resources : resources;
  options.sample = options.resources / kSampleFile;
  return options;
}

}  // namespace qva::embedded
