// The hash by which a file is known again.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace qva {

/// SHA-256 (FIPS 180-4) of bytes, in hexadecimal.
std::string Sha256(std::string_view bytes);
/// The same of a file's content; empty when it cannot be read.
std::string Sha256OfFile(const std::filesystem::path& file);

}  // namespace qva
