#include "host/HostOptions.h"

namespace qva::embedded {
namespace {

/// The folder for the user's data of this program; empty when there is no place for one.
std::filesystem::path OwnFolder(const std::function<std::filesystem::path(const char* name)>& variable) {
#ifdef _WIN32
  const auto data = variable("LOCALAPPDATA");
  return data.is_absolute() ? data / "QVA_Varnholt" : std::filesystem::path();
#else
  constexpr char kName[] = "qva-varnholt";
  // Absolute, as its standard demands.
  if (const auto data = variable("XDG_DATA_HOME"); data.is_absolute()) return data / kName;
  const auto home = variable("HOME");
  return home.empty() ? home : home / ".local" / "share" / kName;
#endif
}

}  // namespace

std::optional<HostOptions> OptionsFromEnvironment(
    const std::function<std::filesystem::path(const char* name)>& variable,
    const std::filesystem::path& default_resources) {
  HostOptions options;
  options.database = variable("QVA_HOST_DATABASE");
  if (options.database.empty()) {
    const std::filesystem::path folder = OwnFolder(variable);
    if (folder.empty()) return std::nullopt;
    options.database = folder / "host.sqlite";
    options.is_own_folder = true;
  }
  const auto resources = variable("QVA_HOST_RESOURCES");
  options.resources = resources.empty() ? default_resources : resources;
  options.sample = options.resources / "sample.sql";
  return options;
}

}  // namespace qva::embedded
