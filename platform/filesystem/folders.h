// Folders, as far as it takes more than one step to make them.
#pragma once

#include <string_view>

#include "platform/files.h"

namespace qva {

/// Makes what is missing of a folder and those above it; nothing for the empty path. Raises what
/// Files::CreateFolder raises; the folders that were made by then stay.
void MakeFolders(Files& files, std::u16string_view folder);

}  // namespace qva
