// A text stream as Scripting.FileSystemObject gives it, over the bytes of a file, for platforms without it.
#pragma once

#include <memory>

#include "platform/filesystem/sequential_channel.h"
#include "platform/locale.h"

namespace qva {

enum class StreamEncoding { Ansi, Utf16 };

/// A stream for writing over an open file. A UTF-16 stream writes its mark first, which fails as Append does;
/// its file must be empty. The locale must outlive it.
std::unique_ptr<TextStream> WriteTextStream(std::unique_ptr<ByteFile> bytes, StreamEncoding encoding,
                                            const Locale& locale);

/// A stream for reading, which the library opens but never reads: it keeps the file open.
std::unique_ptr<TextStream> ReadTextStream(std::unique_ptr<ByteFile> bytes);

}  // namespace qva
