#include "host/OwnersFiles.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/posix/FileAccess.h"
#include "platform/posix/OwnersFolders.h"

namespace qva::embedded {

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
