// The words of a macro.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace qva::corpus {

struct Token {
  enum class Kind { Name, Literal, Symbol, EndOfLine, EndOfFile };
  Kind kind = Kind::EndOfFile;
  std::u16string text;  ///< of a name or symbol, as it was written
  Value literal;        ///< text, Int16, Int32 or Double
  int line = 0;         ///< from 1
  bool after_blank = false;
};

/// Splits a macro into words. Comments and blank lines are left out; a line that ends in " _" goes on in the
/// next one, and ":" ends a statement as the end of a line does. Whole numbers are the smallest of Int16 and
/// Int32 that holds them, numbers with a point are Double.
/// Raises MacroError for a text without an end, a character outside the subset or a number too large.
std::vector<Token> SplitIntoTokens(std::u16string_view source);

}  // namespace qva::corpus
