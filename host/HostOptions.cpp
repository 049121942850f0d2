#include "host/HostOptions.h"

namespace qva::embedded {

std::optional<HostOptions> OptionsFromEnvironment(
    const std::function<const char*(const char* name)>& variable,
    const std::filesystem::path& default_resources) {
  const auto path_of = [&](const char* name) {
    const char* value = variable(name);
    return std::filesystem::path(value ? value : "");
  };
  const auto first_use = std::filesystem::path("qva-varnholt") / "host.sqlite";

  HostOptions options;
  if (const auto database = path_of("QVA_HOST_DATABASE"); !database.empty()) {
    options.database = database;
  } else if (const auto data = path_of("XDG_DATA_HOME"); data.is_absolute()) {  // as its standard demands
    options.database = data / first_use;
    options.is_own_folder = true;
  } else if (const auto home = path_of("HOME"); !home.empty()) {
    options.database = home / ".local" / "share" / first_use;
    options.is_own_folder = true;
  } else {
    return std::nullopt;
  }
  const auto resources = path_of("QVA_HOST_RESOURCES");
  options.resources = resources.empty() ? default_resources : resources;
  options.sample = options.resources / "sample.sql";
  return options;
}

}  // namespace qva::embedded
