// A file that several processes add lines to and that does not grow for ever.
#pragma once

#include <cstdint>
#include <string>

#include "platform/filesystem/native_file.h"

namespace qva {

/// Adds a text to a file, in one piece, creating it for its owner alone. A file that would become larger than
/// `limit` bytes first becomes `path`.1, in place of an earlier one. Processes that add to the same file take
/// turns; one that does not get its turn within a fifth of a second adds without it, and leaves the file its
/// name. False when it could not be written.
bool AppendRotated(const NativePath& path, const std::string& text, std::uint64_t limit);

/// What the system calls this process by.
std::uint32_t ProcessId();

}  // namespace qva
