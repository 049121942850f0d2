#include "platform/posix/UserFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace qva {
namespace {

std::filesystem::path PathVariable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

}  // namespace

std::filesystem::path UserFolder(const char* variable, const std::filesystem::path& below_home) {
  if (const auto folder = PathVariable(variable); folder.is_absolute()) return folder;
  std::filesystem::path home = PathVariable("HOME");
  if (home.empty()) {
    const passwd* user = ::getpwuid(::getuid());
    if (user && user->pw_dir) home = user->pw_dir;
  }
  return home.empty() ? home : home / below_home;
}

}  // namespace qva
