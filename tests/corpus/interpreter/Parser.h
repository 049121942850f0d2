// Reads the macros of the corpus.
#pragma once

#include <string_view>

#include "tests/corpus/interpreter/Syntax.h"

namespace qva::corpus {

/// The statements of a macro, which tests/corpus/README.md describes.
/// Raises MacroError for anything else.
Block ParseMacro(std::u16string_view source);

}  // namespace qva::corpus
