// Where the embedded host keeps its files.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>

namespace qva::embedded {

/// The database's file where the user names none, and that of the sample among the resources.
inline constexpr char kDatabaseFile[] = "host.sqlite";
inline constexpr char kSampleFile[] = "sample.sql";

struct HostOptions {
  std::filesystem::path database;   ///< the books; created from the sample on first use
  std::filesystem::path sample;     ///< SQL script of the schema and the sample companies
  std::filesystem::path resources;  ///< folder of the resource libraries, each a file <name>.txt
  bool is_own_folder = false;       ///< the database stands in a folder of ours, and not where the user wants
};

/// The options that the user's environment asks for:
/// - database: QVA_HOST_DATABASE; else qva-varnholt/host.sqlite in XDG_DATA_HOME (absolute) or
///   ~/.local/share, on Windows QVA_Varnholt\host.sqlite in LOCALAPPDATA (absolute)
/// - resources: QVA_HOST_RESOURCES, else `default_resources`
/// - sample: sample.sql in the resource folder
/// `variable` gives the value of a variable; an empty one counts as none. Of an environment without any place
/// for the database the result is nothing. Does not raise.
std::optional<HostOptions> OptionsFromEnvironment(
    const std::function<std::filesystem::path(const char* name)>& variable,
    const std::filesystem::path& default_resources);

}  // namespace qva::embedded
