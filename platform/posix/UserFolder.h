// Where the user's own files lie, by the XDG Base Directory rules.
#pragma once

#include <filesystem>

namespace qva {

/// The folder that the environment variable (such as XDG_CONFIG_HOME) names, else the folder `below_home` in
/// the user's home folder. A relative path in the variable counts as none. Empty when the user has no home
/// folder.
std::filesystem::path UserFolder(const char* variable, const std::filesystem::path& below_home);

}  // namespace qva
