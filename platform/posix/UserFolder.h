// Where the user's own files lie, by the XDG Base Directory rules.
#pragma once

#include <filesystem>

namespace qva {

/// The name of our folders among those of other programs.
inline constexpr char kOwnFolder[] = "qva-varnholt";

/// Our folder in the one that the environment variable (such as XDG_CONFIG_HOME) names, else in the folder
/// `below_home` of the user's home folder. A relative path in the variable counts as none. Empty when the
/// user has no home folder.
std::filesystem::path UserFolder(const char* variable, const std::filesystem::path& below_home);

}  // namespace qva
