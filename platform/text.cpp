#include "platform/text.h"

#include <algorithm>

namespace qva {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

void AppendUtf16(std::u16string& out, char32_t c) {
  if (c < 0x10000) {
    out += static_cast<char16_t>(c);
  } else {
    out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
    out += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
  }
}

/// Decodes one character at `i` and moves past it; a malformed byte is one replacement character.
char32_t DecodeUtf8(std::string_view bytes, std::size_t& i) {
  const auto lead = static_cast<unsigned char>(bytes[i++]);
  if (lead < 0x80) return lead;
  const int extra = lead >= 0xF0 && lead < 0xF5   ? 3
                    : lead >= 0xE0 && lead < 0xF0 ? 2
                    : lead >= 0xC2 && lead < 0xE0 ? 1
                                                  : 0;
  if (extra == 0) return kReplacement;
  char32_t c = lead & (0x3F >> extra);
  std::size_t next = i;
  for (int n = 0; n < extra; ++n, ++next) {
    if (next >= bytes.size() || (static_cast<unsigned char>(bytes[next]) & 0xC0) != 0x80) return kReplacement;
    c = (c << 6) | (static_cast<unsigned char>(bytes[next]) & 0x3F);
  }
  const char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
  if (c < smallest[extra] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return kReplacement;
  i = next;
  return c;
}

char16_t LowerOf(char16_t c) {
  if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
    return static_cast<char16_t>(c + 0x20);
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return static_cast<char16_t>(c + 0x20);  // Greek
  if (c >= 0x410 && c <= 0x42F) return static_cast<char16_t>(c + 0x20);                // Cyrillic
  if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 0x50);
  if (c == 0x178) return 0xFF;
  // Latin Extended-A and what Romanian and Welsh use beyond it: pairs of capital and small letter, whose
  // first is even but in two stretches.
  const bool odd_capital = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  const bool even_capital = (c >= 0x100 && c <= 0x137 && c != 0x130) || (c >= 0x14A && c <= 0x177) ||
                            (c >= 0x1F8 && c <= 0x21F) || (c >= 0x1E00 && c <= 0x1E95) ||
                            (c >= 0x1EA0 && c <= 0x1EFF);
  if (odd_capital && (c & 1)) return static_cast<char16_t>(c + 1);
  if (even_capital && !(c & 1)) return static_cast<char16_t>(c + 1);
  return c;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (c >= 0xD800 && c < 0xE000) {
      c = kReplacement;
    }
    AppendUtf8(out, c);
  }
  return out;
}

std::u16string FromUtf8(std::string_view bytes) {
  std::u16string out;
  out.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size();) AppendUtf16(out, DecodeUtf8(bytes, i));
  return out;
}

std::string ToUtf16Bytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(2 * text.size());
  for (const char16_t c : text) {
    bytes += static_cast<char>(c & 0xFF);
    bytes += static_cast<char>(c >> 8);
  }
  return bytes;
}

std::u16string FromUtf16Bytes(std::string_view bytes) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                  static_cast<unsigned char>(bytes[i + 1]) << 8);
  }
  return text;
}

std::u16string ToLower(std::u16string_view text) {
  std::u16string out(text);
  std::ranges::transform(out, out.begin(), LowerOf);
  return out;
}

bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b) {
  return std::ranges::equal(a, b, {}, LowerOf, LowerOf);
}

bool ContainsIgnoringCase(std::u16string_view text, std::u16string_view what) {
  const auto same = [](char16_t a, char16_t b) { return LowerOf(a) == LowerOf(b); };
  return what.empty() || std::search(text.begin(), text.end(), what.begin(), what.end(), same) != text.end();
}

bool FitsPattern(std::u16string_view name, std::u16string_view pattern) {
  if (pattern == u"*.*") return true;
  // Only the latest asterisk is ever tried anew: what an earlier one takes, the latest could take as well.
  std::size_t at = 0;
  std::size_t fitted = 0;
  std::size_t after_star = pattern.npos;
  std::size_t taken = 0;
  while (at < name.size()) {
    if (fitted < pattern.size() && pattern[fitted] == u'*') {
      after_star = ++fitted;
      taken = at;
    } else if (fitted < pattern.size() &&
               (pattern[fitted] == u'?' || LowerOf(pattern[fitted]) == LowerOf(name[at]))) {
      ++fitted;
      ++at;
    } else if (after_star != pattern.npos) {
      fitted = after_star;
      at = ++taken;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', fitted) == pattern.npos;
}

std::u16string_view Trim(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::u16string ReplaceAll(std::u16string_view text, std::u16string_view what, std::u16string_view with) {
  std::u16string out;
  if (what.empty()) return std::u16string(text);
  for (;;) {
    const std::size_t at = text.find(what);
    out += text.substr(0, at);
    if (at == text.npos) return out;
    out += with;
    text.remove_prefix(at + what.size());
  }
}

std::u16string NumberText(long long number) {
  return FromUtf8(std::to_string(number));
}

std::u16string ColumnLetters(long long column) {
  std::u16string letters;
  for (; column > 0; column = (column - 1) / 26) {
    letters.insert(letters.begin(), static_cast<char16_t>(u'A' + (column - 1) % 26));
  }
  return letters;
}

}  // namespace qva
