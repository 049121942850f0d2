// The process on Linux, whose text is UTF-8.
#pragma once

#include "platform/environment.h"

namespace qva {

/// Names are compared without regard to letter case, as on Windows; where several variables differ in nothing
/// else, the one spelled as asked for is meant.
class ProcessEnvironment : public Environment {
 public:
  std::uint32_t GetVariable(std::u16string_view name, std::span<char> buffer) const override;
  /// Of the file that this code was loaded from.
  std::u16string LibraryFolder() const override;
};

}  // namespace qva
