// Where the system has what users name by Windows' paths, and the other way round: LibreOffice knows the
// system's alone.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// Where the system has a file or folder, whether it is there or not. Raises 52 (Bad file name or number) and
/// 76 (Path not found) as Files' operations do.
std::filesystem::path SystemPath(std::u16string_view path);

/// The path on its drive of what the system has at a whole path; off the drives the system's path itself.
std::u16string DrivePath(const std::filesystem::path& path);

/// A path of the system as LibreOffice's interfaces take it.
OUString FileUrl(const std::filesystem::path& path);

}  // namespace qva::calc
