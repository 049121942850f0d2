// Folders of the user's own.
#pragma once

#include <sys/stat.h>

#include <filesystem>

namespace qva {

/// Creates what is missing of a folder and those above it, for their owner alone. Who writes there finds out
/// whether that went well.
inline void CreateOwnersFolders(const std::filesystem::path& folder) {
  std::filesystem::path made;
  for (const std::filesystem::path& name : folder) ::mkdir((made /= name).c_str(), 0700);
}

}  // namespace qva
