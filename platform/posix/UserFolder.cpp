#include "platform/posix/UserFolder.h"

#include <pwd.h>
#include <unistd.h>

#include "platform/filesystem/native_file.h"

namespace qva {

std::filesystem::path UserFolder(const char* variable, const std::filesystem::path& below_home) {
  if (const std::filesystem::path folder = EnvironmentVariable(variable); folder.is_absolute()) {
    return folder / kOwnFolder;
  }
  std::filesystem::path home = EnvironmentVariable("HOME");
  if (home.empty()) {
    const passwd* user = ::getpwuid(::getuid());
    if (user && user->pw_dir) home = user->pw_dir;
  }
  return home.empty() ? home : home / below_home / kOwnFolder;
}

}  // namespace qva
