// Whole text files.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace qva {

/// Everything in a file; empty when there is none.
std::string ReadText(const std::filesystem::path& path);

/// Raises std::runtime_error when it cannot be written.
void WriteText(const std::filesystem::path& path, std::string_view text);

/// Writes a file so that whoever reads it finds all of it, or the one before. Raises std::exception.
void WriteWhole(const std::filesystem::path& path, std::string_view text);

}  // namespace qva
