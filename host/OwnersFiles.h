// Files and folders that are their owner's alone, as far as the system tells users apart by files.
#pragma once

#include <filesystem>
#include <functional>

namespace qva::embedded {

/// The folder for the user's data of this program, by the environment's variables; empty when there is no
/// place for one.
std::filesystem::path OwnersDataFolder(
    const std::function<std::filesystem::path(const char* name)>& variable);

enum class NewFile { Created, NameIsTaken, NotCreated };

/// Creates an empty file for its owner alone.
NewFile CreateOwnersFile(const std::filesystem::path& file);

/// Creates what is missing of a folder and those above it, for their owner alone. Who writes there finds out
/// whether that went well.
void CreateOwnersFolder(const std::filesystem::path& folder);

/// Takes a file or folder from everybody but its owner, where that can be done.
void TakeFromOthers(const std::filesystem::path& path);

}  // namespace qva::embedded
