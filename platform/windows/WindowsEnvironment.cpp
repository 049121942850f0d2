#include "platform/windows/WindowsEnvironment.h"

#include "platform/windows/AnsiText.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

std::uint32_t WindowsEnvironment::GetVariable(std::u16string_view name, std::span<char> buffer) const {
  try {
    return GetEnvironmentVariableA(ToAnsi(name).c_str(), buffer.data(), static_cast<DWORD>(buffer.size()));
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

std::u16string WindowsEnvironment::LibraryFolder() const {
  return OwnFolder();
}

}  // namespace qva::windows
