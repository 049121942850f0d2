#include "platform/posix/RegistryText.h"

#include <algorithm>
#include <cstdio>

#include "platform/registry.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kLineWidth = 80;  // where REGEDIT breaks hexadecimal data

/// The line without its end and the blanks around it.
std::string_view Content(std::string_view raw) {
  constexpr std::string_view kDropped = " \t\r\n";
  const std::size_t first = raw.find_first_not_of(kDropped);
  if (first == raw.npos) return {};
  return raw.substr(first, raw.find_last_not_of(kDropped) - first + 1);
}

void SkipBlanks(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
}

bool Skip(std::string_view& rest, std::string_view prefix) {
  if (!rest.starts_with(prefix)) return false;
  rest.remove_prefix(prefix.size());
  return true;
}

/// True when nothing but blanks and a comment is left.
bool IsEndOfLine(std::string_view rest) {
  SkipBlanks(rest);
  return rest.empty() || rest.front() == ';';
}

bool IsUtf8(std::string_view text) {
  return ToUtf8(FromUtf8(text)) == text;
}

/// Reads a text in quotation marks. A backslash before anything but a quotation mark or another backslash
/// stands for itself, so that a path typed by hand survives.
std::optional<std::string> ReadQuoted(std::string_view& rest) {
  if (!Skip(rest, "\"")) return std::nullopt;
  std::string text;
  while (!rest.empty()) {
    if (Skip(rest, "\"")) return text;
    if (rest.starts_with("\\\\") || rest.starts_with("\\\"")) rest.remove_prefix(1);
    text += rest.front();
    rest.remove_prefix(1);
  }
  return std::nullopt;
}

int HexDigit(char c) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::size_t value = kDigits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c + 0x20) : c);
  return value == kDigits.npos ? -1 : static_cast<int>(value);
}

/// Reads up to eight hexadecimal digits.
std::optional<std::uint32_t> ReadHexNumber(std::string_view& rest) {
  std::uint32_t number = 0;
  std::size_t digits = 0;
  while (digits < rest.size() && HexDigit(rest[digits]) >= 0) {
    if (digits == 8) return std::nullopt;
    number = number * 16 + static_cast<std::uint32_t>(HexDigit(rest[digits++]));
  }
  if (digits == 0) return std::nullopt;
  rest.remove_prefix(digits);
  return number;
}

/// Reads "01,02,03", possibly nothing.
std::optional<std::string> ReadHexBytes(std::string_view& rest) {
  std::string bytes;
  SkipBlanks(rest);
  while (!rest.empty() && rest.front() != ';') {
    const auto byte = ReadHexNumber(rest);
    if (!byte || *byte > 0xFF) return std::nullopt;
    bytes += static_cast<char>(*byte);
    SkipBlanks(rest);
    if (!Skip(rest, ",")) break;
    SkipBlanks(rest);
  }
  return bytes;
}

/// Reads what stands behind the equals sign.
std::optional<RegistryData> ReadData(std::string_view rest) {
  RegistryData data;
  if (rest.starts_with('"')) {
    const auto text = ReadQuoted(rest);
    if (!text) return std::nullopt;
    data.type = kRegSz;
    data.text = FromUtf8(*text) + u'\0';
  } else if (Skip(rest, "dword:")) {
    const auto number = ReadHexNumber(rest);
    if (!number) return std::nullopt;
    data.type = kRegDword;
    for (int shift = 0; shift < 32; shift += 8) data.bytes += static_cast<char>(*number >> shift & 0xFF);
  } else if (Skip(rest, "hex")) {
    data.type = kRegBinary;
    if (Skip(rest, "(")) {
      const auto type = ReadHexNumber(rest);
      if (!type || !Skip(rest, ")")) return std::nullopt;
      data.type = *type;
    }
    if (!Skip(rest, ":")) return std::nullopt;
    auto bytes = ReadHexBytes(rest);
    if (!bytes) return std::nullopt;
    if (IsRegistryText(data.type)) {
      data.text = FromUtf16Bytes(*bytes);
      AddTerminatingZero(data.text);
    } else {
      data.bytes = std::move(*bytes);
    }
  } else {
    return std::nullopt;
  }
  if (!IsEndOfLine(rest)) return std::nullopt;
  return data;
}

