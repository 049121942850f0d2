#include "platform/filesystem/encoded_text_stream.h"

#include "platform/error.h"
#include "platform/text.h"

namespace qva {
namespace {

/// Text in the ANSI code page. Unlike a channel, a stream refuses a character that the code page lacks.
std::string AnsiBytes(std::u16string_view text, const Locale& locale) {
  std::string bytes = locale.ToAnsi(text);
  if (locale.FromAnsi(bytes) != text) throw AutomationError(kInvalidProcedureCall);
  return bytes;
}

class WritingStream : public TextStream {
 public:
  WritingStream(std::unique_ptr<ByteFile> bytes, StreamEncoding encoding, const Locale& locale)
      : bytes_(std::move(bytes)), encoding_(encoding), locale_(locale) {}

  void WriteLine(std::u16string_view text) override {
    const std::u16string line = std::u16string(text) + u"\r\n";
    bytes_->Append(encoding_ == StreamEncoding::Utf16 ? ToUtf16Bytes(line) : AnsiBytes(line, locale_));
  }

 private:
  std::unique_ptr<ByteFile> bytes_;
  StreamEncoding encoding_;
  const Locale& locale_;
};

class ReadingStream : public TextStream {
 public:
  explicit ReadingStream(std::unique_ptr<ByteFile> bytes) : bytes_(std::move(bytes)) {}

  void WriteLine(std::u16string_view) override { throw AutomationError(kBadFileMode); }

 private:
  std::unique_ptr<ByteFile> bytes_;
};

}  // namespace

std::unique_ptr<TextStream> WriteTextStream(std::unique_ptr<ByteFile> bytes, StreamEncoding encoding,
                                            const Locale& locale) {
  if (encoding == StreamEncoding::Utf16) bytes->Append(ToUtf16Bytes(u"\uFEFF"));
  return std::make_unique<WritingStream>(std::move(bytes), encoding, locale);
}

std::unique_ptr<TextStream> ReadTextStream(std::unique_ptr<ByteFile> bytes) {
  return std::make_unique<ReadingStream>(std::move(bytes));
}

}  // namespace qva
