// Where the library's own file lies.
#pragma once

#include <string>

namespace qva::windows {

/// The full path of the file that this code was loaded from; empty when Windows does not tell.
std::u16string OwnFile();
/// The folder of that file, without a backslash at its end.
std::u16string OwnFolder();

}  // namespace qva::windows
