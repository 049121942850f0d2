// Small operations on UTF-16 text, and the way to UTF-8 for files of our own and test output.
#pragma once

#include <string>
#include <string_view>

namespace qva {

/// UTF-16 to UTF-8; an unpaired surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
/// UTF-8 to UTF-16; a malformed sequence becomes U+FFFD.
std::u16string FromUtf8(std::string_view bytes);

/// The bytes of UTF-16, the lower one first, as Windows stores it; and back, without an odd byte at the end.
std::string ToUtf16Bytes(std::u16string_view text);
std::u16string FromUtf16Bytes(std::string_view bytes);

/// Lower case of Latin letters, Lithuanian and the other European ones of the Latin blocks included.
/// Simple one-to-one mapping, as the platform's case-insensitive comparisons use.
std::u16string ToLower(std::u16string_view text);
/// Equality ignoring letter case.
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b);

/// Whether `text` contains `what`, ignoring letter case. The empty text is contained everywhere.
bool ContainsIgnoringCase(std::u16string_view text, std::u16string_view what);

/// Whether a file name fits a pattern, in any letter case: "*" stands for any characters, also none, "?" for
/// exactly one. "*.*" fits every name, also one without a point.
bool FitsPattern(std::u16string_view name, std::u16string_view pattern);

/// Without blanks (U+0020 alone) at either end.
std::u16string_view Trim(std::u16string_view text);

/// Whether a character is one of 0 … 9, or of A … Z and a … z.
inline bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}
inline bool IsBasicLetter(char16_t c) {
  return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

/// Replaces every occurrence of a non-empty `what`, from the left, without looking at what was put in.
std::u16string ReplaceAll(std::u16string_view text, std::u16string_view what, std::u16string_view with);

/// A whole number in decimal digits.
std::u16string NumberText(long long number);

/// The letters of a sheet's column, counted from 1: "A", "Z", "AA".
std::u16string ColumnLetters(long long column);

}  // namespace qva
