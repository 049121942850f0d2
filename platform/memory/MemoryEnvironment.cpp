#include "platform/memory/MemoryEnvironment.h"

#include <algorithm>

#include "platform/text.h"

namespace qva {

std::uint32_t MemoryEnvironment::GetVariable(std::u16string_view name, std::span<char> buffer) const {
  const auto found = variables_.find(ToLower(name));
  if (found == variables_.end()) return 0;
  const std::string& value = found->second;
  if (buffer.size() <= value.size()) return static_cast<std::uint32_t>(value.size() + 1);
  std::copy(value.begin(), value.end(), buffer.begin());
  buffer[value.size()] = '\0';
  return static_cast<std::uint32_t>(value.size());
}

void MemoryEnvironment::Set(std::u16string_view name, std::string value) {
  variables_[ToLower(name)] = std::move(value);
}

void MemoryEnvironment::Remove(std::u16string_view name) {
  variables_.erase(ToLower(name));
}

}  // namespace qva