std::string Quoted(std::u16string_view text) {
  std::string out = "\"";
  for (const char c : ToUtf8(text)) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + '"';
}

/// True when the text can stand between quotation marks on one line, without its terminating zero, and be
/// read back unchanged.
bool IsQuotable(std::u16string_view text) {
  const auto is_control = [](char16_t c) { return c < 0x20 || c == 0x7F; };
  return text.ends_with(u'\0') && std::ranges::none_of(text.substr(0, text.size() - 1), is_control) &&
         FromUtf8(ToUtf8(text)) == text;
}

std::string ValueLines(std::u16string_view name, const RegistryData& data, std::string_view line_end) {
  std::string line = (name.empty() ? "@" : Quoted(name)) + "=";
  const std::u16string_view text = data.text;
  if (data.type == kRegSz && IsQuotable(text)) {
    return line + Quoted(text.substr(0, text.size() - 1)) + std::string(line_end);
  }
  char piece[16];
  const std::string bytes = IsRegistryText(data.type) ? ToUtf16Bytes(text) : data.bytes;
  if (data.type == kRegDword && bytes.size() == 4) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[i]);
    std::snprintf(piece, sizeof piece, "dword:%08x", number);
    return line + piece + std::string(line_end);
  }
  std::snprintf(piece, sizeof piece, data.type == kRegBinary ? "hex:" : "hex(%x):", data.type);
  line += piece;
  std::string lines;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (line.size() + 4 > kLineWidth) {
      lines += line + "\\" + std::string(line_end);
      line = "  ";
    }
    std::snprintf(piece, sizeof piece, "%02x%s", static_cast<unsigned>(static_cast<unsigned char>(bytes[i])),
                  i + 1 < bytes.size() ? "," : "");
    line += piece;
  }
  return lines + line + std::string(line_end);
}

}  // namespace

void AddTerminatingZero(std::u16string& text) {
  if (!text.empty() && text.back() != u'\0') text += u'\0';
}

RegistryText::RegistryText() {
  entries_.push_back({.raw = std::string(kHeader) + line_end_});
}

/// The text of a file, line by line.
struct RegistryText::Lines {
  std::string_view rest;
  int number = 0;  ///< of the line that was read last, from 1

  std::string Next() {
    const std::string text(rest.substr(0, rest.find('\n') + 1));
    rest.remove_prefix(text.size());
    ++number;
    return text;
  }
};

bool RegistryText::ReadValue(Lines& lines, Entry& entry) {
  const int first_line = lines.number;
  const std::string content(Content(entry.raw));
  std::string_view rest = content;
  if (!Skip(rest, "@")) {
    const auto name = ReadQuoted(rest);
    if (!name) return false;
    entry.name = FromUtf8(*name);
  }
  SkipBlanks(rest);
  if (!Skip(rest, "=")) return false;
  SkipBlanks(rest);
  std::string joined(rest);
  if (joined.starts_with("hex")) {
    while (joined.ends_with('\\') && joined.find(';') == joined.npos && !lines.rest.empty()) {
      const std::string more = lines.Next();
      if (!IsUtf8(more)) return false;
      joined.pop_back();
      joined += Content(more);
      entry.raw += more;
    }
  }
  auto data = ReadData(joined);
  if (!data) {
    lines.number = first_line;
    return false;
  }
  entry.kind = Entry::Kind::Value;
  entry.data = std::move(*data);
  return true;
}

