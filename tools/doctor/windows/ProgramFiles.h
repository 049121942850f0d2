// What Windows says of files that are programs or libraries.
#pragma once

#include <optional>
#include <string>

#include "platform/windows/Bitness.h"
#include "tools/doctor/Facts.h"

namespace qva::doctor {

/// A file without loading it.
FileFacts LookAt(const std::u16string& path);

/// Windows' code for loading a library as COM does, 0 when it loads and is a COM server.
std::int32_t TryToLoad(const std::u16string& path);

/// Takes the mark of a downloaded file away. Windows' code, 0 also for a file without one.
std::uint32_t TakeMark(const std::u16string& path);
/// The same for all files of a folder.
std::uint32_t TakeMarks(const std::u16string& folder);

/// Whether files can be made in a folder; what was made for the trial goes again.
FolderFacts TryFolder(const std::u16string& folder);

/// The folder of a path, without a backslash at its end.
std::u16string FolderOf(const std::u16string& path);

/// A file of this package for a bitness: in the folder of that name, or beside this program. Nothing when
/// there is none of that bitness.
std::optional<std::u16string> FindInPackage(std::u16string_view name, Bitness bitness);

/// The bitness of this process.
inline constexpr Bitness kOwnBitness = windows::kIs64Bit ? Bitness::x64 : Bitness::x86;

}  // namespace qva::doctor
