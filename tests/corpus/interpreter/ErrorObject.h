// The macros' Err.
#pragma once

#include <string>

#include "platform/member_table.h"

namespace qva::corpus {

/// Holds the last error; a member of the corpus's language, and an object that macros may pass on.
class ErrorObject : public Described<ErrorObject> {
 public:
  static ClassBuilder Describe();

  std::int32_t Number() const { return number_; }
  std::u16string Source() const { return source_; }
  std::u16string Text() const { return description_; }
  void Clear() { Keep(0, u"", u""); }
  [[noreturn]] void Raise(std::int32_t number, std::u16string source, std::u16string description);

  void Set(const AutomationError& error) { Keep(error.number(), error.source(), error.description()); }

 private:
  void Keep(std::int32_t number, std::u16string source, std::u16string description);

  std::int32_t number_ = 0;
  std::u16string source_;
  std::u16string description_;
};

}  // namespace qva::corpus