std::optional<RegistryText> RegistryText::Parse(std::string_view utf8, int* wrong_line) {
  RegistryText result;
  if (utf8.empty()) return result;

  // The last line gets an end if it lacks one, so that lines can be added after it.
  std::string ended;
  const std::size_t first_end = utf8.find('\n');
  if (first_end != utf8.npos && first_end > 0 && utf8[first_end - 1] == '\r') result.line_end_ = "\r\n";
  if (!utf8.ends_with('\n')) utf8 = ended = std::string(utf8) + result.line_end_;

  Lines lines{utf8};
  const auto mistake = [&]() -> std::optional<RegistryText> {
    if (wrong_line) *wrong_line = lines.number;
    return std::nullopt;
  };
  std::string& header = result.entries_.front().raw = lines.Next();
  std::string_view title = header;
  Skip(title, kByteOrderMark);
  if (Content(title) != kHeader) return mistake();

  std::u16string key;
  while (!lines.rest.empty()) {
    Entry entry{.raw = lines.Next()};
    if (!IsUtf8(entry.raw)) return mistake();
    std::string_view rest = Content(entry.raw);
    if (Skip(rest, "[")) {
      const std::size_t end = rest.rfind(']');
      if (end == rest.npos || rest.starts_with('-') || !IsEndOfLine(rest.substr(end + 1))) return mistake();
      key = ToLower(FromUtf8(rest.substr(0, end)));
      entry.kind = Entry::Kind::Section;
      entry.key = key;
    } else if (rest.starts_with('"') || rest.starts_with('@')) {
      if (key.empty() || !ReadValue(lines, entry)) return mistake();
      entry.key = key;
    }
    result.entries_.push_back(std::move(entry));
  }
  return result;
}

std::string RegistryText::Utf8() const {
  std::string out;
  for (const Entry& entry : entries_) out += entry.raw;
  return out;
}

bool RegistryText::HasKey(std::u16string_view path) const {
  const std::u16string key = ToLower(path);
  return std::ranges::any_of(entries_, [&](const Entry& entry) {
    return entry.kind == Entry::Kind::Section && entry.key.starts_with(key) &&
           (entry.key.size() == key.size() || entry.key[key.size()] == u'\\');
  });
}

void RegistryText::AddKey(std::u16string_view path) {
  if (!HasKey(path)) AddSection(path);
}

void RegistryText::AddSection(std::u16string_view path) {
  entries_.push_back({.raw = line_end_});
  entries_.push_back(
      {.kind = Entry::Kind::Section, .key = ToLower(path), .raw = "[" + ToUtf8(path) + "]" + line_end_});
}

bool RegistryText::IsValue(const Entry& entry, std::u16string_view lower_key,
                           std::u16string_view name) const {
  return entry.kind == Entry::Kind::Value && entry.key == lower_key && EqualIgnoringCase(entry.name, name);
}

const RegistryData* RegistryText::Find(std::u16string_view path, std::u16string_view name) const {
  const std::u16string key = ToLower(path);
  const auto found = std::find_if(entries_.rbegin(), entries_.rend(),
                                  [&](const Entry& entry) { return IsValue(entry, key, name); });
  return found == entries_.rend() ? nullptr : &found->data;
}

void RegistryText::Set(std::u16string_view path, std::u16string_view name, RegistryData data) {
  const std::u16string key = ToLower(path);
  const auto old = std::find_if(entries_.rbegin(), entries_.rend(),
                                [&](const Entry& entry) { return IsValue(entry, key, name); });
  if (old != entries_.rend()) {
    // The name keeps the letter case in which it was created.
    old->raw = ValueLines(old->name, data, line_end_);
    old->data = std::move(data);
    return;
  }
  const auto belongs = [&](const Entry& entry) {
    return entry.kind != Entry::Kind::Other && entry.key == key;
  };
  auto last = std::find_if(entries_.rbegin(), entries_.rend(), belongs);
  if (last == entries_.rend()) {
    AddSection(path);
    last = entries_.rbegin();
  }
  Entry entry{.kind = Entry::Kind::Value, .key = key, .name = std::u16string(name)};
  entry.raw = ValueLines(name, data, line_end_);
  entry.data = std::move(data);
  entries_.insert(last.base(), std::move(entry));
}

bool RegistryText::Delete(std::u16string_view path, std::u16string_view name) {
  const std::u16string key = ToLower(path);
  return std::erase_if(entries_, [&](const Entry& entry) { return IsValue(entry, key, name); }) > 0;
}

}  // namespace qva
