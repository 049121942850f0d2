#include "platform/posix/ProcessEnvironment.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/lithuanian/code_page.h"
#include "platform/text.h"

namespace qva {
namespace {

const char* FindVariable(std::u16string_view name) {
  if (const char* value = std::getenv(ToUtf8(name).c_str())) return value;
  for (char** variable = environ; variable && *variable; ++variable) {
    const std::string_view entry(*variable);
    const std::size_t equals = entry.find('=');
    if (equals != entry.npos && EqualIgnoringCase(FromUtf8(entry.substr(0, equals)), name)) {
      return *variable + equals + 1;
    }
  }
  return nullptr;
}

}  // namespace

std::uint32_t ProcessEnvironment::GetVariable(std::u16string_view name, std::span<char> buffer) const {
  const char* value = name.empty() ? nullptr : FindVariable(name);
  if (!value) return 0;
  const std::string bytes = ToCodePage1257(FromUtf8(value));
  const std::size_t needed = bytes.size() + 1;
  if (buffer.size() < needed) return static_cast<std::uint32_t>(needed);
  std::copy_n(bytes.c_str(), needed, buffer.begin());
  return static_cast<std::uint32_t>(bytes.size());
}

std::u16string ProcessEnvironment::LibraryFolder() const {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&FindVariable), &info) == 0 || !info.dli_fname) return {};
  return std::filesystem::path(info.dli_fname).parent_path().u16string();
}

}  // namespace qva
