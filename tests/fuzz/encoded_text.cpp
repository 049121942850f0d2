// Text in its encodings, and what compares it.
#include <algorithm>
#include <vector>

#include "platform/lithuanian/code_page.h"
#include "platform/memory/MemoryPlatform.h"
#include "tests/fuzz/fuzz.h"

namespace qva {
namespace {

void CheckUtf8(std::string_view bytes) {
  const std::u16string text = FromUtf8(bytes);
  const std::string written = ToUtf8(text);
  Require(text.size() <= bytes.size(), "no byte is two characters");
  Require(FromUtf8(written) == text, "UTF-8 of text is read as that text");
  const bool has_replacement = text.find(u'\uFFFD') != text.npos;
  Require(has_replacement || written == bytes, "UTF-8 without a mistake stays what it is");
}

void CheckUnits(const std::u16string& text) {
  Require(FromUtf16Bytes(ToUtf16Bytes(text)) == text, "UTF-16 keeps every unit");
  const std::u16string well_formed = FromUtf8(ToUtf8(text));
  Require(well_formed.size() == text.size(), "an unpaired surrogate is one character");
  Require(FromUtf8(ToUtf8(well_formed)) == well_formed, "and no other one changes");
  const std::u16string lower = ToLower(text);
  Require(lower.size() == text.size() && ToLower(lower) == lower, "lower case is done at once");
  Require(EqualIgnoringCase(text, lower), "letter case does not count");
  Require(ContainsIgnoringCase(text, lower.substr(lower.size() / 2)), "a text contains its end");
}

void CheckCodePage(std::string_view bytes) {
  const std::u16string text = FromCodePage1257(bytes);
  const std::string written = ToCodePage1257(text);
  Require(text.size() == bytes.size() && written.size() == bytes.size(), "a byte is a character");
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    Require(written[i] == (text[i] == u'\uFFFD' ? '?' : bytes[i]), "a byte comes back as itself");
  }
}

/// FitsPattern, by what it is in words.
bool Fits(std::u16string_view name, std::u16string_view pattern) {
  std::vector<bool> fits(name.size() + 1);  // whether the characters so far fit the pattern so far
  fits[0] = true;
  for (const char16_t c : pattern) {
    std::vector<bool> next(fits.size());
    for (std::size_t i = 0; i < fits.size(); ++i) {
      if (c == u'*') {
        next[i] = fits[i] || (i > 0 && next[i - 1]);
      } else {
        next[i] = i > 0 && fits[i - 1] && (c == u'?' || EqualIgnoringCase({&c, 1}, name.substr(i - 1, 1)));
      }
    }
    fits = std::move(next);
  }
  return fits.back();
}

/// A short text of characters that mean something in patterns.
std::u16string PatternFrom(FuzzInput& input) {
  std::u16string pattern;
  for (int left = input.ConsumeIntegralInRange(0, 10); left > 0; --left) {
    pattern += input.PickValueInArray<char16_t>({u'a', u'A', u'*', u'?', u'.', u'\u017D', u'\u017E'});
  }
  return pattern;
}

/// What a channel and a stream write is in the file, in its encoding.
void CheckFiles(const std::vector<std::u16string>& lines, MemoryPlatform& platform) {
  constexpr std::u16string_view kPath = u"C:\\eilutes.txt";
  std::string ansi;
  {
    const auto channel = platform.files.OpenChannel(1, kPath, ChannelMode::Output);
    for (const std::u16string& line : lines) channel->PrintLine(line);
  }
  {
    const auto channel = platform.files.OpenChannel(1, kPath, ChannelMode::Input);
    for (const std::u16string& line : lines) {
      const std::u16string expected = FromCodePage1257(ToCodePage1257(line));
      std::u16string read = channel->ReadLine();
      // A line's own carriage returns end it, too; a line feed behind one goes with it.
      for (std::size_t at = read.size(); at < expected.size(); at = read.size()) {
        Require(expected[at] == u'\r', "only a carriage return ends a line");
        const bool has_feed = at + 1 < expected.size() && expected[at + 1] == u'\n';
        read += has_feed ? u"\r\n" : u"\r";
        if (read.size() <= expected.size()) read += channel->ReadLine();
      }
      Require(read == expected, "a line is read as it was written");
    }
    Require(channel->AtEnd(), "nothing else was written");
  }
  std::u16string written = u"\uFEFF";
  {
    const auto stream = platform.files.CreateTextStream(kPath);
    for (const std::u16string& line : lines) {
      stream->WriteLine(line);
      written += line + u"\r\n";
    }
  }
  Require(platform.files.Content(kPath) == ToUtf16Bytes(written), "a stream holds its lines in UTF-16");
  const auto stream = platform.files.OpenTextStream(kPath, StreamMode::ForAppending);
  for (const std::u16string& line : lines) {
    const bool is_ansi = FromCodePage1257(ToCodePage1257(line)) == line;
    const std::int32_t error = RaisedBy([&] { stream->WriteLine(line); });
    Require(error == (is_ansi ? 0 : kInvalidProcedureCall), "an ANSI stream refuses what it cannot hold");
  }
}

}  // namespace
}  // namespace qva

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  static MemoryPlatform platform;
  const std::string_view bytes = AsText(data, size);
  CheckUtf8(bytes);
  CheckUnits(FromUtf16Bytes(bytes));
  CheckCodePage(bytes);
  FuzzInput input(data, size);
  const std::u16string name = PatternFrom(input);
  const std::u16string pattern = PatternFrom(input);
  Require(FitsPattern(name, pattern) == (pattern == u"*.*" || Fits(name, pattern)),
          "patterns fit by their words");
  Require(FitsPattern(name, name), "a name fits itself");
  std::vector<std::u16string> lines;
  while (input.remaining_bytes() > 0 && lines.size() < 5) lines.push_back(TextFrom(input));
  CheckFiles(lines, platform);
  return 0;
}
