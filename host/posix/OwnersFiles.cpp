#include "host/OwnersFiles.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/filesystem/file_descriptor.h"
#include "platform/posix/OwnersFolders.h"
#include "platform/posix/UserFolder.h"

namespace qva::embedded {

std::filesystem::path OwnersDataFolder(
    const std::function<std::filesystem::path(const char* name)>& variable) {
  // Absolute, as its standard demands.
  if (const auto data = variable("XDG_DATA_HOME"); data.is_absolute()) return data / kOwnFolder;
  const auto home = variable("HOME");
  return home.empty() ? home : home / ".local" / "share" / kOwnFolder;
}

NewFile CreateOwnersFile(const std::filesystem::path& file) {
  constexpr mode_t kOwnersFile = 0600;
  const FileDescriptor created(open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnersFile));
  if (created) return NewFile::Created;
  return errno == EEXIST ? NewFile::NameIsTaken : NewFile::NotCreated;
}

void CreateOwnersFolder(const std::filesystem::path& folder) {
  CreateOwnersFolders(folder);
}

void TakeFromOthers(const std::filesystem::path& path) {
  using std::filesystem::perm_options;
  using std::filesystem::perms;
  std::error_code ignored;
  std::filesystem::permissions(path, perms::group_all | perms::others_all,
                               perm_options::remove | perm_options::nofollow, ignored);
}

}  // namespace qva::embedded
