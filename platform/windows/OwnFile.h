// The library's own file, and where it lies.
#pragma once

#include <string>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// The module that this code was loaded as, the owner of window classes and resources; null when Windows does
/// not tell.
HINSTANCE OwnModule();
/// The full path of the file that this code was loaded from; empty when Windows does not tell.
std::u16string OwnFile();
/// The folder of that file, without a backslash at its end.
std::u16string OwnFolder();

}  // namespace qva::windows
