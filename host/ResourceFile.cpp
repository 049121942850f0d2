#include "host/ResourceFile.h"

#include <charconv>
#include <optional>
#include <system_error>

#include "host/HostError.h"
#include "platform/text.h"

namespace qva::embedded {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";
constexpr char16_t kReplacementCharacter = 0xFFFD;

std::string_view Stripped(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// The text with its escapes resolved; nothing when one is unknown.
std::optional<std::string> Unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      result += text[i];
      continue;
    }
    const char escape = ++i < text.size() ? text[i] : '\0';
    if (escape != 'n' && escape != '\\') return std::nullopt;
    result += escape == 'n' ? '\n' : '\\';
  }
  return result;
}

/// Adds the text of one line that is neither blank nor a comment. Result: what breaks the format, empty when
/// nothing does.
std::u16string_view ParseLine(std::string_view line, ResourceTexts& texts) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
  if (error == std::errc::invalid_argument) return u"no number at its start";
  if (error != std::errc() || number < 1) return u"a number outside 1 to 2147483647";

  const std::string_view rest = line.substr(static_cast<std::size_t>(end - line.data()));
  if (rest.empty()) return u"no text after the number";
  if (kBlanks.find(rest.front()) == std::string_view::npos) return u"no blank after the number";

  const std::optional<std::string> bytes = Unescaped(Stripped(rest));
  if (!bytes) return u"an escape other than \\n and \\\\";
  std::u16string text = FromUtf8(*bytes);
  if (text.find(kReplacementCharacter) != std::u16string::npos) return u"bytes that are not UTF-8";
  if (!texts.emplace(number, std::move(text)).second) return u"a number that was used before";
  return {};
}

}  // namespace

ResourceTexts ParseResource(std::string_view bytes, std::u16string_view library) {
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  ResourceTexts texts;
  for (int line_number = 1; !bytes.empty(); ++line_number) {
    const std::size_t end = bytes.find('\n');
    const std::string_view line = Stripped(bytes.substr(0, end));
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    if (line.empty() || line.front() == '#') continue;
    if (const std::u16string_view cause = ParseLine(line, texts); !cause.empty()) {
      throw HostError(Failure::MalformedResource, kMessageLibrary,
                      u"The resource library \"" + std::u16string(library) + u"\" has in line " +
                          NumberText(line_number) + u" " + std::u16string(cause));
    }
  }
  return texts;
}

}  // namespace qva::embedded
