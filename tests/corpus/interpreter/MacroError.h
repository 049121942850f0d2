// What stops a macro of the corpus: it is not written in the subset that all engines understand alike.
#pragma once

#include <stdexcept>
#include <string>

namespace qva::corpus {

/// A mistake of the macro itself, found by the parser or at run time. Never an error that a macro can meet,
/// so no On Error statement catches it.
class MacroError : public std::runtime_error {
 public:
  /// The message begins with "line N: ".
  MacroError(int line, const std::string& what)
      : std::runtime_error("line " + std::to_string(line) + ": " + what) {}
};

}  // namespace qva::corpus
