// Reading the host's own files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace qva::embedded {

/// The bytes of a whole file; nothing when it is missing or cannot be read to its end.
std::optional<std::string> ReadFile(const std::filesystem::path& file);

/// A path as error descriptions show it.
std::u16string PathText(const std::filesystem::path& path);

}  // namespace qva::embedded
