#include "host/OwnersFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/OwnersFolders.h"

namespace qva::embedded {

NewFile CreateOwnersFile(const std::filesystem::path& file) {
  constexpr mode_t kOwnersFile = 0600;
  const int created = open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnersFile);
  if (created < 0) return errno == EEXIST ? NewFile::NameIsTaken : NewFile::NotCreated;
  close(created);
  return NewFile::Created;
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
