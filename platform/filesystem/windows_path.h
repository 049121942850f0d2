// Paths of Windows, taken apart where there is no Windows to do it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qva {

/// A whole path.
struct WindowsPath {
  std::u16string root;                ///< "C:" or "\\server\share"
  std::vector<std::u16string> names;  ///< of the folders below it, and of the file; no "." and no ".."
  bool ends_in_separator = false;     ///< it was written so, and can mean nothing but a folder

  /// The path written out, without "\" at its end but for a root alone.
  std::u16string Text() const;
};

/// Reads a path, whole or relative to a current folder. A path that starts with a separator is one of the
/// current root; "C:name" is relative to the current folder if that is on the drive, to the drive's root
/// otherwise. ".." does not lead out of the root. Raises 76 (Path not found) for an empty path, 52 (Bad file
/// name or number) for a name with a character that Windows' names cannot have: < > : " | ? * and control
/// characters, and for a server or share "." or "..".
WindowsPath ParseWindowsPath(std::u16string_view path, const WindowsPath& current);

}  // namespace qva
