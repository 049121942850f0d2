// The process on Windows.
#pragma once

#include "platform/environment.h"

namespace qva::windows {

class WindowsEnvironment : public Environment {
 public:
  std::uint32_t GetVariable(std::u16string_view name, std::span<char> buffer) const override;
  std::u16string LibraryFolder() const override;
};

}  // namespace qva::windows
