// Reading the host's own files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace qva::embedded {

/// The bytes of a whole file; nothing when it is missing or cannot be read to its end.
std::optional<std::string> ReadFile(const std::filesystem::path& file);

/// A path in UTF-8.
std::string Utf8Path(const std::filesystem::path& path);

/// A path as error descriptions show it.
std::u16string PathText(const std::filesystem::path& path);

}  // namespace qva::embedded
