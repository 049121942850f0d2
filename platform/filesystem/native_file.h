// Whole files of our own, by the system's paths: answers files and logs.
#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qva {

/// A path in the system's own characters; std::filesystem::path converts to it. That class itself would bring
/// the C++ library's streams into the Windows DLL, half its size.
#ifdef _WIN32
using NativePath = std::wstring;
#else
using NativePath = std::string;
#endif

/// A path for people to read, in UTF-8.
std::string PathText(const NativePath& path);

/// What an environment variable of this process holds; empty when there is none.
NativePath EnvironmentVariable(const char* name);

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
/// The C library's file: streams would double the size of the Windows DLL.
using OwnedFile = std::unique_ptr<std::FILE, CloseFile>;

/// As std::fopen.
OwnedFile OpenFile(const NativePath& path, const char* mode);

/// A whole file; nothing when it is not there or cannot be read.
std::optional<std::string> ReadWholeFile(const NativePath& path);

/// The lines of a UTF-8 text file, without their ends, blanks around them and a byte order mark; line n is
/// element n − 1. Nothing as for ReadWholeFile.
std::optional<std::vector<std::u16string>> ReadLines(const NativePath& path);

/// Adds to a file, creating it for its owner alone. In one piece, so that what several processes write does
/// not mix. False when it could not be written.
bool AppendToFile(const NativePath& path, const std::string& text);

/// Adds to a log file, or to the standard error output where there is no path or the file cannot be written.
void AppendToLog(const NativePath& path, const std::string& text);

}  // namespace qva
